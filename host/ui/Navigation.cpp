#include "Navigation.h"

#include "IViewModel.h"
#include "ViewWindow.h"

#include <QtCore/QDebug>

#include <memory>
#include <utility>

Navigation::~Navigation()
{
    closeViews();
}

void Navigation::addTarget(const QString &name, const Target &target)
{
    targets.insert(name, target);
}

void Navigation::showView(const QString &name, const QVariant &argument)
{
    const auto view = views.find(name);
    if (view != views.end()) {
        openView(name, *view, argument);
    } else if (targets.contains(name)) {
        targets.value(name)(argument);
    } else {
        qWarning().noquote() << "There is no view named" << name;
        Q_EMIT failed(tr("There is no window named '%1'.").arg(name));
    }
}

void Navigation::showView(void * /*context*/, const QString &target, const QVariant &argument)
{
    showView(target, argument);
}

void Navigation::registerView(const QString &name, const QString &documentPath,
                              const ViewModelFactory &factory)
{
    views.insert(name, {documentPath, factory, nullptr});
}

void Navigation::tellViews(const QString &file, int line, const QString &text)
{
    for (const View &view : qAsConst(views)) {
        if (view.window != nullptr)
            view.window->take(file, line, text);
    }
}

QStringList Navigation::openViews() const
{
    QStringList names;
    for (auto view = views.begin(); view != views.end(); ++view) {
        if (view->window != nullptr && view->window->isVisible())
            names += view.key();
    }
    return names;
}

ViewWindow *Navigation::window(const QString &name) const
{
    return views.value(name).window;
}

void Navigation::folderMoved(const QString &from, const QString &to)
{
    for (const View &view : qAsConst(views)) {
        if (view.window != nullptr)
            view.window->folderMoved(from, to);
    }
}

void Navigation::closeViews()
{
    for (const View &view : qAsConst(views))
        closing += view.window;
    for (const QPointer<ViewWindow> &window : qAsConst(closing)) {
        if (window != nullptr)
            window->end();
    }
    closing.clear();
}

void Navigation::openView(const QString &name, View &view, const QVariant &argument)
{
    if (view.window != nullptr) {
        if (argument.isValid())
            view.window->setArgument(argument);
        view.window->present();
        return;
    }
    const bool frameless = name == QLatin1String("DashboardWindow");
    view.window = std::make_unique<ViewWindow>(
                      name, *this, std::unique_ptr<IViewModel>(view.makeViewModel()), frameless)
                      .release();
    // A closing window no longer counts as the view's, so that a request opens another one.
    connect(view.window, &HostWindow::closeRequested, this, [this, name] {
        closing.removeAll(nullptr);
        closing += std::exchange(views[name].window, nullptr);
    });
    connect(view.window, &HostWindow::closed, view.window, &QObject::deleteLater);
    view.window->openView(view.documentPath, argument);
}
