#pragma once

#include "RaceScript.h"
#include "telemetry/contracts/TelemetrySample.h"

#include <cstdint>

/// A race of a simulated car: a standing start, 36 laps with pit stops and flags, the lap back to
/// the box, a pause, some seconds in which nothing is known, and then the same race again. Depends
/// on nothing but its arguments.
///
/// Moments are seconds from the lights of the grid being switched on; negative and non-finite ones
/// count as 0.
///
/// Signs: right is positive for steering, lateral acceleration, heading and the ball; nose up and
/// right side down are positive. Accelerations are those of the motion, so all three are 0 at rest.
class DemoLap
{
public:
    /// The race that drivers see, and of which previews show a moment.
    static constexpr std::uint32_t UsualSeed = 64;

    explicit DemoLap(std::uint32_t seed);

    /// The telemetry of one moment, in any order.
    TelemetrySample sampleAt(double seconds) const;

private:
    RaceScript script;
};
