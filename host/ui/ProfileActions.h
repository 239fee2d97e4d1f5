#pragma once

#include "DashboardAction.h"
#include "DashboardProfile.h"

#include <QtCore/QObject>
#include <QtCore/QThreadPool>

#include <functional>

class DashboardAbstractProfilesManager;

/// The user's actions on dashboards. The store works on threads of this object, so that large
/// folders don't block the GUI; results arrive as signals on the GUI thread, on which this
/// object lives.
class ProfileActions final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool busy READ isBusy NOTIFY busyChanged)
    Q_PROPERTY(QString busyText READ busyText NOTIFY busyChanged)

public:
    /// The store is borrowed.
    explicit ProfileActions(DashboardAbstractProfilesManager &store);

    /// Waits for a running action, so that no copy or removal is left half done.
    ~ProfileActions() override;

    /// Activates a dashboard. Requests run in order.
    Q_INVOKABLE void activate(int id);

    /// Start the action; return false if another one is still running.
    Q_INVOKABLE bool copy(int id, const QString &newName);
    Q_INVOKABLE bool rename(int id, const QString &newName);
    Q_INVOKABLE bool remove(int id, const QString &name);

    /// Why a dashboard can't have this name, as far as can be checked while typing; empty
    /// if it can. `oldName` is its current name, or empty for a new one.
    Q_INVOKABLE QString nameProblem(const QString &name, const QString &oldName) const;

    /// `wish`, with a number appended if it is taken.
    Q_INVOKABLE QString freeName(const QString &wish) const;

    bool isBusy() const { return !text.isEmpty(); }

    /// A text about the running action; empty if there is none.
    QString busyText() const { return text; }

Q_SIGNALS:
    void busyChanged();

    /// Copying, renaming or removing has succeeded.
    void succeeded();

    /// The copy is in the store; `document` is its path.
    void copied(int id, const QString &document);

    /// The store refused; `message` is the store's.
    void failed(const QString &message);

private:
    using Id = DashboardProfileHeader::Id;

    bool start(const QString &newText, const std::function<DashboardActionResult()> &action,
               const std::function<void()> &onSuccess);

    DashboardAbstractProfilesManager &store;
    QString text;
    QThreadPool activations; ///< Separate, so that a copy doesn't delay an activation.
    QThreadPool worker;
};
