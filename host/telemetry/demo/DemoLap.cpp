#include "DemoLap.h"

#include <QtCore/QtMath>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace {

constexpr float JackM = 0.12F;       // by which the box lifts the car to change its tyres
constexpr double FirstGearAt = 3;    // s on the grid
constexpr double ParkedSeconds = 10; // at the box after the race
constexpr double PausedSeconds = 4;
constexpr double UnknownSeconds = 5;
constexpr DisplayLimits Limits{4.5F, 15, 80, 87, 92, 95, {}};

constexpr double SteeringRatio = 15;
constexpr double UndersteerPerG = 0.009; // radians at the wheels
constexpr double BlanketC = 68;          // of a fresh tyre
constexpr double ColdBrakeC = 150;
constexpr std::array<double, 4> WearPerLap{1.35, 0.95, 1.2, 0.85}; // percent
constexpr std::array<double, 4> FilledKpa{157, 157, 154, 154};     // in the air's temperature
constexpr double DrsFrom = 720;                                    // m
constexpr double DrsTo = 1320;                                     // m

std::uint8_t percent(double value)
{
    return std::uint8_t(std::lround(std::clamp(value, 0.0, 100.0)));
}

bool isWithin(double value, double from, double to)
{
    return value >= from && value < to;
}

/// The car as it is driven, which is slower than its trace.
RaceCar drivenCar(const RaceScript &script, const RaceMoment &moment)
{
    const RaceLap &lap = script.lapOf(moment);
    RaceCar car = lap.trace->at(moment.trace);
    if (moment.held >= 0) {
        car.speed = car.slip = 0;
        car.gear = moment.lap == 0 && moment.held > FirstGearAt ? 1 : 0;
        car.throttle = std::clamp(moment.held - FirstGearAt, 0.0, car.throttle);
        car.rpm = RaceCar::freeRpm(car.throttle);
        car.brake = 0.4;
        car.clutch = 1;
        return car;
    }
    const double rate = lap.pace.rate(moment.trace);
    car.speed /= rate;
    car.rpm = std::max(car.rpm / rate, RaceCar::IdleRpm);
    // A lot slower means less of both pedals.
    const double eased = std::max(1.0, rate * rate / 1.1);
    car.throttle /= eased;
    car.brake /= eased;
    return car;
}

std::uint32_t statusFlags(const RaceLap &lap, const RaceMoment &moment, const RaceCar &car)
{
    const double place = car.distance;
    const bool isInPits = (lap.comesIn && place >= Circuit::PitEntry) ||
                          (lap.trace == &Laps::instance().out && place < Circuit::PitExit);
    const bool isInZone = lap.mayUseDrs && isWithin(place, DrsFrom, DrsTo);
    const bool isBlue = lap.blueFrom > 0 && isWithin(place, lap.blueFrom, lap.blueFrom + 350);
    const bool isYellow = lap.yellow && isWithin(moment.trace, lap.pace.slowFrom, lap.pace.slowTo);
    std::uint32_t flags = 0;
    const auto set = [&flags](bool condition, std::uint32_t bit) { flags |= condition ? bit : 0; };
    set(car.absLeft > 0, Status::AbsInAction);
    set(car.tcLeft > 0, Status::TcInAction);
    set(moment.lap == RaceScript::RaceLaps, Status::AutoShifter);
    set(isInPits, Status::SpeedLimiter);
    set(isInZone, Status::DrsAvailable);
    set(isInZone && place > DrsFrom + 18 && car.throttle > 0.95, Status::DrsEngaged);
    set(lap.punished && isWithin(place, 300, Circuit::PitEntry), Status::FlagBlack);
    set(isBlue, Status::FlagBlue);
    set(isYellow, Status::FlagYellow);
    set(lap.warned && isWithin(place, 150, 900), Status::FlagBlackAndWhite);
    return flags;
}

void fillMotion(VehicleTelemetry &vehicle, const RaceCar &car, const RoadPoint &road, double surge)
{
    const double sway = road.curvature * car.speed * car.speed;
    const double bumps =
        std::sin(car.distance / 3.1) * std::sin(car.distance / 11.7) + std::sin(car.distance / 7.3);
    const double heave = 0.4 * bumps * std::min(car.speed / 40, 2.0);
    const double wheels = RaceCar::Wheelbase * road.curvature + UndersteerPerG * sway / Gravity;
    const double turn = qRadiansToDegrees(wheels) * SteeringRatio / double(Limits.steeringScale);
    const double rideHeight = 0.075 - 3.8e-6 * car.speed * car.speed - 0.0012 * heave;
    const double bank = std::clamp(road.curvature * 3, -0.06, 0.06);
    const double ball = (Gravity * std::sin(bank) - sway * std::cos(bank)) / (2 * Gravity);

    vehicle.speedKmh = float(car.speed * (1 + car.slip) * 3.6);
    vehicle.groundSpeedKmh = float(car.speed * 3.6);
    vehicle.steeringPercent = std::int32_t(std::lround(std::clamp(turn, -100.0, 100.0)));
    vehicle.gear = std::int8_t(car.gear);
    vehicle.rpm = std::uint32_t(std::lround(car.rpm));
    vehicle.maxRpm = std::uint32_t(RaceCar::MaxRpm);
    vehicle.gasPedalPercent = percent(100 * car.throttle);
    vehicle.brakePedalPercent = percent(100 * car.brake);
    vehicle.clutchPedalPercent = percent(100 * car.clutch);
    vehicle.engineLoadPercent = car.shiftLeft > 0 ? 0 : percent(5 + 95 * car.throttle);
    vehicle.heaveG = float(heave / Gravity);
    vehicle.swayG = float(sway / Gravity);
    vehicle.surgeG = float(surge / Gravity);
    vehicle.altitudeAboveGroundM = float(rideHeight);
    vehicle.altitudeAboveSeaLevelM = float(road.elevation + rideHeight);
    vehicle.turnCoordinatorBall = float(std::clamp(ball, -1.0, 1.0));
    vehicle.pitchDeg = float(qRadiansToDegrees(std::atan(road.grade) + 0.019 * surge / Gravity));
    vehicle.rollDeg = float(qRadiansToDegrees(bank - 0.026 * sway / Gravity));
    vehicle.headingDeg = float(std::fmod(qRadiansToDegrees(road.heading) + 360, 360.0));
}

void fillRace(VehicleTelemetry &vehicle, const RaceScript &script, const RaceMoment &moment)
{
    const RaceLap &lap = script.lapOf(moment);
    const double fuel = script.fuel(moment);
    const double tyreLaps = script.tyreLaps(moment);
    vehicle.fuelLevelPercent = percent(fuel);
    vehicle.position = script.position(moment);
    vehicle.currentTimeMs = std::uint32_t(std::lround(1000 * moment.elapsed));
    vehicle.lastTimeMs = std::uint32_t(std::lround(1000 * lap.last));
    vehicle.bestTimeMs = std::uint32_t(std::lround(1000 * lap.best));
    vehicle.completedLaps = std::int32_t(moment.lap);
    vehicle.numberOfLaps = std::int32_t(RaceScript::RaceLaps);
    vehicle.deltaTimeS = float(script.delta(moment));
    // Old tyres get more help; the brakes' balance moves back as the tank empties.
    vehicle.absLevel = tyreLaps > 6 ? 5 : 4;
    vehicle.tractionControlLevel = std::uint8_t(3 + tyreLaps / 4);
    vehicle.brakeBiasPercent = std::int8_t(54 + std::lround(fuel * 0.03));
}

void fillCorners(TelemetrySample &sample, const RaceCar &car, double tyreLaps, double raceLaps)
{
    const bool isStraight = std::abs(sample.vehicle.swayG) < 0.3F;
    const std::size_t inner = sample.vehicle.swayG > 0 ? 1 : 0;
    const auto warmed = [](double cold, double warm, double laps) {
        return warm + (cold - warm) * std::exp(-1.8 * laps);
    };
    VehicleTelemetry &vehicle = sample.vehicle;
    for (std::size_t i = 0; i < car.corners.size(); ++i) {
        const Corner &corner = car.corners[i];
        const double tyre = warmed(BlanketC, corner.tyreC, tyreLaps);
        const double brake = warmed(ColdBrakeC, corner.brakeC, raceLaps);
        // The pressure goes with the absolute temperature.
        const double carcass = warmed(BlanketC, corner.carcassC, tyreLaps) - RaceCar::AirC;
        const double pressure = FilledKpa[i] * (1 + carcass / (RaceCar::AirC + 273.15));
        vehicle.tyreTempC[i] = std::int32_t(std::lround(tyre));
        vehicle.brakeTempC[i] = std::int32_t(std::lround(brake));
        vehicle.tyreWearPercent[i] = percent(WearPerLap[i] * tyreLaps);
        vehicle.tyrePressureKpa[i] = std::uint32_t(std::lround(pressure));

        // The unloaded wheel is the first to lock or to spin.
        const double assisted = i < 2 ? car.absLeft : car.tcLeft;
        const bool spins = assisted > 0 && (isStraight || i % 2 == inner);
        sample.extended.wheels[i].wheelFlagA = spins ? 1 : 0;
    }
}

} // namespace

DemoLap::DemoLap(std::uint32_t seed)
    : script(seed)
{
}

TelemetrySample DemoLap::sampleAt(double seconds) const
{
    const double pause = script.end() + ParkedSeconds;
    const double silence = pause + PausedSeconds;
    const double moment = std::isfinite(seconds) ? std::max(seconds, 0.0) : 0;
    const double now = std::fmod(moment, silence + UnknownSeconds);
    TelemetrySample sample;
    if (now >= silence)
        return sample;

    const RaceMoment race = script.at(now);
    const RaceCar car = drivenCar(script, race);
    const RoadPoint road = Laps::instance().circuit.at(car.distance);
    constexpr double Near = LapTrace::Step / 2;
    const double surge = (drivenCar(script, script.at(now + Near)).speed -
                          drivenCar(script, script.at(now - Near)).speed) /
                         LapTrace::Step;
    sample.paused = now >= pause;
    sample.limits = Limits;
    sample.vehicle.availabilityMask = ~std::uint64_t{0};
    sample.vehicle.statusFlags = statusFlags(script.lapOf(race), race, car);
    fillMotion(sample.vehicle, car, road, surge);
    if (race.lap > 0 && isWithin(race.held, 1, RaceScript::TyresDone))
        sample.vehicle.altitudeAboveGroundM += JackM;
    fillRace(sample.vehicle, script, race);
    fillCorners(sample, car, script.tyreLaps(race), script.lapsDriven(race));
    return sample;
}
