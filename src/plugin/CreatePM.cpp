#include "plugin/Exports.h"

#include "profiles/DashboardProfilesManager.h"

DashboardAbstractProfilesManager *CreatePM(IDashboardEngine *engine,
                                           IRecentVehicleNameProvider *vehicleProvider)
{
    if (engine == nullptr || vehicleProvider == nullptr)
        return nullptr;
    return std::make_unique<DashboardProfilesManager>(engine, vehicleProvider).release();
}
