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

/// What the windows ask for by name: the library's views, each in a window of its own, and the
/// host's targets. Documents know it as `qt_navigation`. GUI thread.
class Navigation final : public QObject, public INavigationService
{
    Q_OBJECT

public:
    using Target = std::function<void(const QVariant &argument)>;

    Navigation() = default;
    /// Closes the views that are still open.
    ~Navigation() override;

    /// Hands what a document on disk said to the views, which take what is about theirs.
    void tellViews(const QString &file, int line, const QString &text);

    /// Has `target` called for requests to show the view `name`.
    void addTarget(const QString &name, const Target &target);

    /// Shows a view or calls a target. A view that is open comes to the front, with the new
    /// argument; one that is being closed opens anew. An unknown name is logged, and `failed`.
    Q_INVOKABLE void showView(const QString &name, const QVariant &argument = {});

    void showView(void *context, const QString &target, const QVariant &argument) override;
    void registerView(const QString &name, const QString &documentPath,
                      const ViewModelFactory &factory) override;

    /// The names of the library's views that are on screen.
    QStringList openViews() const;

    /// The window of a view, or null while it isn't open.
    ViewWindow *window(const QString &name) const;

    /// A folder got another path, both in native separators: views of files below it follow.
    void folderMoved(const QString &from, const QString &to);

    /// Ends all views at once. They must end before the engine.
    void closeViews();

Q_SIGNALS:
    /// What was asked for can't be shown; the user should know.
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
    QList<QPointer<ViewWindow>> closing; ///< What waits for the event loop to delete it.
    QMap<QString, Target> targets;
};
