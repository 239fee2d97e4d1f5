#include "LapTiming.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace {

constexpr std::size_t Nodes = 350; // About one every ten metres.

} // namespace

LapTiming::LapTiming(double lapLength, std::uint32_t laps)
    : lapLength(lapLength)
    , spacing(lapLength / Nodes)
    , laps(laps)
{
}

void LapTiming::advance(LapTimes &times, double before, double after, double start, double end)
{
    if (times.completed >= laps)
        return;
    const double lapBegin = times.completed * lapLength;
    const auto node = static_cast<std::int64_t>(std::floor((after - lapBegin) / spacing));
    const auto nodeBefore = static_cast<std::int64_t>(std::floor((before - lapBegin) / spacing));
    if (node < 0 || node == nodeBefore)
        return;

    if (traces.size() <= times.completed)
        traces.resize(times.completed + 1, std::vector<double>(Nodes + 1));
    const auto index = static_cast<std::size_t>(node);
    const double place = lapBegin + static_cast<double>(node) * spacing;
    const double crossed = start + (end - start) * (place - before) / (after - before);
    const double lapTime = crossed - times.lapStart;
    traces[times.completed][std::min(index, Nodes)] = lapTime;
    if (index < Nodes)
        return;

    times.last = lapTime;
    if (times.best <= 0 || lapTime < times.best) {
        times.best = lapTime;
        times.bestLap = times.completed;
    }
    times.lapStart = crossed;
    ++times.completed;
}

double LapTiming::delta(const LapTimes &times, double distance, double now) const
{
    if (times.best <= 0)
        return 0;
    const double place = std::clamp((distance - times.completed * lapLength) / spacing, 0.0,
                                    static_cast<double>(Nodes) - 1e-6);
    const auto index = static_cast<std::size_t>(place);
    const std::vector<double> &trace = traces[times.bestLap];
    const double share = place - static_cast<double>(index);
    return now - times.lapStart - (trace[index] + (trace[index + 1] - trace[index]) * share);
}
