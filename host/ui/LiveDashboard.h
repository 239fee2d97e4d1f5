#pragma once

#include "IDashboardConsumer.h"

#include <QtCore/QMetaObject>
#include <QtGui/QImage>
#include <QtQuick/QQuickItem>

class IDashboardEngine;

/// The live picture of the active dashboard in a Qt Quick scene, as large as fits the item at
/// its aspect ratio. It is a consumer of the engine only while it can be seen: not
/// while the item or its window is hidden, nor while the window is minimised.
class LiveDashboard : public QQuickItem, public IDashboardConsumer
{
    Q_OBJECT

public:
    explicit LiveDashboard(QQuickItem *parent = nullptr);
    ~LiveDashboard() override;

    /// Sets the engine, once, on the GUI thread. The engine is borrowed and must outlive the item.
    void attach(IDashboardEngine &newEngine);

    /// Shows the waiting picture until the next frame.
    Q_INVOKABLE void showWaiting();

    int frameWidth() override { return frameSize().width(); }
    int frameHeight() override { return frameSize().height(); }
    bool isUpsideDown() override { return false; }
    quint64 lastActivity() override { return 0; }
    void deliverFrame(Frame &buffer, int width) override;

protected:
    void itemChange(ItemChange change, const ItemChangeData &value) override;
    void geometryChanged(const QRectF &newGeometry, const QRectF &oldGeometry) override;
    QSGNode *updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData *data) override;

private:
    /// What the next paint takes over.
    enum class Content { Shown, Waiting, Frame };

    QSize frameSize() const;
    bool canBeSeen() const;
    void watch(QQuickWindow *place);
    void joinOrLeave();

    IDashboardEngine *engine = nullptr;
    bool joined = false;
    QMetaObject::Connection windowWatch;
    QImage waiting;
    Frame frame;   ///< The newest frame; once it is in the scene, a vector for the next one.
    int width = 0; ///< Of `frame`.
    Content content = Content::Shown;
};
