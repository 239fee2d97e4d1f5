#include "Cluster.h"

#include "GaugeLibrary.h"
#include "Options.h"
#include "ProfileLookup.h"
#include "telemetry/DemoCars.h"
#include "telemetry/PacedSource.h"

namespace {

constexpr quint32 DemoSeed = 64;

} // namespace

Cluster::Cluster(const Options &options, const GaugeLibrary &library, bool useMph)
    : engine(library.createEngine(useMph, options.hardwareAcceleration))
    , store(library.createProfiles(*engine, vehicles))
    , options(options)
{
    library.init(navigation, *engine);
}

Cluster::~Cluster()
{
    feeder.reset();
    navigation.closeViews();
    store.reset();
    engine->shutdown();
}

bool Cluster::chooseDashboard()
{
    if (!options.dashboard.isEmpty()) {
        engine->setDashboardFile(findDocument(*store, options.dashboard));
        return true;
    }
    QObject::connect(&vehicles, &VehicleNames::vehicleChanged, store.get(),
                     &DashboardAbstractProfilesManager::activateRecentProfileForVehicle);
    return store->activeProfileId() != DashboardProfileHeader::NoId;
}

void Cluster::startTelemetry()
{
    feeder =
        std::make_unique<TelemetryFeeder>(std::make_unique<DemoCars>(DemoSeed, options.demoCars),
                                          options.startAt, *engine, vehicles, monitor);
}
