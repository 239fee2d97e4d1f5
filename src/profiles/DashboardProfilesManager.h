#pragma once

#include "plugin/DashboardAbstractProfilesManager.h"
#include "profiles/VehicleAssignments.h"
#include "support/Lock.h"
#include "support/Stopwatch.h"

#include <atomic>
#include <cstdint>
#include <set>

class IDashboardEngine;
class IRecentVehicleNameProvider;

/// The store of dashboards. Reads them from disk once, at construction; what changes there from
/// outside shows at the next start.
///
/// The lock is held while the engine, the vehicle provider and the files of settings and vehicles
/// are used, and never while a signal is emitted.
class DashboardProfilesManager final : public DashboardAbstractProfilesManager
{
    Q_OBJECT

public:
    /// Both services are borrowed and not null; `counter` times the period in which vehicles join
    /// a profile that was just activated. Sends the active document to `engine`, if there is any.
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

    void scanDashboards(const QString &root, bool builtIn);
    void addProfile(const QString &directory, bool builtIn);
    void activateFirstProfile();

    DashboardActionResult activateProfile(Id id);
    DashboardActionResult copyProfile(Id id, const QString &newName);
    DashboardActionResult renameProfile(Id id, const QString &newName);
    DashboardActionResult removeProfile(Id id);

    // From here on the lock is held by whoever calls.
    const DashboardProfile *findProfile(Id id) const;
    DashboardProfile *findProfile(Id id);
    const DashboardProfile *findProfile(const QString &name, Qt::CaseSensitivity sensitivity) const;
    const DashboardProfile *findProfileOf(const QString &vehicleName) const;
    std::set<Id> assignVehicle(Id id, const QString &vehicleName);
    void keepAssignments(const std::set<Id> &changed);
    bool isAssignmentPeriodOpen() const;
    void publishDashboard(const QString &path);
    void replaceActiveProfile();

    /// Notes the new name beside the old one, so that nothing is lost with a process that is killed
    /// before or after the rename. False where that can't be kept.
    bool keepBothNames(const DashboardProfile &profile, const QString &newName);
    void keepOldName(const DashboardProfile &profile);

    IDashboardEngine *engine;
    IRecentVehicleNameProvider *vehicleProvider;
    mutable Lock lock;
    std::vector<DashboardProfile> profiles;
    VehicleAssignments assignments;
    std::atomic<Id> activeId = DashboardProfileHeader::NoId;
    std::atomic<std::int32_t> nextId = 0;
    std::atomic<std::int32_t> revisionCount = 0;
    Stopwatch clock;
    std::int64_t lastActivationMs = 0; ///< By `clock`; 0 before the first activation.
};
