#include "support/MonotonicClock.h"

MonotonicClock::MonotonicClock(const platform::Counter &counter)
    : counter(&counter)
    , hasFrequency(counter.frequency(frequency))
{
}

std::uint64_t MonotonicClock::milliseconds() const
{
    std::int64_t reading = 0;
    if (!hasFrequency || !counter->read(reading))
        return counter->tickCount();
    if (frequency == 0)
        return 0;

    const auto count = static_cast<std::uint64_t>(reading);
    const auto perSecond = static_cast<std::uint64_t>(frequency);
    return count / perSecond * 1000 + count % perSecond * 1000 / perSecond;
}

std::uint64_t monotonicMilliseconds()
{
    static const MonotonicClock clock(platform::systemCounter());
    return clock.milliseconds();
}
