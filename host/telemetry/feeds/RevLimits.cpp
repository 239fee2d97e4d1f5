#include "RevLimits.h"

#include <algorithm>
#include <cstdlib>

using namespace std::chrono_literals;

namespace {

constexpr std::uint32_t EnoughFullShifts = 3;
constexpr std::uint32_t SlowestLimit = 1000; // 1/min, of any engine
constexpr std::uint32_t FastestLimit = 30'000;
constexpr std::uint32_t SameRpm = 50; // The light comes on between two datagrams.
constexpr int FullThrottle = 90;      // percent
constexpr float SlowestShift = 5;     // km/h
constexpr auto LongestShift = 1s;     // From full throttle to full throttle.
constexpr double SlowedDown = 0.95;   // The closest gears of racing cars are 0.9.

} // namespace

std::uint32_t RevLimits::maximum() const
{
    if (shiftLight == 0 && fullShifts < EnoughFullShifts)
        return 0;
    return std::max(highest, shiftLight);
}

void RevLimitLearner::restart(const RevLimits &limits)
{
    learnt = limits;
    lastPull = {};
    seen = false;
}

void RevLimitLearner::see(const VehicleTelemetry &vehicle, bool shiftLight, TimePoint time)
{
    const Moment moment{vehicle.rpm, vehicle.gear, shiftLight, time};
    if (!seen)
        last = beforeLast = moment;
    seen = true;

    // A single wrong number would count for ever, so it takes three in a row.
    const std::uint32_t sure = std::min({moment.rpm, last.rpm, beforeLast.rpm});
    if (sure <= FastestLimit)
        learnt.highest = std::max(learnt.highest, sure);

    if (moment.gear >= 1 && vehicle.gasPedalPercent >= FullThrottle &&
        vehicle.speedKmh >= SlowestShift)
        seePull(moment);

    // Lights are also tested when the ignition is switched on.
    const bool comesOn = moment.shiftLight && !last.shiftLight;
    if (comesOn && moment.rpm >= SlowestLimit && moment.rpm <= FastestLimit &&
        2 * moment.rpm >= learnt.highest) {
        const auto change =
            std::max(moment.rpm, learnt.shiftLight) - std::min(moment.rpm, learnt.shiftLight);
        if (change > SameRpm)
            learnt.shiftLight = moment.rpm;
    }
    beforeLast = last;
    last = moment;
}

/// Drivers lift or press the clutch to shift, and may pass through neutral. An upshift is full
/// throttle in a gear, and soon afterwards in the next one at a lower engine speed.
void RevLimitLearner::seePull(const Moment &now)
{
    if (lastPull.gear >= 1 && now.gear == lastPull.gear + 1 &&
        now.time - lastPull.time <= LongestShift) {
        if (now.rpm > SlowedDown * lastPull.rpm)
            return; // Not yet.
        learnt.fullShifts = std::min(learnt.fullShifts + 1, EnoughFullShifts);
    }
    lastPull = now;
}
