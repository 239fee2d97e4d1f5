#pragma once

#include "plugin/DashboardAbstractProfilesManager.h"
#include "profiles/ProfileList.h"
#include "profiles/VehicleAssignments.h"
#include "support/Lock.h"
#include "support/Stopwatch.h"

#include <atomic>
#include <cstdint>
#include <set>

class IDashboardEngine;
class IRecentVehicleNameProvider;

/// The store: it lists the dashboards, keeps one of them active and gives each vehicle its own.
/// Reads the disk once, at construction; a later change from outside shows at the next start.
///
/// Any thread, once constructed. Holds its lock while it calls the engine and the vehicle provider
/// or writes settings and vehicles, but neither while it copies a dashboard nor while it emits a
/// signal.
class DashboardProfilesManager final : public DashboardAbstractProfilesManager
{
    Q_OBJECT

public:
    /// Borrows all three, which must outlive the store. `counter` times how long after an
    /// activation a vehicle joins the active profile. Sends the active document to `engine`.
    DashboardProfilesManager(IDashboardEngine *engine, IRecentVehicleNameProvider *vehicleProvider,
                             const platform::Counter &counter = platform::systemCounter());

    qint32 revision() const override;
    DashboardProfileHeader::Id activeProfileId() const override;
    std::vector<DashboardProfileHeader> profileHeaders() const override;
    std::unique_ptr<DashboardProfileHeader>
    profileHeader(DashboardProfileHeader::Id id) const override;
    std::unique_ptr<DashboardProfile> profile(DashboardProfileHeader::Id id) const override;
    DashboardActionResult performAction(DashboardProfileHeader::Id id, int action,
                                        const QVariant &parameter) override;
    bool profileNameExists(const QString &name) const override;
    void activateRecentProfileForVehicle(QString vehicleName) override;

private:
    using Id = DashboardProfileHeader::Id;

    void activateFirstProfile();

    // New names are valid ones.
    DashboardActionResult activateProfile(Id id);
    DashboardActionResult copyProfile(Id id, const QString &newName);
    DashboardActionResult renameProfile(Id id, const QString &newName);
    DashboardActionResult removeProfile(Id id);

    // From here on the caller holds the lock.
    bool isAssignmentPeriodOpen() const;
    void publishDashboard(const QString &path);
    void replaceActiveProfile();

    /// Counts a revision and saves, if there are any changes.
    void saveAssignments(const std::set<Id> &changed);

    /// Notes the new name beside the old one, so that a process killed before or after the rename
    /// loses nothing. False if that can't be saved.
    bool saveBothNames(const DashboardProfile &profile, const QString &newName);
    void saveOldName(const DashboardProfile &profile);

    IDashboardEngine *engine;
    IRecentVehicleNameProvider *vehicleProvider;
    mutable Lock lock;
    ProfileList profiles;
    VehicleAssignments assignments;
    std::atomic<Id> activeId = DashboardProfileHeader::NoId;
    std::atomic<std::int32_t> revisionCount = 0;
    Stopwatch clock;
    std::int64_t lastActivationMs = 0; ///< By `clock`; 0 before the first activation.
};
