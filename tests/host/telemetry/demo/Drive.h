#pragma once

#include "telemetry/demo/DemoLap.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

constexpr std::uint32_t Seed = 1;
constexpr double Lights = 5; // s until the car may go

/// Samples of a drive at `hertz`, from its start on.
inline std::vector<VehicleTelemetry> driven(double seconds, int hertz, std::uint32_t laps = 36,
                                            std::uint32_t seed = Seed)
{
    DemoLap lap(seed, laps);
    std::vector<VehicleTelemetry> samples;
    const int count = static_cast<int>(seconds * hertz);
    samples.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        samples.push_back(lap.sampleAt(static_cast<double>(i) / hertz).vehicle);
    return samples;
}

inline bool has(const VehicleTelemetry &vehicle, std::uint32_t flag)
{
    return (vehicle.statusFlags & flag) != 0;
}

/// A copy, since nothing may be bound to a field of a packed record.
template<typename T> T read(T field)
{
    return field;
}

inline double metresPerSecond(const VehicleTelemetry &vehicle)
{
    return static_cast<double>(vehicle.groundSpeedKmh) / 3.6;
}

/// The part of an hour at 10 Hz that comes before the race starts over.
inline std::vector<VehicleTelemetry> wholeRace(std::uint32_t seed = Seed)
{
    std::vector<VehicleTelemetry> samples = driven(3600, 10, 36, seed);
    const auto again = std::adjacent_find(samples.begin(), samples.end(),
                                          [](const VehicleTelemetry &a, const VehicleTelemetry &b) {
                                              return b.completedLaps < a.completedLaps;
                                          });
    if (again != samples.end())
        samples.erase(again + 1, samples.end());
    return samples;
}
