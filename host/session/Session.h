#pragma once

#include "DashboardAbstractProfilesManager.h"
#include "IDashboardEngine.h"
#include "SessionOptions.h"
#include "telemetry/TelemetryFeeder.h"
#include "telemetry/TelemetryMonitor.h"
#include "telemetry/VehicleNames.h"
#include "ui/Navigation.h"

#include <QtCore/QStringList>

#include <memory>

class GaugeLibrary;

/// An engine of the library with all that it needs to live: store, views, telemetry. GUI thread.
class Session
{
public:
    /// `library` is borrowed.
    Session(SessionOptions options, const GaugeLibrary &library);

    /// Ends from the outside in: telemetry, views, store, engine.
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
    Navigation navigation;
    const std::unique_ptr<IDashboardEngine> engine;
    std::unique_ptr<DashboardAbstractProfilesManager> store;

private:
    const SessionOptions options;
    std::unique_ptr<TelemetryFeeder> feeder;
};
