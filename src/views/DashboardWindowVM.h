#pragma once

#include "plugin/IDashboardConsumer.h"
#include "support/Lock.h"
#include "views/FramePicture.h"
#include "views/ViewModel.h"

#include <QtQuick/QQuickImageProvider>

#include <atomic>

class IDashboardEngine;

/// View model of the window that shows the live dashboard. Its image provider is a consumer of the
/// engine, which gets frames of the window's size, and none while the window is hidden.
class DashboardWindowVM : public ViewModel
{
    Q_OBJECT

public:
    class ImageProvider;

    /// `engine` is borrowed and must outlive the view model; it may be null. Registers the consumer
    /// at once.
    explicit DashboardWindowVM(IDashboardEngine *engine, QObject *parent = nullptr);
    ~DashboardWindowVM() override;

    void initContext(QQmlContext *context) override;
    void setArgument(void *context, int request, const QVariant &argument) override;
    void setWindow(QWindow *newWindow) override;

Q_SIGNALS:
    /// There is a new frame to request. Emitted on the engine's thread.
    void previewChanged();

private:
    void followVisibility(bool visible) override;
    void followSize();
    void forgetProvider();

    IDashboardEngine *const engine;
    ImageProvider *imageProvider = nullptr;
    bool providerHandedOver = false;
};

/// Takes frames from the engine by swapping vectors and gives them to the document as pictures,
/// under the name "dashWindow".
///
/// If it outlives its view model, it keeps giving the last picture. If it is destroyed before, on
/// the GUI thread, it removes itself from the engine.
class DashboardWindowVM::ImageProvider final : public QQuickImageProvider, public IDashboardConsumer
{
public:
    explicit ImageProvider(DashboardWindowVM *owner);
    ~ImageProvider() override;
    ImageProvider(const ImageProvider &) = delete;
    ImageProvider &operator=(const ImageProvider &) = delete;

    /// Gives `picture` until the first frame of the right size.
    void setWaitingPicture(const QImage &picture);

    /// Sets the window's size in logical pixels; frames are no larger than 1440 x 816.
    void setSize(const QSize &size);

    /// Forgets the view model. Must not be called during a delivery.
    void detach();

    /// The width of the window, at most 1440, or 0 without one. Any thread, without a lock.
    int frameWidth() override;
    /// The height of the window, at most 816, or 0 without one. Any thread, without a lock.
    int frameHeight() override;
    bool isUpsideDown() override;
    quint64 lastActivity() override;
    void deliverFrame(Frame &buffer, int width) override;

    /// The newest frame if it has the window's current size, else the last picture. Any thread.
    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;

private:
    DashboardWindowVM *owner;
    Lock lock;
    Frame frame;
    FramePicture image;
    // Copied from the window, whose size only the GUI thread may read.
    std::atomic<int> width{0};
    std::atomic<int> height{0};
};
