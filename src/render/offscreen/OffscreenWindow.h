#pragma once

#include <QtQuick/QQuickWindow>

class QQmlEngine;

namespace OVX {

/// The window that documents are rendered in. Keeps itself, and every window that a document opens,
/// off the screen.
class OffscreenWindow : public QQuickWindow
{
    Q_OBJECT

public:
    explicit OffscreenWindow(QQuickRenderControl *control);

    /// Windows that this engine creates stay hidden. Borrowed.
    void setDocumentEngine(const QQmlEngine *documentEngine);

    /// Reports windows that the document declares. Nothing shows these: Qt waits until this window
    /// is on the screen.
    void reportDeclaredWindows(const QObject &document);

    /// Undoes what a document did to the window and its content item, which outlive it.
    void restore();

Q_SIGNALS:
    /// A document declares a window, or has tried to show one. Once after each `restore`.
    void keptHidden();

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    bool belongsToDocument(const QWindow *window) const;
    void reportKeptHidden();

    const QQmlEngine *engine = nullptr;
    bool reported = false;
};

} // namespace OVX
