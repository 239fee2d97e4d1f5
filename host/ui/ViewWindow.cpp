#include "ViewWindow.h"

#include "IViewModel.h"
#include "UiEngine.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QUrl>
#include <QtCore/QVariant>
#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QScreen>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>

#include <utility>

namespace {

QScreen *secondScreen()
{
    const QList<QScreen *> screens = QGuiApplication::screens();
    return screens.size() > 1 ? screens.at(1) : nullptr;
}

Qt::CursorShape cursorFor(Qt::Edges edges)
{
    const bool sideways = edges & (Qt::LeftEdge | Qt::RightEdge);
    const bool upright = edges & (Qt::TopEdge | Qt::BottomEdge);
    if (!sideways)
        return Qt::SizeVerCursor;
    if (!upright)
        return Qt::SizeHorCursor;
    const bool falling =
        edges == (Qt::TopEdge | Qt::LeftEdge) || edges == (Qt::BottomEdge | Qt::RightEdge);
    return falling ? Qt::SizeFDiagCursor : Qt::SizeBDiagCursor;
}

} // namespace

ViewWindow::ViewWindow(const QString &name, Navigation &navigation,
                       std::unique_ptr<IViewModel> viewModel, bool frameless)
    : HostWindow(name, navigation)
    , viewModel(std::move(viewModel))
{
    setFlag(Qt::FramelessWindowHint, frameless);
    if (frameless) {
        if (QScreen *second = secondScreen())
            setScreen(second);
    }
    QObject *object = this->viewModel->asQObject();
    QQmlEngine::setObjectOwnership(object, QQmlEngine::CppOwnership);
    rootContext()->setContextProperty(QStringLiteral("cpp_viewModel"), object);
    this->viewModel->initContext(rootContext());
    connect(this, &QWindow::windowStateChanged, this, &ViewWindow::tellFullScreen);
}

ViewWindow::~ViewWindow()
{
    // The document is bound to the view model, so it goes first.
    setSource(QUrl());
    if (viewModel != nullptr)
        viewModel->setWindow(nullptr);
}

void ViewWindow::end()
{
    if (!isWaiting()) {
        delete this;
        return;
    }
    // Else the document would warn that the view model has gone.
    engine()->setOutputWarningsToStandardError(false);
    hide();
    viewModel->setWindow(nullptr);
    viewModel.reset();
    deleteLater();
}

void ViewWindow::openView(const QString &documentPath, const QVariant &argument)
{
    setArgument(argument);
    viewModel->setWindow(this);
    open(QUrl(QStringLiteral("qrc") + documentPath));
}

void ViewWindow::setArgument(const QVariant &argument)
{
    viewModel->setArgument(nullptr, 0, argument);
}

QVariant ViewWindow::argument() const
{
    return viewModel->asQObject()->property("path");
}

void ViewWindow::take(const QString &file, int line, const QString &text)
{
    const QString document = argument().toString();
    const QString name = QFileInfo(document).dir().relativeFilePath(file);
    if (document.isEmpty() || QDir::isAbsolutePath(name) || name.startsWith(QLatin1String("../")))
        return;
    said += QStringLiteral("%1:%2: %3").arg(name).arg(line).arg(text);
    if (said.size() > MostMessages)
        said.removeFirst();
    Q_EMIT messagesChanged();
}

void ViewWindow::clearMessages()
{
    said.clear();
    Q_EMIT messagesChanged();
}

void ViewWindow::folderMoved(const QString &from, const QString &to)
{
    const QString file = argument().toString();
    if (file.startsWith(from + QDir::separator()))
        setArgument(to + file.mid(from.size()));
}

void ViewWindow::keyPressEvent(QKeyEvent *event)
{
    HostWindow::keyPressEvent(event);
    if (event->isAccepted() || !isFrameless() || event->modifiers() != Qt::NoModifier)
        return;
    const int key = event->key();
    const bool switches = key == Qt::Key_F || key == Qt::Key_F11;
    if (isFullScreen() && (switches || key == Qt::Key_Escape))
        showNormal();
    else if (switches)
        showFullScreen();
    else if (key == Qt::Key_Escape)
        close();
    else if (key == Qt::Key_T)
        toggleStayOnTop();
}

void ViewWindow::mousePressEvent(QMouseEvent *event)
{
    const Qt::Edges edges = edgesAt(event->pos());
    const bool resizes =
        event->button() == Qt::LeftButton && edges != Qt::Edges() && startSystemResize(edges);
    if (!resizes)
        HostWindow::mousePressEvent(event);
}

void ViewWindow::mouseMoveEvent(QMouseEvent *event)
{
    HostWindow::mouseMoveEvent(event);
    if (event->buttons() != Qt::NoButton || !isFrameless())
        return;
    const Qt::Edges edges = edgesAt(event->pos());
    if (edges != Qt::Edges())
        setCursor(cursorFor(edges));
    else
        unsetCursor();
}

/// The live dashboard's document keeps its own full-screen state; keys and the window manager
/// change the window's.
void ViewWindow::tellFullScreen()
{
    if (isFrameless() && rootObject() != nullptr)
        rootObject()->setProperty("fullScreen", isFullScreen());
}

/// The edges near enough to grab; none if the window can't be resized.
Qt::Edges ViewWindow::edgesAt(const QPoint &position) const
{
    const int reach = qRound(5 * UiEngine::scale());
    Qt::Edges edges;
    if (!isFrameless() || isFullScreen())
        return edges;
    edges.setFlag(Qt::LeftEdge, position.x() < reach);
    edges.setFlag(Qt::RightEdge, position.x() >= width() - reach);
    edges.setFlag(Qt::TopEdge, position.y() < reach);
    edges.setFlag(Qt::BottomEdge, position.y() >= height() - reach);
    return edges;
}
