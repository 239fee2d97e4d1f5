#pragma once

#include "DashboardAction.h"
#include "DashboardProfile.h"

#include <QtCore/QObject>
#include <QtCore/QVariant>

#include <memory>
#include <vector>

/// The store of dashboards as the host sees it: the profiles on disk, which of them is active, and
/// which vehicles are assigned to each.
///
/// Any thread may call any operation. Signals are emitted on the calling thread, after the store
/// has released its lock, so a slot connected directly may call back. By then another thread may
/// have changed the list, and an id may be gone. A host that uses `DashboardProfileHeader::Id` in
/// queued connections registers it with Qt's meta-type system itself.
///
/// The host owns the store and destroys it before the engine and the vehicle provider. Both sides
/// of the plug-in boundary compile this class's meta-object: the host runs moc over this header and
/// links the result. Connecting by pointer to member and `inherits` then work; `qobject_cast` to
/// this class fails, because it compares the addresses of meta-objects.
class DashboardAbstractProfilesManager : public QObject
{
    Q_OBJECT

Q_SIGNALS:
    /// Name or vehicles of a profile changed, or it was removed.
    void profileModified(DashboardProfileHeader::Id id);

    /// A profile was added, removed or renamed.
    void profileListChanged();

    /// Another profile became active; `id` is `DashboardProfileHeader::NoId` when none is left.
    void newProfileActivated(DashboardProfileHeader::Id id);

public:
    /// Counts changes to the list and to its profiles; 1 after construction. Takes no lock.
    virtual qint32 revision() const = 0;

    /// The active profile, or `DashboardProfileHeader::NoId`. Takes no lock.
    virtual DashboardProfileHeader::Id activeProfileId() const = 0;

    /// All profiles: those found at the start, sorted by name, then later copies.
    virtual std::vector<DashboardProfileHeader> profileHeaders() const = 0;

    /// A copy of the profile's header, or null if `id` isn't listed.
    virtual std::unique_ptr<DashboardProfileHeader>
    profileHeader(DashboardProfileHeader::Id id) const = 0;

    /// A copy of the whole profile, or null if `id` isn't listed.
    virtual std::unique_ptr<DashboardProfile> profile(DashboardProfileHeader::Id id) const = 0;

    /// Performs `action`, one of `DashboardProfileAction`, on the profile `id`. `Copy` returns when
    /// the files are copied; it doesn't block other calls meanwhile.
    virtual DashboardActionResult performAction(DashboardProfileHeader::Id id, int action,
                                                const QVariant &parameter) = 0;

    /// Whether a profile, built-in or the user's, has this name. Ignores case.
    virtual bool profileNameExists(const QString &name) const = 0;

public Q_SLOTS:
    /// Reports the vehicle that is driven now and activates its profile. A vehicle that is new, or
    /// reported within 8000 ms after the user activated a profile, is assigned to the active
    /// profile instead. Ignores an empty name.
    virtual void activateRecentProfileForVehicle(QString vehicleName) = 0;
};
