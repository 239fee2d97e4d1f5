#include "Session.h"

#include "GaugeLibrary.h"
#include "options/Options.h"
#include "profiles/FindProfile.h"
#include "telemetry/TelemetryFactory.h"
#include "profiles/VehicleReport.h"
#include "telemetry/TelemetrySource.h"

#include <utility>

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
                     [this](const QString &name) { reportVehicle(*store, name); });
    return store->activeProfileId() != DashboardProfileHeader::NoId;
}

QStringList Cluster::startTelemetry()
{
    QStringList problems;
    if (std::unique_ptr<TelemetrySource> source = makeTelemetry(options, problems)) {
        feeder = std::make_unique<TelemetryFeeder>(std::move(source), *engine, vehicles, monitor);
    }
    return problems;
}
