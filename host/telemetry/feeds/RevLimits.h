#pragma once

#include "TelemetryRecords.h"

#include <chrono>
#include <cstdint>

/// What has been learnt of a car's engine whose game doesn't tell its limits.
struct RevLimits
{
    std::uint32_t highest = 0;    ///< 1/min, the highest seen.
    std::uint32_t shiftLight = 0; ///< 1/min, where the shift light comes on; 0 if it never did.
    std::uint32_t fullShifts = 0; ///< Times that the driver shifted up at full throttle.

    /// 1/min, 0 as long as too little has been seen: the highest number of a car that was only
    /// parked would put its idle speed into the red.
    std::uint32_t maximum() const;

    bool operator==(const RevLimits &other) const
    {
        return highest == other.highest && shiftLight == other.shiftLight &&
               fullShifts == other.fullShifts;
    }
};

/// Learns the limits of the car that is driven, from one datagram to the next.
class RevLimitLearner
{
public:
    using TimePoint = std::chrono::steady_clock::time_point;

    /// A car is driven of which `limits` are known.
    void restart(const RevLimits &limits);

    /// Takes what a datagram tells that came at `time`; `shiftLight` is whether it is on.
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
    Moment lastPull; ///< At full throttle in a forward gear; in gear 0 until there was one.
    bool seen = false;
};
