#include "TelemetryFeeder.h"

#include "IDashboardEngine.h"
#include "VehicleNames.h"
#include "telemetry/TelemetryMonitor.h"
#include "telemetry/TelemetrySource.h"

#include <algorithm>
#include <chrono>
#include <utility>

TelemetryFeeder::TelemetryFeeder(std::unique_ptr<TelemetrySource> source, double startAt,
                                 IDashboardEngine &engine, VehicleNames &vehicles,
                                 TelemetryMonitor &monitor)
    : source(std::move(source))
    , startAt(startAt)
    , engine(engine)
    , vehicles(vehicles)
    , monitor(monitor)
    , thread([this] { run(); })
{
}

TelemetryFeeder::~TelemetryFeeder()
{
    {
        const std::lock_guard guard(mutex);
        stopping = true;
    }
    stopRequested.notify_all();
    thread.join();
}

void TelemetryFeeder::run()
{
    using Clock = std::chrono::steady_clock;
    constexpr std::chrono::duration<double> Period(1.0 / 60);
    const Clock::time_point start = Clock::now();
    Clock::time_point next = start;

    std::unique_lock lock(mutex);
    while (!stopping) {
        lock.unlock();
        const std::chrono::duration<double> elapsed = Clock::now() - start;
        const double moment = startAt + elapsed.count();
        vehicles.report(source->vehicleNameAt(moment));
        const TelemetrySample sample = source->sampleAt(moment);
        engine.updateTelemetry(sample.vehicle, sample.limits, sample.extended, sample.paused);
        ++sent;
        monitor.update(sample.paused, Clock::now());
        // After a hold-up the rhythm starts over: a burst of old moments would help nobody.
        next = std::max(next + std::chrono::duration_cast<Clock::duration>(Period), Clock::now());
        lock.lock();
        stopRequested.wait_until(lock, next, [this] { return stopping; });
    }
}
