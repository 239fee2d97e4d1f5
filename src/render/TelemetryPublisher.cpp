#include "render/TelemetryPublisher.h"

#include <QtCore/QVariant>

#include <utility>

// Names are built at compile time; a macro is the only way to join literals for QStringLiteral.
#define TWIN(name)                                                                                 \
    TwinName                                                                                       \
    {                                                                                              \
        QStringLiteral(name), QStringLiteral(name "_Available")                                    \
    }
#define CORNERS(stem)                                                                              \
    CornerNames                                                                                    \
    {                                                                                              \
        TWIN(stem "_FL"), TWIN(stem "_FR"), TWIN(stem "_RL"), TWIN(stem "_RR")                     \
    }

namespace di = DerivedIndicators;

TelemetryPublisher::TelemetryPublisher(PropertySink sink)
    : sink(std::move(sink))
{
}

void TelemetryPublisher::publish(const Publication &publication)
{
    const VehicleTelemetry &vehicle = publication.vehicle;
    smoothedSteering += (static_cast<float>(vehicle.steeringPercent) - smoothedSteering) *
                        publication.steeringSmoothing;
    if (publication.paused)
        rpmAverage.reset();
    else
        rpmAverage.add(vehicle.rpm);

    publishArguments(publication);
    publishEngineAndSpeed(vehicle);
    publishTiming(vehicle);
    publishControls(vehicle);
    publishCorners(vehicle);
    publishAssists(vehicle);
    publishMotion(vehicle);
    publishSession(vehicle);
    publishLimits(publication.limits);
    publishTune(publication.motionProfileName, publication.tune);
    publishWarnings(publication);
    recordNames = false;
}

std::set<QString> TelemetryPublisher::publishedFields() const
{
    const LockGuard guard(namesLock);
    return publishedNames;
}

void TelemetryPublisher::publishArguments(const Publication &publication)
{
    write(QStringLiteral("dash_paused"), publication.paused);
    write(QStringLiteral("dash_useMph"), publication.useMph);
    write(QStringLiteral("dash_showMarkers"), publication.showMarkers);
}

void TelemetryPublisher::publishEngineAndSpeed(const VehicleTelemetry &vehicle)
{
    rpm = di::roundedAwayFromZero(rpmAverage.average());
    const float speed = vehicle.speedKmh;
    const float groundSpeed = vehicle.groundSpeedKmh;
    const int gear = vehicle.gear;

    write(QStringLiteral("dash_rpm"), rpm);
    write(QStringLiteral("dash_rpmPercent"), di::rpmShare(rpm, vehicle.maxRpm));
    write(QStringLiteral("dash_maxRpm"), uint{vehicle.maxRpm});
    write(QStringLiteral("dash_speed_kmh"), di::rounded(speed));
    write(QStringLiteral("dash_groundSpeed_kmh"), di::rounded(groundSpeed));
    write(QStringLiteral("dash_speed_mph"), di::rounded(speed * di::MphPerKmh));
    write(QStringLiteral("dash_speed_knots"), di::rounded(speed * di::KnotsPerKmh));
    write(QStringLiteral("dash_groundSpeed_mph"), di::rounded(groundSpeed * di::MphPerKmh));
    write(QStringLiteral("dash_groundSpeed_knots"), di::rounded(groundSpeed * di::KnotsPerKmh));
    write(QStringLiteral("dash_gear"), gear);
    write(QStringLiteral("dash_gear_str"),
          di::gearText(gear, (vehicle.statusFlags & Status::AutoShifter) != 0));
}

void TelemetryPublisher::publishTiming(const VehicleTelemetry &vehicle)
{
    const std::uint64_t mask = vehicle.availabilityMask;
    const uint current = vehicle.currentTimeMs;
    const uint best = vehicle.bestTimeMs;
    const uint last = vehicle.lastTimeMs;
    const int laps = vehicle.numberOfLaps;

    write(TWIN("dash_currentTime_str"), mask, Available::CurrentTime, di::timeText(current));
    write(TWIN("dash_currentTime_ms"), mask, Available::CurrentTime, current);
    write(TWIN("dash_bestTime_str"), mask, Available::BestTime, di::timeText(best));
    write(TWIN("dash_bestTime_ms"), mask, Available::BestTime, best);
    write(TWIN("dash_lastTime_str"), mask, Available::LastTime, di::timeText(last));
    write(TWIN("dash_lastTime_ms"), mask, Available::LastTime, last);
    write(TWIN("dash_completedLaps"), mask, Available::CompletedLaps, int{vehicle.completedLaps});
    write(TWIN("dash_numberOfLaps"), mask, Available::NumberOfLaps, laps);
    write(TWIN("dash_numberOfLaps_str"), mask, Available::NumberOfLaps, di::lapText(laps));
}

void TelemetryPublisher::publishControls(const VehicleTelemetry &vehicle)
{
    const std::uint64_t mask = vehicle.availabilityMask;
    const float delta = di::clampedDelta(vehicle.deltaTimeS);

    write(TWIN("dash_abs_Level"), mask, Available::AbsLevel, int{vehicle.absLevel});
    write(TWIN("dash_tractionControl_Level"), mask, Available::TractionControlLevel,
          int{vehicle.tractionControlLevel});
    write(TWIN("dash_fuelLevel_Percent"), mask, Available::FuelLevel,
          int{vehicle.fuelLevelPercent});
    write(TWIN("dash_gasPedal_Percent"), mask, Available::Pedals, int{vehicle.gasPedalPercent});
    write(TWIN("dash_brakePedal_Percent"), mask, Available::Pedals, int{vehicle.brakePedalPercent});
    write(TWIN("dash_clutchPedal_Percent"), mask, Available::Pedals,
          int{vehicle.clutchPedalPercent});
    write(QStringLiteral("dash_autoShifter"), (vehicle.statusFlags & Status::AutoShifter) != 0);
    write(QStringLiteral("dash_deltaTime_s"), delta);
    write(QStringLiteral("dash_deltaTime_str"), di::deltaText(delta));
}

void TelemetryPublisher::publishCorners(const VehicleTelemetry &vehicle)
{
    const VehicleTelemetry &v = vehicle;
    const std::uint64_t mask = v.availabilityMask;

    // Element by element: the packed record may lie at any address, and a reference to an int may
    // not.
    writeCorners<int>(CORNERS("dash_tyreTemp_C"), mask, Available::TyreTemp,
                      {v.tyreTempC[0], v.tyreTempC[1], v.tyreTempC[2], v.tyreTempC[3]});
    writeCorners<int>(
        CORNERS("dash_tyreWear_Percent"), mask, Available::TyreWear,
        {v.tyreWearPercent[0], v.tyreWearPercent[1], v.tyreWearPercent[2], v.tyreWearPercent[3]});
    writeCorners<int>(CORNERS("dash_brakeTemp_C"), mask, Available::BrakeTemp,
                      {v.brakeTempC[0], v.brakeTempC[1], v.brakeTempC[2], v.brakeTempC[3]});
    writeCorners<uint>(
        CORNERS("dash_tyrePressure_kPa"), mask, Available::TyrePressure,
        {v.tyrePressureKpa[0], v.tyrePressureKpa[1], v.tyrePressureKpa[2], v.tyrePressureKpa[3]});
}

void TelemetryPublisher::publishAssists(const VehicleTelemetry &vehicle)
{
    const std::uint64_t mask = vehicle.availabilityMask;
    const std::uint32_t flags = vehicle.statusFlags;

    write(TWIN("dash_brakeBias_Percent"), mask, Available::BrakeBias,
          int{vehicle.brakeBiasPercent});
    write(TWIN("dash_position"), mask, Available::Position, int{vehicle.position});
    write(TWIN("dash_speedLimiter"), mask, Available::SpeedLimiter,
          (flags & Status::SpeedLimiter) != 0);
    write(TWIN("dash_absInAction"), mask, Available::AbsInAction,
          (flags & Status::AbsInAction) != 0);
    write(TWIN("dash_tcInAction"), mask, Available::TcInAction, (flags & Status::TcInAction) != 0);
}

void TelemetryPublisher::publishMotion(const VehicleTelemetry &vehicle)
{
    const float aboveGround = vehicle.altitudeAboveGroundM;
    const float aboveSea = vehicle.altitudeAboveSeaLevelM;

    write(QStringLiteral("dash_surgeG"), float{vehicle.surgeG});
    write(QStringLiteral("dash_swayG"), float{vehicle.swayG});
    write(QStringLiteral("dash_heaveG"), float{vehicle.heaveG});
    write(QStringLiteral("dash_altitudeAboveGround_m"), aboveGround);
    write(QStringLiteral("dash_altitudeAboveGround_feet"),
          di::rounded(aboveGround * di::FeetPerMetre));
    write(QStringLiteral("dash_altitudeAboveSeaLevel_m"), aboveSea);
    write(QStringLiteral("dash_altitudeAboveSeaLevel_feet"),
          di::rounded(aboveSea * di::FeetPerMetre));
    write(QStringLiteral("dash_turnCoordinatorBall"), float{vehicle.turnCoordinatorBall});
    write(QStringLiteral("dash_heading_deg"), float{vehicle.headingDeg});
    write(QStringLiteral("dash_pitch_deg"), float{vehicle.pitchDeg});
    write(QStringLiteral("dash_roll_deg"), float{vehicle.rollDeg});
}

void TelemetryPublisher::publishSession(const VehicleTelemetry &vehicle)
{
    const std::uint32_t flags = vehicle.statusFlags;

    write(QStringLiteral("dash_drsAvailable"), (flags & Status::DrsAvailable) != 0);
    write(QStringLiteral("dash_drsEngaged"), (flags & Status::DrsEngaged) != 0);
    write(QStringLiteral("dash_sessionFlagYellow"), (flags & Status::FlagYellow) != 0);
    write(QStringLiteral("dash_sessionFlagBlue"), (flags & Status::FlagBlue) != 0);
    write(QStringLiteral("dash_sessionFlagBlackAndWhite"),
          (flags & Status::FlagBlackAndWhite) != 0);
    write(QStringLiteral("dash_sessionFlagBlack"), (flags & Status::FlagBlack) != 0);
    write(TWIN("dash_engineLoad_Percent"), vehicle.availabilityMask, Available::EngineLoad,
          int{vehicle.engineLoadPercent});
}

void TelemetryPublisher::publishLimits(const DisplayLimits &limits)
{
    write(QStringLiteral("dash_frameCounter1000"), uint{publications.advance()});
    write(QStringLiteral("dash_angle"), smoothedSteering * limits.steeringScale);
    write(QStringLiteral("dash_lowFuelLevelThreshold_Percent"),
          int{limits.lowFuelLevelThresholdPercent});
    write(QStringLiteral("dash_rpmGreenThreshold_Percent"), int{limits.rpmGreenThresholdPercent});
    write(QStringLiteral("dash_rpmYellowThreshold_Percent"), int{limits.rpmYellowThresholdPercent});
    write(QStringLiteral("dash_rpmRedThreshold_Percent"), int{limits.rpmRedThresholdPercent});
    write(QStringLiteral("dash_rpmBlinkingThreshold_Percent"),
          int{limits.rpmBlinkingThresholdPercent});
}

void TelemetryPublisher::publishTune(const QString &motionProfileName, const TuneInfo &tune)
{
    write(QStringLiteral("dash_motionProfileName"), motionProfileName);
    write(QStringLiteral("dash_tuneGroup"), tune.group);
    write(QStringLiteral("dash_tuneName"), tune.name);
    write(QStringLiteral("dash_tuneValueName"), tune.valueName);
    write(QStringLiteral("dash_tuneValueMin"), tune.valueMin);
    write(QStringLiteral("dash_tuneValueMax"), tune.valueMax);
    write(QStringLiteral("dash_tuneValueCurrent"), tune.valueCurrent);
    write(QStringLiteral("dash_tuneValueIsInteger"), tune.valueIsInteger);
    write(QStringLiteral("dash_tuneChangeCounter"), uint{tune.changeCounter});
}

void TelemetryPublisher::publishWarnings(const Publication &publication)
{
    const bool phase = publications.blinkPhase();
    const auto slips = [&publication, phase](int corner) {
        const ExtendedTelemetry::Wheel &wheel = publication.extended.wheels[corner];
        return phase && (wheel.wheelFlagA != 0 || wheel.wheelFlagB != 0);
    };
    write(QStringLiteral("dash_wheelSlip_FL"), slips(0));
    write(QStringLiteral("dash_wheelSlip_FR"), slips(1));
    write(QStringLiteral("dash_wheelSlip_RL"), slips(2));
    write(QStringLiteral("dash_wheelSlip_RR"), slips(3));
    write(QStringLiteral("dash_rpmBlink"),
          phase && di::rpmWarning(rpm, publication.vehicle.maxRpm,
                                  publication.limits.rpmBlinkingThresholdPercent));
}

void TelemetryPublisher::write(const QString &name, const QVariant &value)
{
    if (recordNames) {
        const LockGuard guard(namesLock);
        publishedNames.insert(name);
    }
    sink(name, value);
}

void TelemetryPublisher::write(const TwinName &name, std::uint64_t mask, std::uint64_t guard,
                               const QVariant &value)
{
    write(name.value, value);
    write(name.available, (mask & guard) != 0);
}

template<typename Published>
void TelemetryPublisher::writeCorners(const CornerNames &names, std::uint64_t mask,
                                      std::uint64_t guard, const std::array<Published, 4> &values)
{
    for (std::size_t corner = 0; corner < names.size(); ++corner)
        write(names[corner], mask, guard, values[corner]);
}
