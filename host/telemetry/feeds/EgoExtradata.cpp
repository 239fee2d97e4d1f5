#include "EgoExtradata.h"

#include "Conversions.h"

#include <algorithm>
#include <cmath>

namespace EgoExtradata {

namespace {

using Conversions::Corners;
using Conversions::WheelOrder;

// Lengths of datagrams, in numbers of four bytes.
constexpr int ShortCount = 38;
constexpr int LongCount = 66;
constexpr int FormulaCount = 70;

/// Where each number stands. The x axis points left, y up and z forward.
namespace Place {
constexpr int Clock = 0;
constexpr int LapTime = 1;
constexpr int Speed = 7;
constexpr int Right = 11;
constexpr int Forward = 14;
constexpr int Throttle = 29;
constexpr int Steering = 30;
constexpr int Brake = 31;
constexpr int Clutch = 32;
constexpr int Gear = 33;
constexpr int LateralG = 34; ///< To the left.
constexpr int LongitudinalG = 35;
constexpr int Lap = 36;
constexpr int EngineSpeed = 37;
constexpr int Position = 39;
constexpr int Drs = 42;
constexpr int TractionControl = 43;
constexpr int Abs = 44;
constexpr int Fuel = 45;
constexpr int FuelCapacity = 46;
constexpr int BrakeTemperatures = 51;
constexpr int TyrePressures = 55;
constexpr int CompletedLaps = 59; ///< The team in Formula games.
constexpr int TotalLaps = 60;
constexpr int LastLap = 62;
constexpr int MaxEngineSpeed = 63;
constexpr int IdleEngineSpeed = 64;
constexpr int Gears = 65;
constexpr int DrsAllowed = 67; ///< This and the next one only in Formula games.
constexpr int Flag = 69;
} // namespace Place

constexpr float BlueFlag = 2;
constexpr float YellowFlag = 3;

class Numbers
{
public:
    explicit Numbers(const QByteArray &datagram)
        : bytes(datagram)
    {
    }

    float operator[](int place) const { return bytes.real(4 * place); }

    Corners corners(int place) const
    {
        return Conversions::corners(bytes, 4 * place, WheelOrder::RearFirst);
    }

private:
    ByteReader bytes;
};

/// Which kind of datagram it is.
struct Kind
{
    int count = 0;          ///< Of numbers.
    bool isFormula = false; ///< Otherwise of a rally game, or one that sends the same.
};

Kind kindOf(const QByteArray &datagram)
{
    const int count = datagram.size() / 4;
    // Some rally games send as many numbers. Their engine speeds, in radians per second, are lower
    // than the 1/min of any Formula car.
    constexpr float SlowestFormula = 2000;
    const bool isRally =
        count == FormulaCount &&
        Conversions::within(Numbers(datagram)[Place::MaxEngineSpeed], 1, SlowestFormula);
    return {count, count == FormulaCount && !isRally};
}

std::optional<std::uint32_t> engineSpeed(float number, const Kind &kind)
{
    constexpr float RpmPerRadianPerSecond = 9.549297F;
    return Conversions::rpm(kind.isFormula ? number : number * RpmPerRadianPerSecond);
}

std::int8_t rallyGear(float code)
{
    constexpr long Reverse = 10;
    const auto known = Conversions::within(code, -1, Reverse);
    const long number = known ? std::lround(*known) : 0;
    return static_cast<std::int8_t>(number == Reverse ? -1 : number);
}

/// Reverse is 0, neutral 1, the first gear 2.
std::int8_t formulaGear(float code)
{
    const auto known = Conversions::within(code, 0, 10);
    return static_cast<std::int8_t>(known ? std::lround(*known) - 1 : 0);
}

/// Sets pitch, roll and heading from the unit vectors that point right and forward.
void fillAttitude(VehicleTelemetry &vehicle, const Numbers &numbers)
{
    // From -1 to 1, plus rounding errors.
    const auto part = [&](int place) {
        const auto known = Conversions::within(numbers[place], -1.01F, 1.01F);
        return known ? std::optional(std::clamp(*known, -1.0F, 1.0F)) : std::nullopt;
    };
    if (const auto up = part(Place::Forward + 1))
        vehicle.pitchDeg = Conversions::degrees(std::asin(*up)).value_or(0.0F);
    if (const auto up = part(Place::Right + 1))
        vehicle.rollDeg = Conversions::degrees(std::asin(-*up)).value_or(0.0F);
    const auto x = part(Place::Forward);
    const auto z = part(Place::Forward + 2);
    if (x && z)
        vehicle.headingDeg = Conversions::heading(std::atan2(-*x, *z)).value_or(0.0F);
}

void fillMotion(VehicleTelemetry &vehicle, const Numbers &numbers, const Kind &kind)
{
    vehicle.speedKmh = Conversions::kmh(numbers[Place::Speed]).value_or(0.0F);
    vehicle.groundSpeedKmh = vehicle.speedKmh;
    vehicle.steeringPercent = Conversions::signedPercent(numbers[Place::Steering]).value_or(0);
    vehicle.gear =
        kind.isFormula ? formulaGear(numbers[Place::Gear]) : rallyGear(numbers[Place::Gear]);
    vehicle.rpm = engineSpeed(numbers[Place::EngineSpeed], kind).value_or(0);
    vehicle.swayG = Conversions::within(-numbers[Place::LateralG], -1000, 1000).value_or(0.0F);
    vehicle.surgeG = Conversions::within(numbers[Place::LongitudinalG], -1000, 1000).value_or(0.0F);
    Conversions::setPedals(vehicle, numbers[Place::Throttle], numbers[Place::Brake],
                           numbers[Place::Clutch]);
    fillAttitude(vehicle, numbers);
}

void fillCorners(VehicleTelemetry &vehicle, const Numbers &numbers)
{
    constexpr float KpaPerPsi = 6.894757F;
    if (const auto hot =
            Conversions::within(numbers.corners(Place::BrakeTemperatures), -100, 5000)) {
        vehicle.availabilityMask |= Available::BrakeTemp;
        for (std::size_t i = 0; i < hot->size(); ++i)
            vehicle.brakeTempC[i] = static_cast<std::int32_t>(std::lround((*hot)[i]));
    }
    if (const auto psi = Conversions::within(numbers.corners(Place::TyrePressures), 0, 1000)) {
        vehicle.availabilityMask |= Available::TyrePressure;
        for (std::size_t i = 0; i < psi->size(); ++i)
            vehicle.tyrePressureKpa[i] =
                static_cast<std::uint32_t>(std::lround((*psi)[i] * KpaPerPsi));
    }
}

/// What only the longer datagrams hold.
void fillRace(VehicleTelemetry &vehicle, const Numbers &numbers, const Kind &kind)
{
    using Conversions::count;
    using Conversions::markAvailable;
    const auto step = [](float number) -> std::optional<std::uint8_t> {
        const auto whole = count(number);
        return whole && *whole <= 255 ? std::optional(static_cast<std::uint8_t>(*whole))
                                      : std::nullopt;
    };
    vehicle.position = markAvailable(vehicle, Available::Position, count(numbers[Place::Position]));
    vehicle.numberOfLaps =
        markAvailable(vehicle, Available::NumberOfLaps, count(numbers[Place::TotalLaps]));
    vehicle.lastTimeMs = markAvailable(vehicle, Available::LastTime,
                                       Conversions::milliseconds(numbers[Place::LastLap]));
    vehicle.absLevel = markAvailable(vehicle, Available::AbsLevel, step(numbers[Place::Abs]));
    vehicle.tractionControlLevel = markAvailable(vehicle, Available::TractionControlLevel,
                                                 step(numbers[Place::TractionControl]));
    constexpr float LargestTank = 10'000;
    const auto fuel = Conversions::within(numbers[Place::Fuel], 0, LargestTank);
    const auto capacity = Conversions::within(numbers[Place::FuelCapacity], 0.01F, LargestTank);
    if (fuel && capacity) {
        vehicle.fuelLevelPercent =
            markAvailable(vehicle, Available::FuelLevel, Conversions::percent(*fuel / *capacity));
    }
    vehicle.maxRpm = engineSpeed(numbers[Place::MaxEngineSpeed], kind).value_or(0);
    vehicle.statusFlags |= numbers[Place::Drs] == 1 ? Status::DrsEngaged : 0;
    fillCorners(vehicle, numbers);
}

void fillFormula(VehicleTelemetry &vehicle, const Numbers &numbers)
{
    vehicle.statusFlags |= numbers[Place::DrsAllowed] == 1 ? Status::DrsAvailable : 0;
    vehicle.statusFlags |= numbers[Place::Flag] == BlueFlag ? Status::FlagBlue : 0;
    vehicle.statusFlags |= numbers[Place::Flag] == YellowFlag ? Status::FlagYellow : 0;
}

} // namespace

bool accepts(const QByteArray &datagram)
{
    const int length = datagram.size();
    if (length != 4 * ShortCount && length != 4 * LongCount && length != 4 * FormulaCount)
        return false;
    return Conversions::areMostlyPlausible(
        Conversions::plausibleReals(ByteReader(datagram), 0, length / 4), length / 4);
}

std::optional<Reading> decode(const QByteArray &datagram)
{
    if (!accepts(datagram))
        return std::nullopt;
    using Conversions::markAvailable;
    const Kind kind = kindOf(datagram);
    const Numbers numbers(datagram);
    Reading reading;
    VehicleTelemetry &vehicle = reading.sample.vehicle;
    reading.clock = numbers[Place::Clock];
    fillMotion(vehicle, numbers, kind);
    vehicle.currentTimeMs = markAvailable(vehicle, Available::CurrentTime,
                                          Conversions::milliseconds(numbers[Place::LapTime]));
    const bool countsLaps = kind.count > ShortCount && !kind.isFormula;
    vehicle.completedLaps =
        markAvailable(vehicle, Available::CompletedLaps,
                      Conversions::count(numbers[countsLaps ? Place::CompletedLaps : Place::Lap]));
    if (kind.count > ShortCount) {
        fillRace(vehicle, numbers, kind);
        reading.idleRpm = engineSpeed(numbers[Place::IdleEngineSpeed], kind).value_or(0);
        reading.gears = Conversions::count(numbers[Place::Gears]).value_or(0);
    }
    if (kind.isFormula)
        fillFormula(vehicle, numbers);
    return reading;
}

} // namespace EgoExtradata
