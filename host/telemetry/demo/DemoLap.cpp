#include "DemoLap.h"

#include "Chance.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace {

constexpr double StepSeconds = 1.0 / DemoLap::StepsPerSecond;
constexpr std::uint64_t CheckpointSteps = std::uint64_t{10} * DemoLap::StepsPerSecond;
constexpr std::uint64_t OrderSteps = DemoLap::StepsPerSecond / 10;
constexpr std::uint64_t LongestSteps = std::uint64_t{86'400} * DemoLap::StepsPerSecond;
constexpr double LatestMoment = 1e12; // s; further on the steps could no longer be counted

constexpr double GridDistance = -60; // m from the start line
constexpr double FirstGearAt = 2;    // s
constexpr double LightsOut = 5;      // s
constexpr double StartFuel = 0.48;   // of the tank
constexpr double LowFuel = 0.15;     // of the tank
constexpr double LapFuel = 1.6;      // kg
constexpr double SpareFuel = 3;      // kg at the flag, for the way back and a margin
constexpr double RefuelRate = 2.2;   // kg/s
constexpr double TyresChangedAt = 5; // s at the box
constexpr double ShortestStop = 7;   // s
constexpr double PenaltyStop = 17;   // s
constexpr double LastStop = 10;      // s
constexpr double YellowPace = 0.86;
constexpr double CoolDownPace = 0.82;

constexpr double SteeringRatio = 15;
constexpr double SteeringDegreesPerPercent = 4.5;
constexpr double UndersteerPerG = 0.009; // radians at the wheels

constexpr std::uint64_t EveryField =
    Available::Pedals | Available::FuelLevel | Available::Position | Available::CurrentTime |
    Available::LastTime | Available::BestTime | Available::CompletedLaps | Available::NumberOfLaps |
    Available::AbsLevel | Available::TractionControlLevel | Available::BrakeBias |
    Available::TyreTemp | Available::TyreWear | Available::BrakeTemp | Available::TyrePressure |
    Available::AbsInAction | Available::TcInAction | Available::SpeedLimiter |
    Available::EngineLoad;

double degrees(double radians)
{
    return radians * 180 / Pi;
}

std::uint8_t percent(double share)
{
    return static_cast<std::uint8_t>(std::lround(std::clamp(share, 0.0, 1.0) * 100));
}

std::uint32_t milliseconds(double seconds)
{
    return static_cast<std::uint32_t>(std::llround(std::max(seconds, 0.0) * 1000));
}

/// kPa of a tyre that was filled when cold: the pressure goes with the absolute temperature.
std::uint32_t pressureOf(const Corner &corner, bool front)
{
    const double cold = front ? 157 : 154;
    return static_cast<std::uint32_t>(
        std::lround(cold * (corner.carcassC + 273.15) / (VehicleModel::AirC + 273.15)));
}

} // namespace

DemoLap::DemoLap(std::uint32_t seed, std::uint32_t laps, QString carName)
    : carName(std::move(carName))
    , seed(seed)
    , laps(std::clamp(laps, 1U, LongestRace))
    , driver(circuit, seed)
    , director(seed, this->laps, driver.flyingLap())
    , timing(circuit.length(), this->laps)
{
    state.car.distance = GridDistance;
    state.car.fuelKg = StartFuel * VehicleModel::TankKg;
    state.times.lapStart = LightsOut;
    state.field = director.grid();
    checkpoints.push_back(state);
}

double DemoLap::timeOf(const State &state)
{
    return static_cast<double>(state.steps) / StepsPerSecond;
}

bool DemoLap::inPitLane(double place) const
{
    return state.comingIn && Circuit::isPitLane(place);
}

bool DemoLap::isYellow(double place) const
{
    return !isFinished() && !inPitLane(place) && director.isYellow(state.times.completed, place);
}

bool DemoLap::isPenalized() const
{
    const std::uint32_t lap = state.times.completed;
    return lap > 0 && !isFinished() && driver.mistakes(lap - 1) >= 4;
}

double DemoLap::brakeBias() const
{
    // The driver moves the balance back as the tank empties and the nose gets lighter.
    return 0.54 + 0.01 * std::round(3 * state.car.fuelKg / VehicleModel::TankKg);
}

int DemoLap::tcLevel() const
{
    const double wear = (state.car.corners[2].wear + state.car.corners[3].wear) / 2;
    return 3 + static_cast<int>(std::min(wear / 5, 5.0));
}

void DemoLap::callIn(double place)
{
    if (state.comingIn) {
        if (place >= Circuit::PitExit && place < Circuit::PitCall) {
            state.comingIn = false;
            state.served = false;
        }
        return;
    }
    if (place < Circuit::PitCall || place >= Circuit::PitEntry - 250)
        return;
    const std::uint32_t lap = state.times.completed;
    const auto longest = 10 + static_cast<std::uint32_t>(4 * chance(seed, 'p', lap / 8, 0));
    const bool needs = state.car.fuelKg < LowFuel * VehicleModel::TankKg ||
                       state.stintLaps >= longest || isPenalized();
    state.comingIn = isFinished() || (needs && lap + 1 < laps);
}

void DemoLap::useWing(double place)
{
    const std::int32_t zone = Circuit::drsZoneAt(place);
    const std::uint32_t lap = state.times.completed;
    if (zone != state.zone) {
        state.zone = zone;
        state.drsTime = 0;
        state.drsAvailable = zone >= 0 && lap > 0 && !isFinished() && !isYellow(place) &&
                             director.followsRival(state.field);
    }
    const bool flatOut = state.car.throttle > 0.95 && state.car.brake <= 0;
    state.drsTime += state.drsAvailable ? StepSeconds : 0;
    state.drsEngaged = state.drsAvailable && flatOut && state.drsTime > 0.25;
}

bool DemoLap::isServing(double place) const
{
    return inPitLane(place) && !state.served && state.car.speed < 1 &&
           std::abs(place - Circuit::PitBox) < 1.5;
}

void DemoLap::serve(Controls &controls)
{
    controls.throttle = 0;
    controls.brake = 0.5;
    controls.neutral = state.car.speed <= 0;
    if (!controls.neutral)
        return;
    if (state.standing <= 0) {
        const std::uint32_t left = laps - std::min(laps, state.times.completed + 1);
        const double needed = std::min(left * LapFuel + SpareFuel, 0.95 * VehicleModel::TankKg);
        state.fuelTarget = isFinished() ? 0 : needed;
    }
    const bool tyresBefore = state.standing < TyresChangedAt;
    state.standing += StepSeconds;
    if (isFinished()) {
        state.over = state.standing >= LastStop;
        return;
    }
    if (state.standing > 1 && state.car.fuelKg < state.fuelTarget)
        state.car.fuelKg += RefuelRate * StepSeconds;
    if (tyresBefore && state.standing >= TyresChangedAt) {
        for (Corner &corner : state.car.corners) {
            corner.surfaceC = corner.carcassC = VehicleModel::BlanketC;
            corner.wear = 0;
        }
    }
    const double shortest = isPenalized() ? PenaltyStop : ShortestStop;
    if (state.standing >= shortest && state.car.fuelKg >= state.fuelTarget) {
        state.served = true;
        state.standing = 0;
        state.stintLaps = 0;
    }
}

Controls DemoLap::control(const RoadPoint &road, double place)
{
    const std::uint32_t lap = state.times.completed;
    double pace = std::sqrt(VehicleModel::gripOf(state.car));
    pace *= isFinished() ? CoolDownPace : driver.commitment(lap, road.curveAhead);
    if (isYellow(place))
        pace *= YellowPace;
    state.pace += (pace - state.pace) * StepSeconds / 0.4;

    Orders orders;
    orders.pace = state.pace;
    orders.eagerness = driver.eagerness(lap, road.curveAhead);
    orders.brakeStab = driver.brakeStab(lap, road.curveAhead);
    orders.comingIn = state.comingIn;
    orders.stopAtBox = state.comingIn && !state.served;
    orders.followSpeed = inPitLane(place);
    Controls controls = driver.pedals(state.car, road, orders);

    const double now = timeOf(state);
    if (now < LightsOut) {
        controls.brake = 0.3;
        controls.neutral = now < FirstGearAt;
        controls.holdClutch = true;
        controls.throttle = now < FirstGearAt + 1 ? 0 : 0.85;
    } else if (isServing(place)) {
        serve(controls);
    }
    controls.brakeBias = brakeBias();
    controls.limiterSpeed = inPitLane(place) ? Driver::PitSpeed : 0;
    controls.wingOpen = state.drsEngaged;
    controls.tcShare = 1 - 0.005 * tcLevel();
    return controls;
}

void DemoLap::advance()
{
    const double from = circuit.wrapped(state.car.distance);
    const RoadPoint road = circuit.at(state.car.distance);
    callIn(from);
    const Controls controls = control(road, from);

    const double before = state.car.distance;
    const double start = timeOf(state);
    const std::uint32_t lap = state.times.completed;
    VehicleModel::step(state.car, controls, road, StepSeconds);
    ++state.steps;
    timing.advance(state.times, before, state.car.distance, start, timeOf(state));
    state.stintLaps += state.times.completed - lap;
    const double place = circuit.wrapped(state.car.distance);
    useWing(place);
    if (state.steps % OrderSteps == 0) {
        const bool held = timeOf(state) <= LightsOut || isFinished() || isYellow(place);
        director.advance(state.field, state.times.completed, state.car.distance,
                         OrderSteps * StepSeconds, held);
    }
    state.over = state.over || state.steps >= LongestSteps;
    if (state.steps == checkpoints.size() * CheckpointSteps)
        checkpoints.push_back(state);
}

void DemoLap::moveTo(std::uint64_t step)
{
    const auto wanted = static_cast<std::size_t>(step / CheckpointSteps);
    const State &nearest = checkpoints[std::min(wanted, checkpoints.size() - 1)];
    if (step < state.steps || nearest.steps > state.steps)
        state = nearest;
    while (state.steps < step && !state.over)
        advance();
}

TelemetrySample DemoLap::sampleAt(double seconds)
{
    const double moment = std::isfinite(seconds) ? std::clamp(seconds, 0.0, LatestMoment) : 0;
    // A frame's time such as 1/60 s may stand a rounding error before the step that it means.
    const auto step = static_cast<std::uint64_t>(moment * StepsPerSecond + 1e-4);
    moveTo(raceSteps > 0 ? step % raceSteps : step);
    if (state.over) {
        raceSteps = state.steps;
        moveTo(step % raceSteps);
    }

    const RoadPoint road = circuit.at(state.car.distance);
    TelemetrySample sample;
    sample.vehicle.availabilityMask = EveryField;
    sample.vehicle.statusFlags = statusFlags(circuit.wrapped(state.car.distance));
    fillMotion(sample.vehicle, road);
    fillRace(sample.vehicle);
    fillCorners(sample);
    sample.limits.steeringScale = static_cast<float>(SteeringDegreesPerPercent);
    sample.limits.lowFuelLevelThresholdPercent = percent(LowFuel);
    sample.limits.rpmGreenThresholdPercent = 80;
    sample.limits.rpmYellowThresholdPercent = 88;
    sample.limits.rpmRedThresholdPercent = 94;
    sample.limits.rpmBlinkingThresholdPercent = 97;
    return sample;
}

QString DemoLap::vehicleNameAt(double /*seconds*/)
{
    return carName;
}

std::uint32_t DemoLap::statusFlags(double place) const
{
    const std::uint32_t lap = state.times.completed;
    const unsigned mistakes = lap > 0 ? driver.mistakes(lap - 1) : 0;
    const bool onRoad = !isFinished() && !inPitLane(place);
    std::uint32_t flags = 0;
    const auto set = [&flags](bool condition, std::uint32_t bit) { flags |= condition ? bit : 0; };
    set(state.car.absTime > 0, Status::AbsInAction);
    set(state.car.tcTime > 0, Status::TcInAction);
    set(inPitLane(place), Status::SpeedLimiter);
    set(state.drsAvailable, Status::DrsAvailable);
    set(state.drsEngaged, Status::DrsEngaged);
    set(onRoad && isPenalized() && place > 300, Status::FlagBlack);
    set(onRoad && !isYellow(place) && director.isLapped(state.field), Status::FlagBlue);
    set(isYellow(place), Status::FlagYellow);
    set(onRoad && mistakes >= 2 && mistakes < 4 && place > 150 && place < 900,
        Status::FlagBlackAndWhite);
    return flags;
}

void DemoLap::fillMotion(VehicleTelemetry &vehicle, const RoadPoint &road) const
{
    const VehicleState &car = state.car;
    vehicle.speedKmh = static_cast<float>(car.speed * (1 + car.slip) * 3.6);
    vehicle.groundSpeedKmh = static_cast<float>(car.speed * 3.6);
    const double wheels =
        VehicleModel::Wheelbase * road.curvature + UndersteerPerG * car.sway / Gravity;
    const double wheelTurn = degrees(wheels) * SteeringRatio;
    vehicle.steeringPercent = static_cast<std::int32_t>(
        std::lround(std::clamp(wheelTurn / SteeringDegreesPerPercent, -100.0, 100.0)));
    vehicle.gear = static_cast<std::int8_t>(car.gear);
    vehicle.rpm = static_cast<std::uint32_t>(std::lround(std::max(car.rpm, 0.0)));
    vehicle.maxRpm = static_cast<std::uint32_t>(VehicleModel::MaxRpm);
    vehicle.gasPedalPercent = percent(car.throttle);
    vehicle.brakePedalPercent = percent(car.brake);
    vehicle.clutchPedalPercent = percent(car.clutch);
    vehicle.engineLoadPercent = percent(car.engineLoad);
    vehicle.fuelLevelPercent = percent(car.fuelKg / VehicleModel::TankKg);
    vehicle.heaveG = static_cast<float>(car.heave / Gravity);
    // Of the road at this place, as the heading is; `car.sway` is of where the step began.
    vehicle.swayG = static_cast<float>(road.curvature * car.speed * car.speed / Gravity);
    vehicle.surgeG = static_cast<float>(car.surge / Gravity);
    vehicle.altitudeAboveGroundM = static_cast<float>(car.rideHeight);
    vehicle.altitudeAboveSeaLevelM = static_cast<float>(road.elevation + car.rideHeight);
    vehicle.turnCoordinatorBall = static_cast<float>(car.ball);
    vehicle.pitchDeg = static_cast<float>(degrees(std::atan(road.grade) + car.pitch));
    vehicle.rollDeg = static_cast<float>(degrees(road.bank + car.roll));
    const double heading = std::fmod(degrees(road.heading), 360.0);
    vehicle.headingDeg = static_cast<float>(heading < 0 ? heading + 360 : heading);
}

void DemoLap::fillRace(VehicleTelemetry &vehicle) const
{
    const LapTimes &times = state.times;
    const double now = timeOf(state);
    vehicle.position = RaceDirector::position(state.field);
    vehicle.currentTimeMs = milliseconds(now - times.lapStart);
    vehicle.lastTimeMs = milliseconds(times.last);
    vehicle.bestTimeMs = milliseconds(times.best);
    vehicle.completedLaps = static_cast<std::int32_t>(times.completed);
    vehicle.numberOfLaps = static_cast<std::int32_t>(laps);
    vehicle.deltaTimeS = static_cast<float>(timing.delta(times, state.car.distance, now));
    vehicle.absLevel = static_cast<std::uint8_t>(state.car.corners[0].wear > 8 ? 5 : 4);
    vehicle.tractionControlLevel = static_cast<std::uint8_t>(tcLevel());
    vehicle.brakeBiasPercent = static_cast<std::int8_t>(std::lround(brakeBias() * 100));
}

void DemoLap::fillCorners(TelemetrySample &sample) const
{
    for (std::size_t i = 0; i < state.car.corners.size(); ++i) {
        const Corner &corner = state.car.corners[i];
        VehicleTelemetry &vehicle = sample.vehicle;
        vehicle.tyreTempC[i] = static_cast<std::int32_t>(std::lround(corner.surfaceC));
        vehicle.brakeTempC[i] = static_cast<std::int32_t>(std::lround(corner.brakeC));
        vehicle.tyreWearPercent[i] = percent(corner.wear / 100);
        vehicle.tyrePressureKpa[i] = pressureOf(corner, i < 2);
        sample.extended.wheels[i].wheelFlagA = corner.spins ? 1 : 0;
        sample.extended.wheels[i].wheelFlagB = corner.slides ? 1 : 0;
    }
}
