#pragma once

#include <QtQuick/QQuickWindow>

class QQmlEngine;

namespace OVX {

/// The window that documents are rendered in. Neither it nor a window that a document opens comes
/// onto the screen, whatever a document does.
class OffscreenWindow : public QQuickWindow
{
    Q_OBJECT

public:
    explicit OffscreenWindow(QQuickRenderControl *control);

    /// Names the engine of the documents, whose windows stay hidden. Borrowed.
    void setDocumentEngine(const QQmlEngine *documentEngine);

    /// Tells of windows that a document declares. Nothing shows these: Qt waits with them until
    /// this window is on the screen.
    void lookForWindows(const QObject &document);

    /// Takes back what a document did to the window and its content item, which outlive it.
    void restore();

Q_SIGNALS:
    /// A document has a window, or has tried to show one; once since the last `restore`.
    void keptHidden();

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    bool belongsToDocument(const QWindow *window) const;
    void tellKeptHidden();

    const QQmlEngine *engine = nullptr;
    bool told = false;
};

} // namespace OVX
