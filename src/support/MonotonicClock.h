#pragma once

#include "support/platform/Platform.h"

#include <cstdint>

/// A steady clock in milliseconds with no fixed zero. Any thread.
class MonotonicClock
{
public:
    /// `counter` is borrowed and must outlive the clock. Reads its frequency once, here.
    explicit MonotonicClock(const platform::Counter &counter);

    /// Milliseconds, from the coarse clock if the high-resolution counter fails.
    std::uint64_t milliseconds() const;

private:
    const platform::Counter *counter;
    std::int64_t frequency = 0;
    bool hasFrequency = false;
};

/// Milliseconds of the system's clock, against which the engine compares a consumer's
/// `lastActivity`. Any thread.
std::uint64_t monotonicMilliseconds();
