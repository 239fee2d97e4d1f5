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
    if (status() == Error) { // Which the engine has logged.
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
    // A dialog belongs above its window, wherever that stood the last time.
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
    // The hints count only together: those that aren't named are off.
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
    // There a program can't place its windows, but it can ask for the user's own move.
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
    // Any other event may be the one that deletes the window.
    if (event->type() != QEvent::Close || closing)
        return QQuickView::event(event);
    // The document's answer to the request may close the window once more.
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

/// The window manager begins and ends full screen, too. A window that is being hidden has no state.
void HostWindow::followState()
{
    const bool fullScreen = windowStates().testFlag(Qt::WindowFullScreen);
    if (!isVisible() || fullScreen == place.fullScreen)
        return;
    place.fullScreen = fullScreen;
    place.save(name);
}

/// Makes the user interface smaller where the window is lower or narrower than the document needs.
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

/// Of the screen, or of the window below.
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

/// Of the least size or more. What grows by that stays on the screen.
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
