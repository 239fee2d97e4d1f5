#include "HostWindow.h"

#include "Navigation.h"
#include "UiEngine.h"

#include <QtCore/QEvent>
#include <QtCore/QScopedValueRollback>
#include <QtCore/QUrl>
#include <QtGui/QCursor>
#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QScreen>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlError>

#include <algorithm>
#include <memory>

namespace {

const QMouseEvent *asMouseEvent(const QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
        return static_cast<const QMouseEvent *>(event);
    default:
        return nullptr;
    }
}

} // namespace

HostWindow::HostWindow(const QString &name, Navigation &navigation)
    : QQuickView(std::make_unique<UiEngine>().release(), nullptr)
    , name(name)
    , navigator(navigation)
    , place(WindowPlace::load(name))
{
    place.fitToScreens();
    sizeRemembered = !place.geometry.isNull();
    engine()->setParent(this);
    setResizeMode(SizeRootObjectToView);
    rootContext()->setContextProperty(QStringLiteral("qt_window"), this);
    rootContext()->setContextProperty(QStringLiteral("qt_navigation"), &navigation);
    connect(engine(), &QQmlEngine::quit, this, &QWindow::close, Qt::QueuedConnection);
    connect(this, &QWindow::windowStateChanged, this, &HostWindow::followState);
    setFlag(Qt::WindowStaysOnTopHint, place.stayOnTop);
}

HostWindow::~HostWindow()
{
    if (isVisible())
        rememberPlace();
}

void HostWindow::open(const QUrl &document)
{
    setSource(document);
    if (status() == Error) { // The engine has logged it.
        const QList<QQmlError> found = errors();
        QStringList lines;
        for (const QQmlError &error : found)
            lines += error.toString();
        errorText = lines.join(QLatin1Char('\n'));
        setFlag(Qt::FramelessWindowHint, false);
        setSource(QUrl(QStringLiteral("qrc:/qml/DocumentErrors.qml")));
    }
    leastSize = minimumSize();
    setMinimumSize(leastSize.boundedTo(room().size()));
    // A dialog opens over its parent, not at its own last place.
    const bool whereItWas = sizeRemembered && transientParent() == nullptr;
    setGeometry(fitted(whereItWas ? place.geometry : inTheMiddle()));
    fitDocument();
    if (place.fullScreen)
        showFullScreen();
    else
        show();
    requestActivate();
}

void HostWindow::present()
{
    if (windowStates().testFlag(Qt::WindowMinimized))
        setWindowStates(windowStates() & ~Qt::WindowMinimized);
    show();
    raise();
    requestActivate();
}

void HostWindow::setCanBeMinimized(bool can)
{
    // The hints only work as a set: any that is missing is off.
    const Qt::WindowFlags hints = Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                                  Qt::WindowSystemMenuHint | Qt::WindowMaximizeButtonHint |
                                  Qt::WindowCloseButtonHint;
    setFlags(can ? flags() & ~hints : flags() | hints);
}

void HostWindow::setInitialSize(qreal width, qreal height)
{
    if (!sizeRemembered)
        resize(qRound(width), qRound(height));
}

void HostWindow::move(qreal x, qreal y)
{
    setPosition(qRound(x), qRound(y));
}

QPoint HostWindow::cursorPosGlobal() const
{
    return mouseEvent != nullptr ? mouseEvent->globalPos() : QCursor::pos();
}

void HostWindow::setAboutToBeMoved(bool moving)
{
    // On Wayland a program can't place its windows, but it can start an interactive move.
    if (moving && QGuiApplication::platformName().startsWith(QLatin1String("wayland")))
        startSystemMove();
    if (!moving)
        rememberPlace();
}

void HostWindow::toggleStayOnTop()
{
    setFlag(Qt::WindowStaysOnTopHint, !isStayOnTop());
    place.stayOnTop = isStayOnTop();
    place.save(name);
    Q_EMIT stayOnTopChanged();
}

void HostWindow::showFullScreen()
{
    rememberPlace();
    QQuickView::showFullScreen();
}

bool HostWindow::event(QEvent *event)
{
    if (const QMouseEvent *mouse = asMouseEvent(event)) {
        const QScopedValueRollback<const QMouseEvent *> guard(mouseEvent, mouse);
        return QQuickView::event(event);
    }
    // Other events may delete the window.
    if (event->type() != QEvent::Close || closing)
        return QQuickView::event(event);
    // The document may close the window again while it handles the request.
    closing = true;
    rememberPlace();
    Q_EMIT closeRequested();
    const bool handled = QQuickView::event(event);
    closing = false;
    Q_EMIT closed();
    return handled;
}

void HostWindow::keyPressEvent(QKeyEvent *event)
{
    QQuickView::keyPressEvent(event);
    if (!event->isAccepted() && event->matches(QKeySequence::Close)) {
        event->accept();
        close();
    }
}

void HostWindow::resizeEvent(QResizeEvent *event)
{
    fitDocument();
    QQuickView::resizeEvent(event);
}

/// The window manager can switch full screen, too. A window that is being hidden has no state.
void HostWindow::followState()
{
    const bool fullScreen = windowStates().testFlag(Qt::WindowFullScreen);
    if (!isVisible() || fullScreen == place.fullScreen)
        return;
    place.fullScreen = fullScreen;
    place.save(name);
}

/// Scales the user interface down if the window is smaller than the document needs.
void HostWindow::fitDocument()
{
    constexpr qreal StillReadable = 0.5;
    if (leastSize.isEmpty())
        return;
    const qreal part =
        std::min({1.0, width() / qreal(leastSize.width()), height() / qreal(leastSize.height())});
    static_cast<UiEngine *>(engine())->setScale(std::max(part * UiEngine::scale(), StillReadable));
}

QRect HostWindow::room() const
{
    const QWindow *parent = transientParent();
    return WindowPlace::room((parent != nullptr ? parent : this)->screen()->availableGeometry());
}

/// Centred on the screen, or on the parent window.
QRect HostWindow::inTheMiddle() const
{
    const QWindow *parent = transientParent();
    const QRect limits = room();
    const QSize wanted = sizeRemembered ? place.geometry.size() : size();
    QRect geometry(QPoint(), wanted.boundedTo(limits.size()));
    geometry.moveCenter((parent != nullptr ? parent->geometry() : limits).center());
    geometry.moveRight(std::min(geometry.right(), limits.right()));
    geometry.moveBottom(std::min(geometry.bottom(), limits.bottom()));
    geometry.moveLeft(std::max(geometry.left(), limits.left()));
    geometry.moveTop(std::max(geometry.top(), limits.top()));
    return geometry;
}

/// `geometry` grown to the minimum size, and moved back onto the screen if it grew.
QRect HostWindow::fitted(QRect geometry) const
{
    const QSize size = geometry.size().expandedTo(minimumSize());
    if (size == geometry.size())
        return geometry;
    geometry.setSize(size);
    const QRect limits = room();
    geometry.moveRight(std::min(geometry.right(), limits.right()));
    geometry.moveBottom(std::min(geometry.bottom(), limits.bottom()));
    return geometry;
}

void HostWindow::rememberPlace()
{
    const bool ordinary = windowStates() == Qt::WindowNoState && isVisible();
    if (ordinary)
        place.geometry = geometry();
    place.stayOnTop = isStayOnTop();
    place.save(name);
}
