#include "TelemetryMonitor.h"

#include "contracts/SilenceLimits.h"

#include <algorithm>

using namespace std::chrono_literals;

std::int64_t TelemetryMonitor::slotNumber(TimePoint now) const
{
    return (now - first) / (1000ms / SlotsPerSecond);
}

void TelemetryMonitor::update(bool paused, TimePoint now)
{
    const std::lock_guard guard(mutex);
    if (!started)
        first = now;
    started = true;
    pausedByGame = paused;
    last = now;
    const std::int64_t number = slotNumber(now);
    Slot &slot = slots[static_cast<std::size_t>(number) % slots.size()];
    if (slot.number != number)
        slot = {number, 0};
    ++slot.updates;
}

TelemetryMonitor::Reading TelemetryMonitor::reading(TimePoint now) const
{
    const std::lock_guard guard(mutex);
    if (!started)
        return {};
    const auto silence = now - last;
    if (silence >= SilenceLimits::Lost)
        return {State::Lost, 0};
    if (pausedByGame || silence >= SilenceLimits::Paused)
        return {State::Paused, 0};

    // Whole quarters only, of which the first two seconds have fewer.
    const std::int64_t running = slotNumber(now);
    const std::int64_t whole = std::min<std::int64_t>(running, Slots);
    if (whole == 0)
        return {State::Live, 0};
    int updates = 0;
    for (const Slot &slot : slots) {
        if (slot.number >= running - whole && slot.number < running)
            updates += slot.updates;
    }
    return {State::Live,
            static_cast<double>(updates) * SlotsPerSecond / static_cast<double>(whole)};
}
