#pragma once

#include "DashboardAbstractProfilesManager.h"
#include "IDashboardEngine.h"
#include "SessionOptions.h"
#include "telemetry/TelemetryFeeder.h"
#include "telemetry/TelemetryMonitor.h"
#include "telemetry/VehicleNames.h"

#include <QtCore/QStringList>

#include <memory>

class GaugeLibrary;
class INavigationService;

/// An engine of the library with its store and its telemetry. GUI thread.
class Session
{
public:
    /// Registers the library's views with `navigation`; without one none can be shown. Both are
    /// borrowed. Views must be closed before the session ends.
    Session(SessionOptions options, const GaugeLibrary &library,
            INavigationService *navigation = nullptr);

    /// Ends telemetry first, then the store, then the engine.
    ~Session();
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;

    /// Takes the dashboard that the options name, or lets the store follow the vehicles. False if
    /// there is none to show.
    bool chooseDashboard();

    /// Starts to feed the engine from the source that the options name. The result says, a sentence
    /// each, what a driver should know of it; `isFed` whether any telemetry can come.
    QStringList startTelemetry();
    bool isFed() const { return feeder != nullptr; }

    /// Updates that the engine got. 0 before `startTelemetry`.
    int updatesSent() const { return feeder != nullptr ? feeder->updatesSent() : 0; }

    VehicleNames vehicles;
    TelemetryMonitor monitor;
    const std::unique_ptr<IDashboardEngine> engine;
    std::unique_ptr<DashboardAbstractProfilesManager> store;

private:
    const SessionOptions options;
    std::unique_ptr<TelemetryFeeder> feeder;
};
