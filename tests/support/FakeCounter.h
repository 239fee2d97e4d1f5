#pragma once

#include "support/platform/Platform.h"

/// A counter that says what the test wants.
class FakeCounter final : public platform::Counter
{
public:
    std::int64_t countsPerSecond = 1000;
    std::int64_t count = 0;
    bool hasFrequency = true;
    bool readable = true;
    std::uint64_t ticks = 77;

    bool frequency(std::int64_t &value) const override
    {
        value = countsPerSecond;
        return hasFrequency;
    }
    bool read(std::int64_t &value) const override
    {
        value = count;
        return readable;
    }
    std::uint64_t tickCount() const override { return ticks; }
};
