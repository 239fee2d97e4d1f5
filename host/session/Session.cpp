#include "Session.h"

#include "GaugeLibrary.h"
#include "INavigationService.h"
#include "profiles/FindProfile.h"
#include "profiles/VehicleReport.h"
#include "telemetry/contracts/TelemetrySource.h"

#include <utility>

namespace {

/// For runs without windows.
class NoNavigation final : public INavigationService
{
public:
    void showView(void *, const QString &, const QVariant &) override {}
    void registerView(const QString &, const QString &, const ViewModelFactory &) override {}
};

} // namespace

Session::Session(SessionOptions options, const GaugeLibrary &library,
                 INavigationService *navigation)
    : engine(library.createEngine(options.useMph.value_or(false), options.hardwareAcceleration))
    , store(library.createProfiles(*engine, vehicles))
    , options(std::move(options))
{
    static NoNavigation noNavigation;
    library.init(navigation != nullptr ? *navigation : noNavigation, *engine);
}

Session::~Session()
{
    feeder.reset();
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
