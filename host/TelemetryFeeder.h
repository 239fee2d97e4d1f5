#pragma once

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>

class IDashboardEngine;
class TelemetryMonitor;
class TelemetrySource;
class VehicleNames;

/// Feeds the engine from a thread of its own, 60 times a second, as a game does.
class TelemetryFeeder
{
public:
    /// Starts feeding, `startAt` seconds into the telemetry. The last three are borrowed.
    TelemetryFeeder(std::unique_ptr<TelemetrySource> source, double startAt,
                    IDashboardEngine &engine, VehicleNames &vehicles, TelemetryMonitor &monitor);

    /// Ends the feeding; no update follows.
    ~TelemetryFeeder();
    TelemetryFeeder(const TelemetryFeeder &) = delete;
    TelemetryFeeder &operator=(const TelemetryFeeder &) = delete;

    /// Updates sent so far. Any thread.
    int updatesSent() const { return sent; }

private:
    void run();

    std::unique_ptr<TelemetrySource> source;
    const double startAt;
    IDashboardEngine &engine;
    VehicleNames &vehicles;
    TelemetryMonitor &monitor;
    std::atomic<int> sent{0};
    std::mutex mutex;
    std::condition_variable stopRequested;
    bool stopping = false;
    std::thread thread;
};
