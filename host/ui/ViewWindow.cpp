#include "ui/ViewWindow.h"

#include "IViewModel.h"

#include <QtCore/QUrl>
#include <QtCore/QVariant>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>

#include <utility>

ViewWindow::ViewWindow(const QString &name, Navigation &navigation,
                       std::unique_ptr<IViewModel> viewModel, bool frameless)
    : HostWindow(name, navigation)
    , viewModel(std::move(viewModel))
{
    setFlag(Qt::FramelessWindowHint, frameless);
    QObject *object = this->viewModel->asQObject();
    QQmlEngine::setObjectOwnership(object, QQmlEngine::CppOwnership);
    rootContext()->setContextProperty(QStringLiteral("cpp_viewModel"), object);
    this->viewModel->initContext(rootContext());
}

ViewWindow::~ViewWindow()
{
    // The document goes first, for it is bound to the view model.
    setSource(QUrl());
    viewModel->setWindow(nullptr);
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

/// The document of the live dashboard keeps a state of its own.
void ViewWindow::restoreFullScreen()
{
    if (rootObject() != nullptr)
        rootObject()->setProperty("fullScreen", true);
    HostWindow::restoreFullScreen();
}
