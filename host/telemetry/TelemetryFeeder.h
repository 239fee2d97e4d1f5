#pragma once

#include "contracts/TelemetrySource.h"

#include <atomic>
#include <memory>

class IDashboardEngine;
class TelemetryMonitor;
class VehicleNames;

/// Passes a source's telemetry on to the engine, the store of dashboards and the monitor, on the
/// source's thread.
class TelemetryFeeder final : private TelemetrySink
{
public:
    /// Starts the source. The other three must outlive the feeder.
    TelemetryFeeder(std::unique_ptr<TelemetrySource> source, IDashboardEngine &engine,
                    VehicleNames &vehicles, TelemetryMonitor &monitor);

    /// Ends the source; no update follows.
    ~TelemetryFeeder() override;
    TelemetryFeeder(const TelemetryFeeder &) = delete;
    TelemetryFeeder &operator=(const TelemetryFeeder &) = delete;

    /// Updates sent so far. Any thread.
    int updatesSent() const { return sent; }

private:
    void update(const TelemetrySample &sample, const QString &vehicle) override;
    void fallSilent() override;
    void send(const TelemetrySample &sample, bool paused);

    IDashboardEngine &engine;
    VehicleNames &vehicles;
    TelemetryMonitor &monitor;
    std::atomic<int> sent{0};
    TelemetrySample last;
    std::unique_ptr<TelemetrySource> source;
};
