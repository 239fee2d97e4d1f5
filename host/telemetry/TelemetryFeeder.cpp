#include "TelemetryFeeder.h"

#include "IDashboardEngine.h"
#include "TelemetryMonitor.h"
#include "VehicleNames.h"

#include <chrono>
#include <utility>

TelemetryFeeder::TelemetryFeeder(std::unique_ptr<TelemetrySource> source, IDashboardEngine &engine,
                                 VehicleNames &vehicles, TelemetryMonitor &monitor)
    : engine(engine)
    , vehicles(vehicles)
    , monitor(monitor)
    , source(std::move(source))
{
    this->source->start(*this);
}

TelemetryFeeder::~TelemetryFeeder()
{
    source.reset(); // Its thread may call until it has ended.
}

void TelemetryFeeder::update(const TelemetrySample &sample, const QString &vehicle)
{
    vehicles.report(vehicle);
    last = sample;
    send(last, last.paused);
    monitor.update(last.paused, std::chrono::steady_clock::now());
}

void TelemetryFeeder::fallSilent()
{
    // The monitor notices silence by itself.
    send(last, true);
}

void TelemetryFeeder::send(const TelemetrySample &sample, bool paused)
{
    engine.updateTelemetry(sample.vehicle, sample.limits, sample.extended, paused);
    ++sent;
}
