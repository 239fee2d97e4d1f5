#include "TelemetryFields.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <optional>
#include <type_traits>

namespace {

using Type = TelemetryField::Type;

static_assert(std::is_standard_layout_v<TelemetrySample>, "fields are found by their offsets");

struct Limits
{
    double least;
    double most;
};

constexpr Limits Percent{0, 100};
constexpr Limits EitherWay{-100, 100};
constexpr Limits Circle{0, 360};
constexpr Limits Any{-std::numeric_limits<double>::max(), std::numeric_limits<double>::max()};

/// Where a field lies and what it holds.
struct Place
{
    const char *name;
    std::size_t offset;
    std::size_t size; ///< Of one element, in bytes.
    Type type;
};

template<typename Number> constexpr Type typeOf()
{
    if constexpr (std::is_same_v<Number, std::uint8_t>)
        return Type::U8;
    else if constexpr (std::is_same_v<Number, std::int8_t>)
        return Type::I8;
    else if constexpr (std::is_same_v<Number, std::uint32_t>)
        return Type::U32;
    else if constexpr (std::is_same_v<Number, std::int32_t>)
        return Type::I32;
    else
        return Type::F32;
}

template<typename Field> constexpr Place placeOf(const char *name, std::size_t offset)
{
    using Number = std::remove_extent_t<Field>;
    return {name, offset, sizeof(Number), typeOf<Number>()};
}

#define IN(record, member, field)                                                                  \
    placeOf<decltype(record::field)>(#field,                                                       \
                                     offsetof(TelemetrySample, member) + offsetof(record, field))
#define IN_VEHICLE(field) IN(VehicleTelemetry, vehicle, field)
#define IN_LIMITS(field) IN(DisplayLimits, limits, field)

Limits withinType(Type type, Limits limits)
{
    const auto clamped = [&limits](auto number) {
        using Numbers = std::numeric_limits<decltype(number)>;
        return Limits{std::max(limits.least, static_cast<double>(Numbers::lowest())),
                      std::min(limits.most, static_cast<double>(Numbers::max()))};
    };
    switch (type) {
    case Type::U8:
        return clamped(std::uint8_t{});
    case Type::I8:
        return clamped(std::int8_t{});
    case Type::U32:
        return clamped(std::uint32_t{});
    case Type::I32:
        return clamped(std::int32_t{});
    case Type::F32:
        return clamped(float{});
    case Type::Flag:
    case Type::Bool:
        return {0, 1};
    }
    Q_UNREACHABLE();
}

class Table
{
public:
    void add(const Place &place, std::uint64_t availability, const char *meaning,
             Limits limits = Any)
    {
        const Limits within = withinType(place.type, limits);
        rows.push_back({QLatin1String(place.name), QString::fromUtf8(meaning), within.least,
                        within.most, availability, place.type, place.offset, 0, false});
    }

    void addCorners(Place place, std::size_t distance, std::uint64_t availability,
                    const char *meaning, Limits limits = Any)
    {
        for (const char *corner : {"_FL", "_FR", "_RL", "_RR"}) {
            add(place, availability, meaning, limits);
            rows.back().name += QLatin1String(corner);
            place.offset += distance;
        }
    }

    void addCorners(const Place &place, std::uint64_t availability, const char *meaning,
                    Limits limits = Any)
    {
        addCorners(place, place.size, availability, meaning, limits);
    }

    void addFlag(const char *name, std::uint32_t mask, std::uint64_t availability,
                 const char *meaning)
    {
        add({name, IN_VEHICLE(statusFlags).offset, 0, Type::Flag}, availability, meaning);
        rows.back().mask = mask;
    }

    std::vector<TelemetryField> rows;
};

void addDriving(Table &table)
{
    table.add(IN_VEHICLE(speedKmh), 0, "speed, km/h");
    table.add(IN_VEHICLE(groundSpeedKmh), 0, "speed over ground, km/h");
    table.add(IN_VEHICLE(steeringPercent), 0,
              "steering wheel, %; 0 is straight ahead, right is positive", EitherWay);
    table.add(IN_VEHICLE(gear), 0, "gear; negative is reverse, 0 neutral");
    table.add(IN_VEHICLE(rpm), 0, "engine speed, 1/min");
    table.add(IN_VEHICLE(maxRpm), 0, "highest engine speed, 1/min");
    table.add(IN_VEHICLE(gasPedalPercent), Available::Pedals, "accelerator, %", Percent);
    table.add(IN_VEHICLE(brakePedalPercent), Available::Pedals, "brake pedal, %", Percent);
    table.add(IN_VEHICLE(clutchPedalPercent), Available::Pedals,
              "clutch pedal, %; 100 is fully pressed", Percent);
    table.add(IN_VEHICLE(fuelLevelPercent), Available::FuelLevel, "fuel, % of a full tank",
              Percent);
}

void addRace(Table &table)
{
    table.add(IN_VEHICLE(position), Available::Position, "position in the running order, from 1");
    table.add(IN_VEHICLE(currentTimeMs), Available::CurrentTime,
              "current lap time, ms; 0 is no time");
    table.add(IN_VEHICLE(lastTimeMs), Available::LastTime, "last lap time, ms; 0 is no time");
    table.add(IN_VEHICLE(bestTimeMs), Available::BestTime, "best lap time, ms; 0 is no time");
    table.add(IN_VEHICLE(completedLaps), Available::CompletedLaps, "laps driven to the end");
    table.add(IN_VEHICLE(numberOfLaps), Available::NumberOfLaps, "laps of the race; 0 is unknown");
    table.add(IN_VEHICLE(deltaTimeS), 0, "against the reference lap, s; negative is faster");
}

void addCar(Table &table)
{
    table.add(IN_VEHICLE(absLevel), Available::AbsLevel, "setting of the ABS, in steps");
    table.add(IN_VEHICLE(tractionControlLevel), Available::TractionControlLevel,
              "setting of the traction control, in steps");
    table.add(IN_VEHICLE(heaveG), 0,
              "vertical acceleration, g; upwards is positive, without gravity: 0 at rest");
    table.add(IN_VEHICLE(swayG), 0,
              "lateral acceleration, g; to the right is positive, as in a right turn");
    table.add(IN_VEHICLE(surgeG), 0, "longitudinal acceleration, g; gaining speed is positive");
    table.add(IN_VEHICLE(brakeBiasPercent), Available::BrakeBias, "brake balance, %", EitherWay);
    table.addCorners(IN_VEHICLE(tyreTempC), Available::TyreTemp, "tyre temperature, °C");
    table.addCorners(IN_VEHICLE(brakeTempC), Available::BrakeTemp, "brake temperature, °C");
    table.addCorners(IN_VEHICLE(tyreWearPercent), Available::TyreWear, "tyre wear, %", Percent);
    table.addCorners(IN_VEHICLE(tyrePressureKpa), Available::TyrePressure, "tyre pressure, kPa");
    table.add(IN_VEHICLE(engineLoadPercent), Available::EngineLoad, "engine load, %", Percent);
}

void addFlight(Table &table)
{
    table.add(IN_VEHICLE(altitudeAboveGroundM), 0, "altitude above ground, m");
    table.add(IN_VEHICLE(altitudeAboveSeaLevelM), 0, "altitude above sea level, m");
    table.add(IN_VEHICLE(turnCoordinatorBall), 0,
              "slip ball; 0 is centred, 1 the right end of its tube", {-1, 1});
    table.add(IN_VEHICLE(pitchDeg), 0, "pitch, degrees; nose up is positive");
    table.add(IN_VEHICLE(rollDeg), 0, "roll, degrees; right side down is positive");
    table.add(IN_VEHICLE(headingDeg), 0,
              "heading, degrees; grows to the right, and is taken into one circle", Circle);
    table.rows.back().isCircular = true;
}

void addFlags(Table &table)
{
    table.addFlag("absInAction", Status::AbsInAction, Available::AbsInAction, "the ABS acts");
    table.addFlag("tcInAction", Status::TcInAction, Available::TcInAction,
                  "the traction control acts");
    table.addFlag("autoShifter", Status::AutoShifter, 0,
                  "automatic gearbox: a forward gear shows as D");
    table.addFlag("speedLimiter", Status::SpeedLimiter, Available::SpeedLimiter,
                  "the speed limiter is on");
    table.addFlag("drsAvailable", Status::DrsAvailable, 0, "DRS can be used");
    table.addFlag("drsEngaged", Status::DrsEngaged, 0, "DRS is engaged");
    table.addFlag("flagBlack", Status::FlagBlack, 0, "black flag");
    table.addFlag("flagBlue", Status::FlagBlue, 0, "blue flag");
    table.addFlag("flagYellow", Status::FlagYellow, 0, "yellow flag");
    table.addFlag("flagBlackAndWhite", Status::FlagBlackAndWhite, 0, "black-and-white flag");
    table.add({"paused", offsetof(TelemetrySample, paused), sizeof(bool), Type::Bool}, 0,
              "the game stands still");
}

void addLimits(Table &table)
{
    table.add(IN_LIMITS(steeringScale), 0,
              "degrees that the drawn wheel turns for 1 % of steering");
    table.add(IN_LIMITS(lowFuelLevelThresholdPercent), 0, "fuel is low below this, %", Percent);
    table.add(IN_LIMITS(rpmGreenThresholdPercent), 0, "green rpm light from here, % of maxRpm",
              Percent);
    table.add(IN_LIMITS(rpmYellowThresholdPercent), 0, "yellow rpm light from here, % of maxRpm",
              Percent);
    table.add(IN_LIMITS(rpmRedThresholdPercent), 0, "red rpm light from here, % of maxRpm",
              Percent);
    table.add(IN_LIMITS(rpmBlinkingThresholdPercent), 0,
              "rpm lights blink from here, % of maxRpm; 0 stands for 95", Percent);
    const std::size_t wheels =
        offsetof(TelemetrySample, extended) + offsetof(ExtendedTelemetry, wheels);
    using Wheel = ExtendedTelemetry::Wheel;
    table.addCorners({"wheelFlagA", wheels + offsetof(Wheel, wheelFlagA), 1, Type::U8},
                     sizeof(Wheel), 0, "not 0: the wheel slips");
    table.addCorners({"wheelFlagB", wheels + offsetof(Wheel, wheelFlagB), 1, Type::U8},
                     sizeof(Wheel), 0, "not 0: the wheel slips");
}

std::vector<TelemetryField> makeTable()
{
    Table table;
    for (const auto group : {addDriving, addRace, addCar, addFlight, addFlags, addLimits})
        group(table);
    return table.rows;
}

template<typename Number> void write(char *to, double value)
{
    const auto number = static_cast<Number>(value);
    std::memcpy(to, &number, sizeof number); // The records are packed.
}

} // namespace

void TelemetryField::set(TelemetrySample &sample, double value) const
{
    if (!std::isfinite(value))
        return;
    char *const at = reinterpret_cast<char *>(&sample) + offset;
    if (isCircular) {
        value = std::fmod(value, most);
        value += value < 0 ? most : 0;
    }
    const double limited = std::clamp(value, least, most);
    const double whole = std::round(limited);
    switch (type) {
    case Type::U8:
        write<std::uint8_t>(at, whole);
        break;
    case Type::I8:
        write<std::int8_t>(at, whole);
        break;
    case Type::U32:
        write<std::uint32_t>(at, whole);
        break;
    case Type::I32:
        write<std::int32_t>(at, whole);
        break;
    case Type::F32:
        write<float>(at, limited);
        break;
    case Type::Flag: {
        std::uint32_t flags = 0;
        std::memcpy(&flags, at, sizeof flags);
        flags = value != 0 ? flags | mask : flags & ~mask;
        std::memcpy(at, &flags, sizeof flags);
        break;
    }
    case Type::Bool:
        sample.paused = value != 0;
        break;
    }
    sample.vehicle.availabilityMask |= availability;
}

const std::vector<TelemetryField> &telemetryFields()
{
    static const std::vector<TelemetryField> fields = makeTable();
    return fields;
}

const TelemetryField *findTelemetryField(const QString &name)
{
    const std::vector<TelemetryField> &fields = telemetryFields();
    const auto found =
        std::find_if(fields.begin(), fields.end(),
                     [&name](const TelemetryField &field) { return field.name == name; });
    return found != fields.end() ? &*found : nullptr;
}
