#pragma once

#include "LapTrace.h"

#include <cstdint>
#include <vector>

/// Maps the time in a lap's trace to the time of the lap as driven: always a little slower, by a
/// varying amount, and a lot slower under a yellow flag.
struct LapPace
{
    double traced = 0;      ///< s of the whole trace.
    double from = 1;        ///< Seconds for each second of the trace, at the lap's start.
    double to = 1;          ///< The same at its end.
    double slowFrom = 0;    ///< s in the trace at which a slow stretch begins.
    double slowTo = 1;      ///< s in the trace at which it ends.
    double slowSeconds = 0; ///< s lost in it.

    /// s gone by at a moment of the trace.
    double elapsed(double trace) const;
    /// Seconds for each second of the trace at that moment.
    double rate(double trace) const;
    /// The inverse of `elapsed`.
    double traceAt(double elapsed) const;
};

/// A lap of the race as it is driven. Laps are counted from 0.
struct RaceLap
{
    const LapTrace *trace = nullptr;
    LapPace pace;
    double begin = 0;    ///< s since the lights of the grid were switched on.
    double hold = 0;     ///< s that the car stands at the box.
    double fuel = 0;     ///< Percent at the lap's start.
    double filled = 0;   ///< Percent that the box fills in.
    double blueFrom = 0; ///< m, where a faster car comes by; 0 is nowhere.
    double last = 0;     ///< s of the lap before, 0 is none.
    double best = 0;     ///< s, 0 is none.
    int bestLap = 0;     ///< The lap that was the best.
    int tyreLaps = 0;    ///< Laps on these tyres before this one.
    bool mayUseDrs = false;
    bool comesIn = false;  ///< Stops at the box in the end.
    bool yellow = false;   ///< While the car is slow.
    bool warned = false;   ///< Black-and-white flag.
    bool punished = false; ///< Black flag.

    /// s gone by at a moment of the trace, with the stop.
    double elapsed(double moment) const
    {
        return pace.elapsed(moment) + (moment > trace->hold ? hold : 0);
    }
    /// When the car comes to the box, s since the lights.
    double boxAt() const { return begin + pace.elapsed(trace->hold); }
};

/// A moment of the race.
struct RaceMoment
{
    int lap = 0;         ///< `RaceScript::RaceLaps` is the lap back to the box.
    double elapsed = 0;  ///< s since the lap began.
    double trace = 0;    ///< s in the lap's trace.
    double held = -1;    ///< s that the car has been waiting; negative while it drives.
    bool served = false; ///< The stop of this lap is over.
};

/// What happens around the laps: their pace, the stops, the flags and the other cars. One seed is
/// one race. Constant after construction.
class RaceScript
{
public:
    static constexpr int RaceLaps = 36;
    static constexpr double TyresDone = 5; ///< s at the box until the tyres are changed.

    explicit RaceScript(std::uint32_t seed);

    /// `seconds` since the lights of the grid were switched on.
    RaceMoment at(double seconds) const;

    const RaceLap &lapOf(const RaceMoment &moment) const { return laps[std::size_t(moment.lap)]; }

    /// s until the car has come back to its box.
    double end() const { return laps.back().boxAt(); }

    /// Laps driven, with the share of the present one.
    double lapsDriven(const RaceMoment &moment) const;
    /// The same on these tyres.
    double tyreLaps(const RaceMoment &moment) const;
    /// Percent of the tank.
    double fuel(const RaceMoment &moment) const;
    /// Place in the running order, from 1.
    int position(const RaceMoment &moment) const;
    /// s against the best lap at the same place; negative is faster, 0 before there is one.
    double delta(const RaceMoment &moment) const;

private:
    RaceLap next() const;

    std::vector<RaceLap> laps;
    double form = 0; // Radians; when the car wins places and when it loses them.
};
