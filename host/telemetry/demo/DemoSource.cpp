#include "DemoSource.h"

#include <algorithm>
#include <chrono>
#include <utility>

DemoSource::DemoSource(DemoCars cars, double startAt)
    : cars(std::move(cars))
    , startAt(startAt)
{
}

void DemoSource::start(TelemetrySink &sink)
{
    thread.start([this, &sink] { run(sink); });
}

void DemoSource::run(TelemetrySink &sink)
{
    using Clock = std::chrono::steady_clock;
    constexpr std::chrono::duration<double> Period(1.0 / 60);
    const Clock::time_point start = Clock::now();
    Clock::time_point next = start;

    do {
        const std::chrono::duration<double> elapsed = Clock::now() - start;
        const double moment = startAt + elapsed.count();
        sink.update(cars.sampleAt(moment), cars.vehicleNameAt(moment));
        // After a hold-up the rhythm starts over: a burst of old moments would help nobody.
        next = std::max(next + std::chrono::duration_cast<Clock::duration>(Period), Clock::now());
    } while (thread.waitUntil(next));
}
