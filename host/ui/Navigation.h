#pragma once

#include "INavigationService.h"

#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QStringList>
#include <QtCore/QVariant>

#include <functional>

class ViewWindow;

/// Opens what windows request by name: the library's views, each in its own window, and the
/// host's targets. Documents know it as `qt_navigation`. GUI thread.
class Navigation final : public QObject, public INavigationService
{
    Q_OBJECT

public:
    using Target = std::function<void(const QVariant &argument)>;

    Navigation() = default;
    /// Closes the views that are still open.
    ~Navigation() override;

    /// Passes a message from a document on disk to the open views; each keeps those about
    /// its own dashboard.
    void tellViews(const QString &file, int line, const QString &text);

    /// Calls `target` when the view `name` is requested.
    void addTarget(const QString &name, const Target &target);

    /// Shows a view or calls a target. An open view comes to the front with the new
    /// argument; one that is closing opens anew. An unknown name is logged and emits
    /// `failed`.
    Q_INVOKABLE void showView(const QString &name, const QVariant &argument = {});

    void showView(void *context, const QString &target, const QVariant &argument) override;
    void registerView(const QString &name, const QString &documentPath,
                      const ViewModelFactory &factory) override;

    /// The names of the library's views that are on screen.
    QStringList openViews() const;

    /// The window of a view, or null while it isn't open.
    ViewWindow *window(const QString &name) const;

    /// Tells the open views that a folder has moved; those that show a file in it follow.
    /// Native separators.
    void folderMoved(const QString &from, const QString &to);

    /// Closes all views at once. They must be closed before the engine ends.
    void closeViews();

Q_SIGNALS:
    /// A request can't be met; `message` is for the user.
    void failed(const QString &message);

private:
    struct View
    {
        QString documentPath;
        ViewModelFactory makeViewModel;
        QPointer<ViewWindow> window;
    };

    void openView(const QString &name, View &view, const QVariant &argument);

    QMap<QString, View> views;
    QList<QPointer<ViewWindow>> closing; ///< Closed windows that the event loop will delete.
    QMap<QString, Target> targets;
};
