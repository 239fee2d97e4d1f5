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

    /// Shows the dashboard that the options name, or lets the store follow the vehicles. False if
    /// there is none.
    bool chooseDashboard();

    /// Starts telemetry from the source that the options name. Returns what a driver should know
    /// about it, a sentence each; `isFed` tells whether any telemetry can come.
    QStringList startTelemetry();
    bool isFed() const { return feeder != nullptr; }

    /// Updates sent to the engine so far.
    int updatesSent() const { return feeder != nullptr ? feeder->updatesSent() : 0; }

    VehicleNames vehicles;
    TelemetryMonitor monitor;
    const std::unique_ptr<IDashboardEngine> engine;
    std::unique_ptr<DashboardAbstractProfilesManager> store;

private:
    const SessionOptions options;
    std::unique_ptr<TelemetryFeeder> feeder;
};
