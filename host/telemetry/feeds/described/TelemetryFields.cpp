#include "TelemetryFields.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <type_traits>

namespace {

using Range = TelemetryField::Range;

constexpr Range Any{-std::numeric_limits<double>::max(), std::numeric_limits<double>::max()};
constexpr Range Percent{0, 100};
constexpr Range EitherWay{-100, 100};

template<typename Number> Number convert(double value)
{
    using Limits = std::numeric_limits<Number>;
    const double fitting = std::clamp(value, static_cast<double>(Limits::lowest()),
                                      static_cast<double>(Limits::max()));
    return static_cast<Number>(std::is_integral_v<Number> ? std::round(fitting) : fitting);
}

void writeHeading(TelemetrySample &sample, double value)
{
    constexpr double Circle = 360;
    const double turned = std::fmod(value, Circle);
    sample.vehicle.headingDeg = static_cast<float>(turned < 0 ? turned + Circle : turned);
}

template<std::uint32_t Flag> void writeFlag(TelemetrySample &sample, double value)
{
    const std::uint32_t flags = sample.vehicle.statusFlags & ~Flag;
    sample.vehicle.statusFlags = value != 0 ? flags | Flag : flags;
}

void writePaused(TelemetrySample &sample, double value)
{
    sample.paused = value != 0;
}

// The records are packed: a function that took the member by reference would see it misaligned.
#define WRITE(member)                                                                              \
    [](TelemetrySample &sample, double value) {                                                    \
        sample.member = convert<std::decay_t<decltype(sample.member)>>(value);                     \
    }

std::vector<TelemetryField> makeFields()
{
    return {
        {"speedKmh", Any, 0, WRITE(vehicle.speedKmh)},
        {"groundSpeedKmh", Any, 0, WRITE(vehicle.groundSpeedKmh)},
        {"steeringPercent", EitherWay, 0, WRITE(vehicle.steeringPercent)},
        {"gear", Any, 0, WRITE(vehicle.gear)},
        {"rpm", Any, 0, WRITE(vehicle.rpm)},
        {"maxRpm", Any, 0, WRITE(vehicle.maxRpm)},
        {"gasPedalPercent", Percent, Available::Pedals, WRITE(vehicle.gasPedalPercent)},
        {"brakePedalPercent", Percent, Available::Pedals, WRITE(vehicle.brakePedalPercent)},
        {"clutchPedalPercent", Percent, Available::Pedals, WRITE(vehicle.clutchPedalPercent)},
        {"fuelLevelPercent", Percent, Available::FuelLevel, WRITE(vehicle.fuelLevelPercent)},
        {"position", Any, Available::Position, WRITE(vehicle.position)},
        {"currentTimeMs", Any, Available::CurrentTime, WRITE(vehicle.currentTimeMs)},
        {"lastTimeMs", Any, Available::LastTime, WRITE(vehicle.lastTimeMs)},
        {"bestTimeMs", Any, Available::BestTime, WRITE(vehicle.bestTimeMs)},
        {"completedLaps", Any, Available::CompletedLaps, WRITE(vehicle.completedLaps)},
        {"numberOfLaps", Any, Available::NumberOfLaps, WRITE(vehicle.numberOfLaps)},
        {"deltaTimeS", Any, 0, WRITE(vehicle.deltaTimeS)},
        {"absLevel", Any, Available::AbsLevel, WRITE(vehicle.absLevel)},
        {"tractionControlLevel", Any, Available::TractionControlLevel,
         WRITE(vehicle.tractionControlLevel)},
        {"heaveG", Any, 0, WRITE(vehicle.heaveG)},
        {"swayG", Any, 0, WRITE(vehicle.swayG)},
        {"surgeG", Any, 0, WRITE(vehicle.surgeG)},
        {"brakeBiasPercent", EitherWay, Available::BrakeBias, WRITE(vehicle.brakeBiasPercent)},
        {"tyreTempC_FL", Any, Available::TyreTemp, WRITE(vehicle.tyreTempC[0])},
        {"tyreTempC_FR", Any, Available::TyreTemp, WRITE(vehicle.tyreTempC[1])},
        {"tyreTempC_RL", Any, Available::TyreTemp, WRITE(vehicle.tyreTempC[2])},
        {"tyreTempC_RR", Any, Available::TyreTemp, WRITE(vehicle.tyreTempC[3])},
        {"brakeTempC_FL", Any, Available::BrakeTemp, WRITE(vehicle.brakeTempC[0])},
        {"brakeTempC_FR", Any, Available::BrakeTemp, WRITE(vehicle.brakeTempC[1])},
        {"brakeTempC_RL", Any, Available::BrakeTemp, WRITE(vehicle.brakeTempC[2])},
        {"brakeTempC_RR", Any, Available::BrakeTemp, WRITE(vehicle.brakeTempC[3])},
        {"tyreWearPercent_FL", Percent, Available::TyreWear, WRITE(vehicle.tyreWearPercent[0])},
        {"tyreWearPercent_FR", Percent, Available::TyreWear, WRITE(vehicle.tyreWearPercent[1])},
        {"tyreWearPercent_RL", Percent, Available::TyreWear, WRITE(vehicle.tyreWearPercent[2])},
        {"tyreWearPercent_RR", Percent, Available::TyreWear, WRITE(vehicle.tyreWearPercent[3])},
        {"tyrePressureKpa_FL", Any, Available::TyrePressure, WRITE(vehicle.tyrePressureKpa[0])},
        {"tyrePressureKpa_FR", Any, Available::TyrePressure, WRITE(vehicle.tyrePressureKpa[1])},
        {"tyrePressureKpa_RL", Any, Available::TyrePressure, WRITE(vehicle.tyrePressureKpa[2])},
        {"tyrePressureKpa_RR", Any, Available::TyrePressure, WRITE(vehicle.tyrePressureKpa[3])},
        {"engineLoadPercent", Percent, Available::EngineLoad, WRITE(vehicle.engineLoadPercent)},
        {"altitudeAboveGroundM", Any, 0, WRITE(vehicle.altitudeAboveGroundM)},
        {"altitudeAboveSeaLevelM", Any, 0, WRITE(vehicle.altitudeAboveSeaLevelM)},
        {"turnCoordinatorBall", Range{-1, 1}, 0, WRITE(vehicle.turnCoordinatorBall)},
        {"pitchDeg", Any, 0, WRITE(vehicle.pitchDeg)},
        {"rollDeg", Any, 0, WRITE(vehicle.rollDeg)},
        {"headingDeg", Any, 0, &writeHeading},
        {"absInAction", Any, Available::AbsInAction, &writeFlag<Status::AbsInAction>},
        {"tcInAction", Any, Available::TcInAction, &writeFlag<Status::TcInAction>},
        {"autoShifter", Any, 0, &writeFlag<Status::AutoShifter>},
        {"speedLimiter", Any, Available::SpeedLimiter, &writeFlag<Status::SpeedLimiter>},
        {"drsAvailable", Any, 0, &writeFlag<Status::DrsAvailable>},
        {"drsEngaged", Any, 0, &writeFlag<Status::DrsEngaged>},
        {"flagBlack", Any, 0, &writeFlag<Status::FlagBlack>},
        {"flagBlue", Any, 0, &writeFlag<Status::FlagBlue>},
        {"flagYellow", Any, 0, &writeFlag<Status::FlagYellow>},
        {"flagBlackAndWhite", Any, 0, &writeFlag<Status::FlagBlackAndWhite>},
        {"paused", Any, 0, &writePaused},
        {"steeringScale", Any, 0, WRITE(limits.steeringScale)},
        {"lowFuelLevelThresholdPercent", Percent, 0, WRITE(limits.lowFuelLevelThresholdPercent)},
        {"rpmGreenThresholdPercent", Percent, 0, WRITE(limits.rpmGreenThresholdPercent)},
        {"rpmYellowThresholdPercent", Percent, 0, WRITE(limits.rpmYellowThresholdPercent)},
        {"rpmRedThresholdPercent", Percent, 0, WRITE(limits.rpmRedThresholdPercent)},
        {"rpmBlinkingThresholdPercent", Percent, 0, WRITE(limits.rpmBlinkingThresholdPercent)},
        {"wheelFlagA_FL", Any, 0, WRITE(extended.wheels[0].wheelFlagA)},
        {"wheelFlagA_FR", Any, 0, WRITE(extended.wheels[1].wheelFlagA)},
        {"wheelFlagA_RL", Any, 0, WRITE(extended.wheels[2].wheelFlagA)},
        {"wheelFlagA_RR", Any, 0, WRITE(extended.wheels[3].wheelFlagA)},
        {"wheelFlagB_FL", Any, 0, WRITE(extended.wheels[0].wheelFlagB)},
        {"wheelFlagB_FR", Any, 0, WRITE(extended.wheels[1].wheelFlagB)},
        {"wheelFlagB_RL", Any, 0, WRITE(extended.wheels[2].wheelFlagB)},
        {"wheelFlagB_RR", Any, 0, WRITE(extended.wheels[3].wheelFlagB)},
    };
}

} // namespace

void TelemetryField::set(TelemetrySample &sample, double value) const
{
    if (!std::isfinite(value))
        return;
    write(sample, std::clamp(value, range.least, range.most));
    sample.vehicle.availabilityMask |= availability;
}

const std::vector<TelemetryField> &telemetryFields()
{
    static const std::vector<TelemetryField> fields = makeFields();
    return fields;
}

const TelemetryField *findTelemetryField(const QString &name)
{
    const std::vector<TelemetryField> &fields = telemetryFields();
    const auto found =
        std::find_if(fields.begin(), fields.end(), [&name](const TelemetryField &field) {
            return name == QLatin1String(field.name);
        });
    return found != fields.end() ? &*found : nullptr;
}
