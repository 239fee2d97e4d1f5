#include "GaugeLibrary.h"

GaugeLibrary::GaugeLibrary(const QString &directory)
    : library(directory + QStringLiteral("/GAUGE64"))
{
    if (!library.load()) {
        errorText = library.errorString();
        return;
    }
    createE = resolve<CreateEFunction>("CreateE");
    createPM = resolve<CreatePMFunction>("CreatePM");
    initialise = resolve<InitFunction>("Init");
}

std::unique_ptr<IDashboardEngine> GaugeLibrary::createEngine(bool useMph,
                                                             bool hardwareAcceleration) const
{
    return std::unique_ptr<IDashboardEngine>(createE(useMph, hardwareAcceleration));
}

std::unique_ptr<DashboardAbstractProfilesManager>
GaugeLibrary::createProfiles(IDashboardEngine &engine, IRecentVehicleNameProvider &vehicles) const
{
    return std::unique_ptr<DashboardAbstractProfilesManager>(createPM(&engine, &vehicles));
}

void GaugeLibrary::init(INavigationService &navigation, IDashboardEngine &engine) const
{
    initialise(&navigation, &engine);
}

template<typename Function> Function GaugeLibrary::resolve(const char *name)
{
    const QFunctionPointer address = library.resolve(name);
    if (address == nullptr)
        errorText =
            QStringLiteral("%1 lacks the function %2").arg(library.fileName(), QLatin1String(name));
    return reinterpret_cast<Function>(address);
}
