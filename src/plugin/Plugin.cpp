#include "plugin/Exports.h"

#include "engine/DashboardEngine.h"
#include "profiles/DashboardProfilesManager.h"
#include "views/DashboardFadeInOut.h"

#include <QtCore/QDebug>

#include <memory>

IDashboardEngine *CreateE(bool useMph, bool hardwareAcceleration)
{
    return std::make_unique<DashboardEngine>(useMph, hardwareAcceleration).release();
}

DashboardAbstractProfilesManager *CreatePM(IDashboardEngine *engine,
                                           IRecentVehicleNameProvider *vehicleProvider)
{
    if (engine == nullptr || vehicleProvider == nullptr)
        return nullptr;
    return std::make_unique<DashboardProfilesManager>(engine, vehicleProvider).release();
}

void Init(INavigationService *navigation, IDashboardEngine *engine)
{
    if (navigation == nullptr || engine == nullptr) {
        qCritical().noquote() << "DASHUI: Null pointer";
        return;
    }
    DashboardFadeInOut::registerType();
}
