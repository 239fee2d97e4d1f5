#pragma once

#include "TelemetryRecords.h"

#include <chrono>
#include <cstdint>

/// What was learnt about a car's engine because its game doesn't send the limits.
struct RevLimits
{
    std::uint32_t highest = 0;    ///< 1/min, the highest seen.
    std::uint32_t shiftLight = 0; ///< 1/min, where the shift light comes on; 0 if it never did.
    std::uint32_t fullShifts = 0; ///< Times that the driver shifted up at full throttle.

    /// The highest engine speed, 1/min; 0 until enough was seen. The highest speed of a parked car
    /// would put its idle speed into the red.
    std::uint32_t maximum() const;

    bool operator==(const RevLimits &other) const
    {
        return highest == other.highest && shiftLight == other.shiftLight &&
               fullShifts == other.fullShifts;
    }
};

/// Learns the limits of the car that is driven, from datagram to datagram. One thread at a time.
class RevLimitLearner
{
public:
    using TimePoint = std::chrono::steady_clock::time_point;

    /// Starts over with a car of which `limits` are known.
    void restart(const RevLimits &limits);

    /// Learns from a datagram that came at `time`.
    void see(const VehicleTelemetry &vehicle, bool shiftLight, TimePoint time);

    const RevLimits &limits() const { return learnt; }

private:
    struct Moment
    {
        std::uint32_t rpm = 0;
        int gear = 0;
        bool shiftLight = false;
        TimePoint time;
    };

    void seePull(const Moment &now);

    RevLimits learnt;
    Moment last;
    Moment beforeLast;
    Moment lastPull; ///< The last one at full throttle in a forward gear; gear 0 if none yet.
    bool seen = false;
};
