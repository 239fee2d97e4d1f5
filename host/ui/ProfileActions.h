#pragma once

#include "DashboardAction.h"
#include "DashboardProfile.h"

#include <QtCore/QObject>
#include <QtCore/QThreadPool>

#include <functional>

class DashboardAbstractProfilesManager;

/// What a user does to dashboards. The store works on a thread of this object's, so that large
/// folders hold nothing up; results come as signals on the GUI thread, to which this belongs.
class ProfileActions final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool busy READ isBusy NOTIFY busyChanged)
    Q_PROPERTY(QString busyText READ busyText NOTIFY busyChanged)

public:
    /// The store is borrowed.
    explicit ProfileActions(DashboardAbstractProfilesManager &store);

    /// Waits for what is under way: neither a copy nor a removal is left half done.
    ~ProfileActions() override;

    /// Makes a dashboard the active one. Requests are carried out in their order.
    Q_INVOKABLE void activate(int id);

    /// These start the action and answer true, or answer false because one is still under way.
    Q_INVOKABLE bool copy(int id, const QString &newName);
    Q_INVOKABLE bool rename(int id, const QString &newName);
    Q_INVOKABLE bool remove(int id, const QString &name);

    /// Why a dashboard can't get this name, as far as that can be told while one types; empty if
    /// it can. `oldName` is the name that it has now, or empty for a new one.
    Q_INVOKABLE QString nameProblem(const QString &name, const QString &oldName) const;

    /// The wished name, with a number behind it if that is taken.
    Q_INVOKABLE QString freeName(const QString &wish) const;

    bool isBusy() const { return !text.isEmpty(); }

    /// What is under way, for people; empty when nothing is.
    QString busyText() const { return text; }

Q_SIGNALS:
    void busyChanged();

    /// Copying, renaming or removing has ended well.
    void succeeded();

    /// The copy is in the store; `document` is its path.
    void copied(int id, const QString &document);

    /// The store refused; the message is its own.
    void failed(const QString &message);

private:
    using Id = DashboardProfileHeader::Id;

    bool start(const QString &newText, const std::function<DashboardActionResult()> &action,
               const std::function<void()> &onSuccess);

    DashboardAbstractProfilesManager &store;
    QString text;
    QThreadPool activations; ///< Apart, so that a dashboard comes on while another is being copied.
    QThreadPool worker;
};
