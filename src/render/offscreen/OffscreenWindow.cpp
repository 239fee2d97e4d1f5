#include "render/offscreen/OffscreenWindow.h"

#include <QtCore/QByteArray>
#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QSignalBlocker>
#include <QtCore/QVariant>
#include <QtQml/QQmlEngine>
#include <QtQml/QQmlProperty>
#include <QtQuick/QQuickItem>

#include <utility>

namespace OVX {

OffscreenWindow::OffscreenWindow(QQuickRenderControl *control)
    : QQuickWindow(control)
{
    setColor(Qt::black);
    // Windows are shown on the GUI thread; a renderer may live on another.
    if (QCoreApplication::instance()->thread() == thread())
        QCoreApplication::instance()->installEventFilter(this);
}

void OffscreenWindow::setDocumentEngine(const QQmlEngine *documentEngine)
{
    engine = documentEngine;
}

void OffscreenWindow::restore()
{
    reported = false;
    setWindowStates(Qt::WindowNoState);
    // Qt Quick Controls keep a pointer to their overlay there, and it died with the other items.
    const QList<QByteArray> names = dynamicPropertyNames();
    for (const QByteArray &name : names)
        setProperty(name.constData(), QVariant());
    setColor(Qt::black);

    QQuickItem *content = contentItem();
    content->setVisible(true);
    content->setEnabled(true);
    content->setOpacity(1);
    content->setScale(1);
    content->setRotation(0);
    content->setPosition(QPointF());
    content->setSize(QSizeF(0, 0));
    content->setClip(false);
    content->setTransformOrigin(QQuickItem::Center);
    QQmlProperty::write(content, QStringLiteral("layer.enabled"), false);
}

/// The event comes before the platform's window is shown; without one nothing is.
bool OffscreenWindow::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() != QEvent::Show || !object->isWindowType())
        return false;
    auto *window = static_cast<QWindow *>(object);
    if (!belongsToDocument(window))
        return false;
    {
        // No signals to the document: a handler could show the window again, endlessly.
        const QSignalBlocker blocker(window);
        window->setModality(Qt::NonModal); // A modal one would block the host's windows.
        window->destroy();
    }
    reportKeptHidden();
    return true;
}

void OffscreenWindow::reportDeclaredWindows(const QObject &document)
{
    if (!document.findChildren<QWindow *>().isEmpty())
        reportKeptHidden();
}

void OffscreenWindow::reportKeptHidden()
{
    if (std::exchange(reported, true))
        return;
    Q_EMIT keptHidden();
}

bool OffscreenWindow::belongsToDocument(const QWindow *window) const
{
    for (; window != nullptr; window = window->transientParent()) {
        if (window == this || (engine != nullptr && qmlEngine(window) == engine))
            return true;
    }
    return false;
}

} // namespace OVX
