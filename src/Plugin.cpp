#include "plugin/Exports.h"

#include "engine/DashboardEngine.h"
#include "plugin/INavigationService.h"
#include "profiles/DashboardProfilesManager.h"
#include "render/DashboardFadeInOut.h"
#include "views/DashboardEditorVM.h"
#include "views/DashboardWindowVM.h"

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
    navigation->registerView(
        QStringLiteral("DashboardEditor"), QStringLiteral(":/dash/qml/DashboardEditor.qml"),
        [engine, navigation]() -> IViewModel * {
            return std::make_unique<DashboardEditorVM>(engine, navigation).release();
        });
    navigation->registerView(QStringLiteral("DashboardWindow"),
                             QStringLiteral(":/dash/qml/DashboardWindow.qml"),
                             [engine]() -> IViewModel * {
                                 return std::make_unique<DashboardWindowVM>(engine).release();
                             });
    DashboardFadeInOut::registerType();
}
