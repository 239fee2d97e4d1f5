#include "Session.h"

#include "FrameSession.h"
#include "GaugeLibrary.h"
#include "IDashboardEngine.h"
#include "LiveWindow.h"
#include "MessageLog.h"
#include "ProfileLookup.h"
#include "TelemetryFeeder.h"
#include "Terminal.h"
#include "VehicleNames.h"
#include "ViewRegistry.h"
#include "telemetry/DemoCars.h"
#include "telemetry/TelemetryMonitor.h"

#include <QtCore/QDir>
#include <QtCore/QStandardPaths>
#include <QtGui/QGuiApplication>

#include <functional>
#include <memory>

namespace {

constexpr quint32 DemoSeed = 64;

using StartTelemetry = std::function<std::unique_ptr<TelemetryFeeder>()>;

/// What an installation would have done: the place where a user's own dashboards go.
void makeUserFolder()
{
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    if (!QDir::isAbsolutePath(documents))
        return; // The library goes without one, too.
    const QString folder = documents + QStringLiteral("/Orvalentix/Halvorin/Dashboards");
    if (!QDir().mkpath(folder)) {
        printError(QStringLiteral("Could not make '%1', where your own dashboards go.")
                       .arg(QDir::toNativeSeparators(folder)));
    }
}

int showWindow(const Options &options, IDashboardEngine &engine,
               const DashboardAbstractProfilesManager &store, const StartTelemetry &startTelemetry)
{
    LiveWindow window(engine, options.upsideDown);
    if (options.size)
        window.resize(*options.size);
    const auto nameWindow = [&] {
        const auto active = store.profileHeader(store.activeProfileId());
        const bool chosen = !options.dashboard.isEmpty() || active == nullptr;
        window.setTitle(
            QStringLiteral("%1 - GAUGE64").arg(chosen ? options.dashboard : active->name));
    };
    nameWindow();
    QObject::connect(&store, &DashboardAbstractProfilesManager::newProfileActivated, &window,
                     nameWindow);
    window.show();
    const std::unique_ptr<TelemetryFeeder> feeder = startTelemetry();
    return QGuiApplication::exec();
}

int showDashboards(const Options &options, IDashboardEngine &engine,
                   DashboardAbstractProfilesManager &store, VehicleNames &vehicles,
                   const MessageLog &log)
{
    if (!options.dashboard.isEmpty()) {
        engine.setDashboardFile(findDocument(store, options.dashboard));
    } else if (store.activeProfileId() == DashboardProfileHeader::NoId) {
        printError(QStringLiteral("There are no dashboards beside the program, nor of your own."));
        return 1;
    } else {
        QObject::connect(&vehicles, &VehicleNames::vehicleChanged, &store,
                         &DashboardAbstractProfilesManager::activateRecentProfileForVehicle);
    }
    TelemetryMonitor monitor;
    const StartTelemetry startTelemetry = [&] {
        return std::make_unique<TelemetryFeeder>(
            std::make_unique<DemoCars>(DemoSeed, options.demoCars), options.startAt, engine,
            vehicles, monitor);
    };
    return options.mode == Options::Mode::Frames
               ? recordFrames(options, engine, log, startTelemetry)
               : showWindow(options, engine, store, startTelemetry);
}

} // namespace

int runSession(const Options &options)
{
    const MessageLog log(options.verbose);
    const GaugeLibrary library(QCoreApplication::applicationDirPath());
    if (!library.error().isEmpty()) {
        printError(library.error());
        return 1;
    }
    makeUserFolder();

    // A command shows nothing, so it needs no renderer.
    const bool shows = options.mode != Options::Mode::Command;
    ViewRegistry views;
    VehicleNames vehicles;
    const std::unique_ptr<IDashboardEngine> engine =
        library.createEngine(options.useMph, options.hardwareAcceleration && shows);
    const std::unique_ptr<DashboardAbstractProfilesManager> store =
        library.createProfiles(*engine, vehicles);
    library.init(views, *engine);

    const int result = shows ? showDashboards(options, *engine, *store, vehicles, log)
                             : runProfileCommand(options.command, *store, vehicles);
    engine->shutdown();
    return result;
}
