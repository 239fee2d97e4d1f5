#include "support/Stopwatch.h"

Stopwatch::Stopwatch(const platform::Counter &counter)
    : counter(&counter)
{
    if (!counter.frequency(frequency))
        frequency = 0;
    if (!counter.read(start))
        start = 0;
}

std::int64_t Stopwatch::elapsedMs() const
{
    std::int64_t now = 0;
    if (frequency <= 0 || !counter->read(now))
        return 0;

    const std::int64_t difference = now - start;
    // Seconds and the rest apart: multiplying the whole count could overflow.
    return difference / frequency * 1000 + difference % frequency * 1000 / frequency;
}
