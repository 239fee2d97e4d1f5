#include "Session.h"

#include "GaugeLibrary.h"
#include "profiles/FindProfile.h"
#include "profiles/VehicleReport.h"
#include "telemetry/TelemetrySource.h"

#include <utility>

Session::Session(SessionOptions options, const GaugeLibrary &library)
    : engine(library.createEngine(options.useMph.value_or(false), options.hardwareAcceleration))
    , store(library.createProfiles(*engine, vehicles))
    , options(std::move(options))
{
    library.init(navigation, *engine);
}

Session::~Session()
{
    feeder.reset();
    navigation.closeViews();
    store.reset();
    engine->shutdown();
}

bool Session::chooseDashboard()
{
    if (!options.dashboard.isEmpty()) {
        engine->setDashboardFile(findDocument(*store, options.dashboard));
        return true;
    }
    QObject::connect(&vehicles, &VehicleNames::vehicleChanged, store.get(),
                     [this](const QString &name) { reportVehicle(*store, name); });
    return store->activeProfileId() != DashboardProfileHeader::NoId;
}

QStringList Session::startTelemetry()
{
    QStringList problems;
    if (std::unique_ptr<TelemetrySource> source = options.telemetry.makeSource(problems)) {
        feeder = std::make_unique<TelemetryFeeder>(std::move(source), *engine, vehicles, monitor);
    }
    return problems;
}
