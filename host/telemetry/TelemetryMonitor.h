#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <mutex>

/// State and rate of the telemetry, updated by the thread that feeds it and read by the windows.
/// Any thread; time comes in as an argument.
class TelemetryMonitor
{
public:
    using TimePoint = std::chrono::steady_clock::time_point;

    enum class State {
        Waiting, ///< Nothing has come yet.
        Live,
        Paused, ///< The game says so, or nothing came for half a second.
        Lost,   ///< Nothing came for five seconds.
    };

    struct Reading
    {
        State state = State::Waiting;
        double rate = 0; ///< Updates per second over the last two seconds; 0 unless live.
    };

    /// Counts an update. `paused` is whether the game says that it is.
    void update(bool paused, TimePoint now);

    Reading reading(TimePoint now) const;

private:
    static constexpr int SlotsPerSecond = 4;
    static constexpr int Slots = 2 * SlotsPerSecond;

    struct Slot
    {
        std::int64_t number = -1; ///< Quarters of a second since the first update.
        int updates = 0;
    };

    std::int64_t slotNumber(TimePoint now) const;

    mutable std::mutex mutex;
    bool started = false;
    bool pausedByGame = false;
    TimePoint first;
    TimePoint last;
    std::array<Slot, Slots + 1> slots; ///< One more, for the quarter that still runs.
};
