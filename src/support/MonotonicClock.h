#pragma once

#include "support/platform/Platform.h"

#include <cstdint>

/// A steady clock in milliseconds with no fixed zero. Any thread.
class MonotonicClock
{
public:
    /// `counter` is borrowed and must outlive the clock. Its frequency is asked for once, here.
    explicit MonotonicClock(const platform::Counter &counter);

    /// Milliseconds; from the coarse clock where the high-resolution counter fails.
    std::uint64_t milliseconds() const;

private:
    const platform::Counter *counter;
    std::int64_t frequency = 0;
    bool hasFrequency = false;
};

/// The engine's clock, against which a consumer's `lastActivity` is compared.
std::uint64_t monotonicMilliseconds();
