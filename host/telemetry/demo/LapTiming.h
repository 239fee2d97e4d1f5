#pragma once

#include <cstdint>
#include <vector>

/// The times of a race so far. Copied whole as part of a checkpoint.
struct LapTimes
{
    std::uint32_t completed = 0;
    std::uint32_t bestLap = 0; ///< Which lap was the best one, from 0; of use once there is a best.
    double lapStart = 0;       ///< s, when the present lap began.
    double last = 0;           ///< s, 0 is none yet.
    double best = 0;           ///< s, 0 is none yet.
};

/// Takes the times at the line and the trace of each lap, for the delta at the same distance. The
/// traces are a record of what happened, the same each time a stretch is driven anew.
class LapTiming
{
public:
    /// `laps` are counted; what is driven behind the last one isn't.
    LapTiming(double lapLength, std::uint32_t laps);

    /// The car went from distance `before` to `after` (m from the first start line, at most one
    /// node's spacing apart) in the time from `start` to `end` (s).
    void advance(LapTimes &times, double before, double after, double start, double end);

    /// s against the best lap at this distance, 0 before there is one. Negative is faster.
    double delta(const LapTimes &times, double distance, double now) const;

private:
    double lapLength;
    double spacing;
    std::uint32_t laps;
    std::vector<std::vector<double>> traces; // s since the start of the lap, by lap and node.
};
