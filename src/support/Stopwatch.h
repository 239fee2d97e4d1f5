#pragma once

#include "support/platform/Platform.h"

#include <cstdint>

/// Measures the time since its construction. Any thread may read it.
class Stopwatch
{
public:
    /// `counter` is borrowed and must outlive the stopwatch.
    explicit Stopwatch(const platform::Counter &counter = platform::systemCounter());

    /// Whole milliseconds since construction; 0 if the counter can't be read.
    std::int64_t elapsedMs() const;

private:
    const platform::Counter *counter;
    std::int64_t frequency = 0;
    std::int64_t start = 0;
};
