#include "RaceDirector.h"

#include "Chance.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <tuple>
#include <utility>

namespace {

constexpr std::uint32_t ClassRivals = 17;
constexpr std::uint32_t FasterRivals = 3;
constexpr std::uint32_t OwnSlot = 8;  // on the grid, from 0
constexpr double SlotSeconds = 0.7;   // between two cars once the first curve has stretched them
constexpr double SlotPace = 0.0004;   // of a lap; the grid is in the order of speed
constexpr double RacePace = 1.0018;   // laps of a race against a flying one
constexpr double Form = 0.014;        // of a lap, from a driver's best to the worst
constexpr double OpeningForm = 0.036; // the same in the scramble of the first lap
constexpr double StopSeconds = 42;    // what a pit stop costs at least
constexpr double StopLoss = 0.75;     // s lost in each second of it
constexpr double FirstStop = 5;       // laps, with the fuel of the start
constexpr double StintLaps = 11.5;
constexpr double StopSpread = 4;      // laps, in which all come in
constexpr double PitPlace = 0.9;      // of a lap
constexpr double ClearSeconds = 0.25; // ahead of a car that has been passed
constexpr double PassSeconds = 3;     // from one change of position to the next
constexpr std::uint32_t Sectors = 5;
constexpr double YellowChance = 0.05; // of a sector on a lap

/// How many slots behind this car's a rival of its class lines up; negative is in front.
double slotsBehind(std::uint32_t number)
{
    return (number < OwnSlot ? number : number + 1.0) - OwnSlot;
}

static_assert(ClassRivals + FasterRivals == std::tuple_size_v<decltype(Field::rivals)>);

} // namespace

RaceDirector::RaceDirector(std::uint32_t seed, std::uint32_t laps, std::vector<double> flyingLap)
    : seed(seed)
    , laps(laps)
    , flyingLap(std::move(flyingLap))
    , lapLength(static_cast<double>(this->flyingLap.size() - 1))
{
}

Field RaceDirector::grid() const
{
    Field field;
    for (std::uint32_t i = 0; i < ClassRivals; ++i) {
        Field::Rival &rival = field.rivals[i];
        rival.ahead = -slotsBehind(i) * SlotSeconds;
        rival.leads = i < OwnSlot;
    }
    for (std::uint32_t i = 0; i < FasterRivals; ++i) {
        Field::Rival &rival = field.rivals[ClassRivals + i];
        const double behind = (i + 0.15 + 0.7 * chance(seed, 'g', 0, i)) / FasterRivals;
        rival.ahead = -behind * flyingLap.back();
        rival.faster = true;
    }
    return field;
}

double RaceDirector::run(Field::Rival &rival, std::uint32_t number, std::uint32_t lap,
                         double driven, double seconds) const
{
    if (rival.faster)
        return seconds / (0.9 + 0.03 * chance(seed, 'f', 0, number));
    const double spread = lap > 0 ? Form : OpeningForm;
    const double form = spread * (chance(seed, 'r', lap, number) - 0.5);
    const double called = chance(seed, 's', rival.stops, number) * StopSpread;
    const double stopLap = std::floor(FirstStop + rival.stops * StintLaps + called);
    if (driven >= stopLap + PitPlace && stopLap + 1 < laps) {
        rival.toLose = StopSeconds + 3 * chance(seed, 't', rival.stops, number);
        ++rival.stops;
    }
    double running = seconds / (RacePace * (1 + SlotPace * slotsBehind(number) + form));
    if (rival.toLose > 0) {
        rival.toLose -= StopLoss * seconds;
        running -= StopLoss * seconds;
    }
    return running;
}

void RaceDirector::advance(Field &field, std::uint32_t lap, double distance, double seconds,
                           bool held) const
{
    const double before = field.laps;
    field.laps = lapsAt(distance);
    field.settled += seconds;
    if (held)
        return;
    // Everybody gets away from the grid and warms the tyres alike.
    const double own = lap > 0 ? (field.laps - before) * flyingLap.back() : seconds / RacePace;
    Field::Rival *passing = nullptr;
    for (std::uint32_t i = 0; i < field.rivals.size(); ++i) {
        Field::Rival &rival = field.rivals[i];
        const double driven = field.laps + rival.ahead / flyingLap.back();
        rival.ahead += run(rival, i, lap, driven, seconds) - own;
        const bool changes = rival.leads ? rival.ahead < -ClearSeconds : rival.ahead > ClearSeconds;
        if (changes && !rival.faster &&
            (!passing || std::abs(rival.ahead) > std::abs(passing->ahead)))
            passing = &rival;
    }
    // Cars pass one after the other, however many are due at once.
    if (!passing || field.settled < PassSeconds)
        return;
    passing->leads = !passing->leads;
    field.settled = 0;
}

double RaceDirector::lapsAt(double distance) const
{
    // On the grid the cars stand by distance.
    if (distance < 0)
        return distance / lapLength;
    const double whole = std::floor(distance / lapLength);
    const double place = distance - whole * lapLength;
    const std::size_t metre = std::min(static_cast<std::size_t>(place), flyingLap.size() - 2);
    const double share = place - static_cast<double>(metre);
    const double seconds = flyingLap[metre] + (flyingLap[metre + 1] - flyingLap[metre]) * share;
    return whole + seconds / flyingLap.back();
}

int RaceDirector::position(const Field &field)
{
    const auto ahead = std::count_if(field.rivals.begin(), field.rivals.end(),
                                     [](const Field::Rival &rival) { return rival.leads; });
    return static_cast<int>(ahead) + 1;
}

double RaceDirector::secondsAhead(const Field::Rival &rival) const
{
    return std::remainder(rival.ahead, flyingLap.back());
}

bool RaceDirector::isLapped(const Field &field) const
{
    return std::any_of(field.rivals.begin(), field.rivals.end(), [&](const Field::Rival &rival) {
        const double ahead = secondsAhead(rival);
        return rival.faster && ahead < 0 && ahead > -1.2;
    });
}

bool RaceDirector::followsRival(const Field &field) const
{
    return std::any_of(field.rivals.begin(), field.rivals.end(), [&](const Field::Rival &rival) {
        const double ahead = secondsAhead(rival);
        return ahead > 0 && ahead < 1.6;
    });
}

bool RaceDirector::isYellow(std::uint32_t lap, double wrappedDistance) const
{
    const auto sector = static_cast<std::uint32_t>(wrappedDistance / lapLength * Sectors);
    // Nobody has had time to stop on the road when the race has just begun.
    return (lap > 0 || sector > 1) && chance(seed, 'y', lap, sector) < YellowChance;
}
