#include "RaceScript.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <random>

namespace {

constexpr double LightsOut = 5; // s
constexpr double StartFuel = 48;
constexpr double FullFuel = 76;
constexpr double LapFuel = 5.3;
constexpr double FillRate = 7.5; // percent in a second, from the second on
constexpr double PenaltySeconds = 17;
constexpr double YellowSeconds = 3.5;  // lost in a slow stretch
constexpr double YellowLength = 14;    // s in the trace
constexpr double CoolDownSeconds = 16; // that the lap back takes longer
constexpr std::array<int, 4> Stops{6, 16, 27, RaceScript::RaceLaps};
constexpr int PenaltyStop = 16;
constexpr std::array<int, 3> Yellows{9, 20, 31};
constexpr std::array<int, 6> Blues{5, 11, 14, 22, 29, 33};

constexpr double MeanPosition = 8.6;
constexpr double PlacesOfForm = 1.9; // that are won and lost again
constexpr double PlacesOfStop = 5;   // that come back in the laps after a stop

template<std::size_t Count> bool isOneOf(const std::array<int, Count> &laps, int lap)
{
    return std::find(laps.begin(), laps.end(), lap) != laps.end();
}

} // namespace

double LapPace::elapsed(double trace) const
{
    const double slow = std::clamp((trace - slowFrom) / (slowTo - slowFrom), 0.0, 1.0);
    return trace * (from + (to - from) * trace / traced / 2) +
           slowSeconds * slow * slow * (3 - 2 * slow);
}

double LapPace::rate(double trace) const
{
    constexpr double Near = 1e-3; // s
    return (elapsed(trace + Near) - elapsed(trace - Near)) / (2 * Near);
}

double LapPace::traceAt(double elapsed) const
{
    double low = 0;
    double high = traced;
    for (int i = 0; i < 50; ++i) {
        const double middle = (low + high) / 2;
        (this->elapsed(middle) < elapsed ? low : high) = middle;
    }
    return high;
}

RaceScript::RaceScript(std::uint32_t seed)
{
    std::mt19937 random(seed);
    const auto chance = [&random] { return random() * 0x1.0p-32; };
    form = 2 * Pi * chance();
    for (int number = 0; number <= RaceLaps; ++number) {
        RaceLap lap = next();
        lap.yellow = isOneOf(Yellows, number);
        lap.pace.slowFrom = 5 + 45 * chance();
        lap.pace.slowTo = lap.pace.slowFrom + YellowLength;
        lap.pace.slowSeconds = lap.yellow ? YellowSeconds : 0;
        if (number == RaceLaps)
            lap.pace = {lap.pace.traced, 1, 1, 0, lap.trace->hold, CoolDownSeconds};
        const double blueFrom = 100 + 2500 * chance();
        lap.blueFrom = isOneOf(Blues, number) ? blueFrom : 0;
        lap.pace.from = laps.empty() ? 1 : laps.back().pace.to;
        lap.pace.to = 1.002 + 0.024 * chance();
        lap.mayUseDrs = chance() < 0.6 && number > 0 && number < RaceLaps && !lap.yellow;
        lap.warned = number == PenaltyStop - 2;
        lap.punished = number == PenaltyStop;
        laps.push_back(lap);
    }
}

/// The next lap, as far as it follows from the ones before.
RaceLap RaceScript::next() const
{
    const Laps &driven = Laps::instance();
    const int number = static_cast<int>(laps.size());
    RaceLap lap;
    lap.trace = &driven.start;
    lap.begin = LightsOut;
    lap.fuel = StartFuel;
    if (number > 0) {
        const RaceLap &before = laps.back();
        lap.trace = before.comesIn ? &driven.out : &driven.flying;
        lap.last = before.elapsed(before.pace.traced);
        lap.begin = before.begin + lap.last;
        const bool isBest = number == 1 || lap.last < before.best;
        lap.best = isBest ? lap.last : before.best;
        lap.bestLap = isBest ? number - 1 : before.bestLap;
        lap.tyreLaps = before.comesIn ? 0 : before.tyreLaps + 1;
        lap.fuel = before.fuel - LapFuel + before.filled;
    }
    lap.comesIn = isOneOf(Stops, number);
    if (lap.comesIn)
        lap.trace = &driven.in;
    if (lap.comesIn && number < RaceLaps) {
        lap.filled = FullFuel - lap.fuel;
        lap.hold = number == PenaltyStop ? PenaltySeconds : 1 + lap.filled / FillRate;
    }
    lap.pace.traced = lap.trace->seconds();
    return lap;
}

RaceMoment RaceScript::at(double seconds) const
{
    RaceMoment moment;
    if (seconds < LightsOut) {
        moment.held = seconds;
        return moment;
    }
    while (moment.lap < RaceLaps && seconds >= laps[std::size_t(moment.lap) + 1].begin)
        ++moment.lap;
    const RaceLap &lap = lapOf(moment);
    moment.elapsed = seconds - lap.begin;
    const double standing = seconds - lap.boxAt();
    // After the last lap the car stays.
    moment.served = lap.hold > 0 && standing >= lap.hold;
    if (lap.comesIn && standing >= 0 && !moment.served) {
        moment.trace = lap.trace->hold;
        moment.held = standing;
    } else {
        moment.trace = lap.pace.traceAt(moment.elapsed - (moment.served ? lap.hold : 0));
    }
    return moment;
}

double RaceScript::lapsDriven(const RaceMoment &moment) const
{
    return moment.lap + moment.trace / lapOf(moment).pace.traced;
}

double RaceScript::tyreLaps(const RaceMoment &moment) const
{
    const bool isNew = moment.served || (moment.lap < RaceLaps && moment.held > TyresDone);
    return isNew ? 0 : lapsDriven(moment) - moment.lap + lapOf(moment).tyreLaps;
}

double RaceScript::fuel(const RaceMoment &moment) const
{
    const RaceLap &lap = lapOf(moment);
    const double filled = moment.served ? lap.filled : (moment.held - 1) * FillRate;
    return lap.fuel - LapFuel * (lapsDriven(moment) - moment.lap) +
           std::clamp(filled, 0.0, lap.filled);
}

double RaceScript::delta(const RaceMoment &moment) const
{
    const RaceLap &lap = lapOf(moment);
    if (lap.best <= 0)
        return 0;
    const RaceLap &best = laps[std::size_t(lap.bestLap)];
    const double place = lap.trace->at(moment.trace).distance;
    return moment.elapsed - best.elapsed(best.trace->secondsAt(place));
}

int RaceScript::position(const RaceMoment &moment) const
{
    const double done = std::min<double>(lapsDriven(moment), RaceLaps);
    const double swing = std::sin(0.37 * done + form) - std::sin(form);
    double lost = moment.lap > Stops.front() ? std::exp(-tyreLaps(moment) / 1.8) : 0;
    if (lapOf(moment).hold > 0)
        lost = moment.served ? 1 : std::max(moment.held, 0.0) / lapOf(moment).hold;
    return static_cast<int>(std::lround(MeanPosition + PlacesOfForm * swing + PlacesOfStop * lost));
}
