#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <mutex>

/// How the telemetry goes: told by the thread that feeds it, read by the windows. Any thread; time
/// comes in as an argument.
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

    /// Counts one update. `paused` is what the game says of itself.
    void update(bool paused, TimePoint now);

    Reading reading(TimePoint now) const;

private:
    static constexpr int SlotsPerSecond = 4;
    static constexpr int Slots = 2 * SlotsPerSecond;

    struct Slot
    {
        std::int64_t number = -1; ///< Counts quarters of a second from the first update on.
        int updates = 0;
    };

    std::int64_t slotNumber(TimePoint now) const;

    mutable std::mutex mutex;
    bool started = false;
    bool pausedByGame = false;
    TimePoint first;
    TimePoint last;
    std::array<Slot, Slots + 1> slots; ///< One more for the quarter that is still running.
};
