#pragma once

#include "DashboardAction.h"
#include "DashboardProfile.h"

#include <QtCore/QObject>
#include <QtCore/QVariant>

#include <memory>
#include <vector>

/// The store of dashboards as the host sees it: the profiles on disk, the active one among them,
/// and which vehicle goes with which.
///
/// Every operation may be called on any thread. Signals are emitted on the calling thread, after
/// the store's lock has been released, so a slot connected directly may call back; by then another
/// thread may have changed the list, and an id may be gone. `DashboardProfileHeader::Id` is not
/// registered with Qt's meta-type system: a host that names it in queued connections does that.
///
/// The host owns the store and destroys it before the engine and the vehicle provider. The
/// meta-object is compiled on either side of the plug-in boundary: the host runs moc over this
/// header and links the result. Connections by pointer to member then work, and so does
/// `inherits`; `qobject_cast` to this class does not, since it compares addresses.
class DashboardAbstractProfilesManager : public QObject
{
    Q_OBJECT

Q_SIGNALS:
    /// Name or vehicles of a profile changed, or it was removed.
    void profileModified(DashboardProfileHeader::Id id);

    /// A profile came, went or got another name.
    void profileListChanged();

    /// Another profile is active; `DashboardProfileHeader::NoId` when none is left.
    void newProfileActivated(DashboardProfileHeader::Id id);

public:
    /// Counts the changes of the list and of what is in it; 1 after construction. Takes no lock.
    virtual qint32 revision() const = 0;

    /// The active profile, or `DashboardProfileHeader::NoId`. Takes no lock.
    virtual DashboardProfileHeader::Id activeProfileId() const = 0;

    /// All profiles: sorted by name at the start, later copies behind them.
    virtual std::vector<DashboardProfileHeader> profileHeaders() const = 0;

    /// A copy of the profile's header, or null for an id that isn't listed.
    virtual std::unique_ptr<DashboardProfileHeader>
    profileHeader(DashboardProfileHeader::Id id) const = 0;

    /// A copy of the whole profile, or null for an id that isn't listed.
    virtual std::unique_ptr<DashboardProfile> profile(DashboardProfileHeader::Id id) const = 0;

    /// Acts on the profile `id`; `action` is one of `DashboardProfileAction`. `Copy` waits for the
    /// files to be copied, without holding up other calls meanwhile.
    virtual DashboardActionResult performAction(DashboardProfileHeader::Id id, int action,
                                                const QVariant &parameter) = 0;

    /// Whether a profile, built-in or the user's, has this name in any mix of capitals.
    virtual bool profileNameExists(const QString &name) const = 0;

public Q_SLOTS:
    /// Reports the vehicle that is now driven: activates the profile it goes with. A vehicle that
    /// is new, or that arrives within 8000 ms after the user's own activation of a profile, joins
    /// the active profile instead. An empty name does nothing.
    virtual void activateRecentProfileForVehicle(QString vehicleName) = 0;
};
