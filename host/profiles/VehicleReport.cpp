#include "VehicleReport.h"

#include "DashboardAbstractProfilesManager.h"
#include "telemetry/feeds/FormerVehicleNames.h"

#include <algorithm>

bool isAssigned(const DashboardAbstractProfilesManager &store, const QString &vehicle)
{
    const std::vector<DashboardProfileHeader> headers = store.profileHeaders();
    return std::any_of(headers.begin(), headers.end(), [&](const DashboardProfileHeader &header) {
        const std::unique_ptr<DashboardProfile> profile = store.profile(header.id);
        return profile != nullptr && profile->vehicles.contains(vehicle);
    });
}

void reportVehicle(DashboardAbstractProfilesManager &store, const QString &name)
{
    if (!isAssigned(store, name)) {
        const QStringList formerNames = formerVehicleNames(name);
        const auto known =
            std::find_if(formerNames.begin(), formerNames.end(),
                         [&store](const QString &former) { return isAssigned(store, former); });
        // This activates the dashboard of the former name; a new vehicle joins the active one.
        if (known != formerNames.end())
            store.activateRecentProfileForVehicle(*known);
    }
    store.activateRecentProfileForVehicle(name);
}
