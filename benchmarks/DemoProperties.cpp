#include "DemoProperties.h"

#include "render/TelemetryPublisher.h"
#include "telemetry/demo/DemoLap.h"

namespace {

constexpr double FlyingStart = 30; ///< Seconds; the car is in the middle of its first lap.
constexpr int Ticks = 25;
constexpr double TickSeconds = 0.04;

} // namespace

TelemetrySample demoSample(double seconds)
{
    return DemoLap(64).sampleAt(FlyingStart + seconds);
}

std::vector<TelemetrySample> demoSamples()
{
    DemoLap lap(64);
    std::vector<TelemetrySample> samples;
    samples.reserve(Ticks);
    for (int tick = 0; tick < Ticks; ++tick)
        samples.push_back(lap.sampleAt(FlyingStart + tick * TickSeconds));
    return samples;
}

std::vector<Properties> demoMoments()
{
    Properties properties;
    TelemetryPublisher publisher([&properties](const QString &name, const QVariant &value) {
        properties.emplace_back(name, value);
    });
    std::vector<Properties> moments;
    for (const TelemetrySample &sample : demoSamples()) {
        properties.clear();
        publisher.publish({sample.vehicle, sample.limits, sample.extended, {}, {}, 0.2F});
        moments.push_back(properties);
    }
    return moments;
}
