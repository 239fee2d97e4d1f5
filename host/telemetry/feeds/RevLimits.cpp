#include "RevLimits.h"

#include <algorithm>
#include <cstdlib>

namespace {

constexpr std::uint32_t EnoughFullShifts = 3;
constexpr std::uint32_t SlowestLimit = 1000; // 1/min, of any engine's
constexpr std::uint32_t FastestLimit = 30'000;
constexpr std::uint32_t SameRpm = 50; // The light comes on between two datagrams.
constexpr int FullThrottle = 90;      // percent

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
    seen = false;
}

void RevLimitLearner::see(const Moment &moment)
{
    if (!seen)
        last = beforeLast = moment;
    seen = true;

    // One wild number would stand for ever, so it takes three.
    const std::uint32_t sure = std::min({moment.rpm, last.rpm, beforeLast.rpm});
    if (sure <= FastestLimit)
        learnt.highest = std::max(learnt.highest, sure);

    if (moment.gear == last.gear + 1 && last.gear >= 1 && last.throttlePercent >= FullThrottle &&
        learnt.fullShifts < EnoughFullShifts)
        ++learnt.fullShifts;

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
