#include "RaceDirector.h"

#include "Chance.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace {

constexpr std::uint32_t ClassRivals = 17;
constexpr std::uint32_t FasterRivals = 3;
constexpr double StopSeconds = 45; // what a pit stop costs
constexpr std::uint32_t Sectors = 5;
constexpr double YellowChance = 0.05; // of a sector on a lap

} // namespace

RaceDirector::RaceDirector(std::uint32_t seed, std::vector<double> flyingLap)
    : seed(seed)
    , flyingLap(std::move(flyingLap))
    , lapLength(static_cast<double>(this->flyingLap.size() - 1))
{
    const double best = this->flyingLap.back();
    for (std::uint32_t i = 0; i < ClassRivals; ++i) {
        // The grid is in the order of speed, more or less; this car's slot is left free.
        const double slot = i < 8 ? i : i + 1.0;
        const double lapTime = best * (1 + 0.0014 * i + 0.012 * chance(seed, 'r', 0, i));
        const double stint = 560 + 500 * chance(seed, 's', 0, i);
        rivals.push_back({(12 + 6 * slot) / lapLength, lapTime, stint, false});
    }
    for (std::uint32_t i = 0; i < FasterRivals; ++i) {
        const double gap = (i + 0.15 + 0.7 * chance(seed, 'g', 0, i)) / FasterRivals;
        const double lapTime = best * (0.9 + 0.03 * chance(seed, 'f', 0, i));
        rivals.push_back({gap, lapTime, 1200.0 + 100 * i, true});
    }
}

double RaceDirector::lapsOf(const Rival &rival, double seconds)
{
    // Getting away from the grid costs this much against a flying start.
    const double lost = 3.6;
    const double running = seconds < 2 * lost ? seconds * seconds / (4 * lost) : seconds - lost;
    const double cycle = rival.stint + StopSeconds;
    const double stints = std::floor(running / cycle);
    const double driven = stints * rival.stint + std::min(running - stints * cycle, rival.stint);
    return driven / rival.lapTime - rival.gap;
}

double RaceDirector::lapsAt(double distance) const
{
    // On the grid the cars stand by distance.
    if (distance < 0)
        return distance / lapLength;
    const double laps = std::floor(distance / lapLength);
    const double place = distance - laps * lapLength;
    const std::size_t metre = std::min(static_cast<std::size_t>(place), flyingLap.size() - 2);
    const double share = place - static_cast<double>(metre);
    const double seconds = flyingLap[metre] + (flyingLap[metre + 1] - flyingLap[metre]) * share;
    return laps + seconds / flyingLap.back();
}

int RaceDirector::position(double seconds, double distance) const
{
    const double own = lapsAt(distance);
    const auto ahead = std::count_if(rivals.begin(), rivals.end(), [&](const Rival &rival) {
        return !rival.fasterClass && lapsOf(rival, seconds) > own;
    });
    return static_cast<int>(ahead) + 1;
}

double RaceDirector::secondsAhead(const Rival &rival, double seconds, double distance) const
{
    const double laps = lapsOf(rival, seconds) - lapsAt(distance);
    return (laps - std::floor(laps + 0.5)) * rival.lapTime;
}

bool RaceDirector::isLapped(double seconds, double distance) const
{
    return std::any_of(rivals.begin(), rivals.end(), [&](const Rival &rival) {
        const double ahead = secondsAhead(rival, seconds, distance);
        return rival.fasterClass && ahead < 0 && ahead > -1.2;
    });
}

bool RaceDirector::followsRival(double seconds, double distance) const
{
    return std::any_of(rivals.begin(), rivals.end(), [&](const Rival &rival) {
        const double ahead = secondsAhead(rival, seconds, distance);
        return ahead > 0 && ahead < 1.6;
    });
}

bool RaceDirector::isYellow(std::uint32_t lap, double wrappedDistance) const
{
    const auto sector = static_cast<std::uint32_t>(wrappedDistance / lapLength * Sectors);
    // Nobody has had time to stop on the road when the race has just begun.
    return (lap > 0 || sector > 1) && chance(seed, 'y', lap, sector) < YellowChance;
}
