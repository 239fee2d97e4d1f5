#include "VehicleModel.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double IdleRpm = 1100;
constexpr double StallRpm = 1400;
constexpr double UpshiftRpm = 8020;
constexpr double UpshiftSeconds = 0.10;
constexpr double DownshiftSeconds = 0.14;
constexpr double WheelRadius = 0.34;   // m
constexpr double AirDrag = 0.64;       // N per (m/s)², half density times drag area
constexpr double Downforce = 1.45;     // N per (m/s)²
constexpr double RollingShare = 0.014; // of the weight
constexpr double TyreGrip = 1.52;      // best coefficient of friction
constexpr double CentreHeight = 0.44;  // m
constexpr double TrackWidth = 1.65;    // m
constexpr double FrontShare = 0.47;    // of the standing weight and of the downforce
constexpr double FuelKgPerJoule = 1 / (0.28 * 43e6);

// Gearbox and final drive together; index 0 is neutral.
constexpr std::array<double, 7> Ratios{0, 10.46, 7.60, 5.97, 4.93, 4.22, 3.68};

// N m at full throttle, one value for each 1000/min from 0.
constexpr std::array<double, 10> Torque{120, 290, 390, 460, 515, 545, 548, 520, 455, 360};

double fullTorque(double rpm)
{
    const double place = std::clamp(rpm / 1000, 0.0, 8.999);
    const auto index = static_cast<std::size_t>(place);
    return Torque[index] +
           (Torque[index + 1] - Torque[index]) * (place - static_cast<double>(index));
}

double dragTorque(double rpm)
{
    return 18 + rpm * 0.0075;
}

double ratioOf(int gear)
{
    return Ratios[static_cast<std::size_t>(gear)];
}

double approached(double from, double to, double up, double down)
{
    return to > from ? std::min(to, from + up) : std::max(to, from - down);
}

/// N on each tyre, from the weight, the wing and the two load transfers.
std::array<double, 4> cornerLoads(const VehicleState &car)
{
    const double mass = VehicleModel::massOf(car);
    const double total = mass * (Gravity + car.heave) + Downforce * car.speed * car.speed;
    const double toFront = -mass * car.surge * CentreHeight / VehicleModel::Wheelbase;
    const double toLeft = mass * car.sway * CentreHeight / TrackWidth;
    const double front = total * FrontShare + toFront;
    const double rear = total - front;
    const auto least = [](double load) { return std::max(load, 150.0); };
    return {least(front / 2 + toLeft * 0.52), least(front / 2 - toLeft * 0.52),
            least(rear / 2 + toLeft * 0.48), least(rear / 2 - toLeft * 0.48)};
}

/// Lets a spring and damper carry `value` towards `target`.
void swing(double &value, double &rate, double target, double hertz, double seconds)
{
    const double omega = 2 * Pi * hertz;
    rate += (omega * omega * (target - value) - 2 * 0.55 * omega * rate) * seconds;
    value += rate * seconds;
}

void shiftGears(VehicleState &car, const Controls &controls, double seconds)
{
    if (controls.neutral) {
        car.gear = car.fromGear = 0;
        car.shiftTime = 0;
        car.clutchSlips = true;
        return;
    }
    if (car.gear == 0)
        car.gear = car.fromGear = 1;
    if (car.shiftTime > 0) {
        // What a rounding error leaves of the time is no step of its own.
        car.shiftTime = car.shiftTime > 1.5 * seconds ? car.shiftTime - seconds : 0;
        return;
    }
    car.fromGear = car.gear;
    if (car.clutchSlips)
        return;
    const auto begin = [&car, seconds](int gear, double duration) {
        car.gear = gear;
        car.shiftTime = duration - seconds;
    };
    // On the brakes the driver goes down early, to have the engine's help and be ready to leave.
    const double downRpm = car.brake > 0.05 ? 7000 : 6100;
    if (car.rpm > UpshiftRpm && car.gear < 6 && car.throttle > 0.4)
        begin(car.gear + 1, UpshiftSeconds);
    else if (car.gear > 1 && VehicleModel::wheelRpm(car, car.gear - 1) < downRpm)
        begin(car.gear - 1, DownshiftSeconds);
}

void turnEngine(VehicleState &car, const Controls &controls, double seconds)
{
    const double wheels = VehicleModel::wheelRpm(car, car.gear);
    if (car.shiftTime > 0) {
        const double whole = car.gear > car.fromGear ? UpshiftSeconds : DownshiftSeconds;
        const double done = 1 - car.shiftTime / whole;
        const double eased = done * done * (3 - 2 * done);
        const double before = VehicleModel::wheelRpm(car, car.fromGear);
        car.rpm = before + (wheels - before) * eased;
        car.clutch = std::sin(Pi * std::clamp(done, 0.0, 1.0));
        return;
    }
    if (!car.clutchSlips && wheels < StallRpm)
        car.clutchSlips = true;
    else if (car.clutchSlips && car.gear > 0 && !controls.holdClutch && wheels >= car.rpm &&
             car.throttle > 0)
        car.clutchSlips = false;

    if (!car.clutchSlips) {
        car.clutch = 0;
        car.rpm = wheels;
        return;
    }
    const double free = IdleRpm + car.throttle * 4400;
    car.rpm += (free - car.rpm) * std::min(1.0, seconds / 0.18);
    const bool pressed = controls.holdClutch || car.gear == 0 || car.throttle <= 0;
    const double wanted = pressed ? 1 : 0.05 + 0.8 * std::max(0.0, 1 - wheels / car.rpm);
    car.clutch = approached(car.clutch, wanted, seconds / 0.1, seconds / 0.25);
}

/// N at the wheels, and what the engine burns for it.
double drive(VehicleState &car, const Controls &controls, double traction, double seconds)
{
    const double full = fullTorque(car.rpm);
    const double ratio = ratioOf(car.gear);
    double share = car.throttle;
    if (controls.limiterSpeed > 0)
        share *= std::clamp((controls.limiterSpeed - car.speed) / 0.8, 0.0, 1.0);
    share *= std::clamp((VehicleModel::MaxRpm - car.rpm) / 100, 0.0, 1.0);
    if (car.shiftTime > 0)
        share = 0;

    const bool coupled = ratio > 0 && car.shiftTime <= 0 && !controls.holdClutch;
    const double limit = traction * controls.tcShare * WheelRadius / std::max(ratio, 1.0);
    if (coupled && share * full > limit) {
        share = limit / full;
        car.tcTime = 0.12;
    } else {
        car.tcTime = car.throttle > 0.05 ? std::max(0.0, car.tcTime - seconds) : 0;
    }

    const double idling = dragTorque(IdleRpm) / full;
    car.engineLoad = std::max(share, car.rpm < IdleRpm * 1.15 ? idling : 0.0);
    const double work = (car.engineLoad * full + 8) * car.rpm * Pi / 30 * seconds;
    car.fuelKg = std::max(0.0, car.fuelKg - work * FuelKgPerJoule);
    if (!coupled || (car.clutchSlips && car.throttle <= 0))
        return 0;
    const double dragged = car.clutchSlips ? 0 : (1 - share) * dragTorque(car.rpm);
    return (share * full - dragged) * ratio / WheelRadius;
}

/// N of the brakes, after the ABS.
double slow(VehicleState &car, double limit, double seconds)
{
    double force = car.brake * VehicleModel::FullBrake;
    if (force > limit && car.speed > 3) {
        force = limit * 0.96;
        car.absTime = 0.12;
    } else {
        car.absTime = car.brake > 0.02 ? std::max(0.0, car.absTime - seconds) : 0;
    }
    return std::min(force, limit);
}

void markSlippingWheels(VehicleState &car, double lateralShare)
{
    for (Corner &corner : car.corners)
        corner.spins = corner.slides = false;
    const bool straight = std::abs(car.sway) < 0.3 * Gravity;
    const std::size_t inner = car.sway > 0 ? 1 : 0;
    // The unloaded wheel is the first to lock or to spin.
    for (std::size_t side : {std::size_t{0}, std::size_t{1}}) {
        car.corners[side].spins = car.absTime > 0 && (straight || side == inner);
        car.corners[2 + side].spins = car.tcTime > 0 && (straight || side == inner);
    }
    if (lateralShare > 0.95)
        car.corners[(car.throttle > 0.3 ? 2 : 0) + (1 - inner)].slides = true;
}

void heatCorners(VehicleState &car, const Controls &controls, double used, double brakeForce,
                 double seconds)
{
    const std::array<double, 4> loads = cornerLoads(car);
    const double v = car.speed;
    for (std::size_t i = 0; i < 4; ++i) {
        Corner &corner = car.corners[i];
        const bool front = i < 2;
        const double slipping =
            0.003 + 0.036 * used * used + (corner.spins ? 0.006 : 0) + (corner.slides ? 0.008 : 0);
        const double rubbed = TyreGrip * loads[i] * used * slipping * v + loads[i] * 0.0056 * v;
        const double cooled = (14 + 1.15 * v) * (corner.surfaceC - VehicleModel::AirC);
        corner.surfaceC += (rubbed - cooled) / 5200 * seconds;
        corner.carcassC += (corner.surfaceC - corner.carcassC) / 22 * seconds;
        corner.wear = std::min(100.0, corner.wear + rubbed * 3.3e-6 * seconds);

        const double axle = front ? controls.brakeBias : 1 - controls.brakeBias;
        const double heat = brakeForce * v * axle / 2;
        const double over = corner.brakeC - VehicleModel::AirC;
        const double kelvinSquared = (corner.brakeC + 273) * (corner.brakeC + 273);
        const double lost = (9 + 0.95 * v) * over + 4.6e-9 * kelvinSquared * kelvinSquared;
        corner.brakeC += (heat - lost) / (front ? 4900 : 4500) * seconds;
    }
}

void moveBody(VehicleState &car, const RoadPoint &road, double seconds)
{
    const double bumps = road.roughness * std::min(car.speed / 40, 2.0) * 0.16 * Gravity;
    car.heave = car.speed * car.speed * road.hollow + bumps;
    swing(car.pitch, car.pitchRate, car.surge / Gravity * 0.019, 2.1, seconds);
    swing(car.roll, car.rollRate, -car.sway / Gravity * 0.026, 1.9, seconds);
    const double pressedDown = Downforce * car.speed * car.speed * 2.6e-6 + car.heave * 0.0012;
    swing(car.rideHeight, car.rideRate, 0.075 - pressedDown, 2.6, seconds);
    const double sideways = car.sway * std::cos(road.bank) - Gravity * std::sin(road.bank);
    const double hangs = std::clamp(-sideways / (2 * Gravity), -1.0, 1.0);
    car.ball += (hangs - car.ball) * std::min(1.0, seconds / 0.12);
}

} // namespace

double VehicleModel::gripLimit(double speed, double grip, double mass)
{
    return TyreGrip * grip * (Gravity + Downforce * speed * speed / mass);
}

double VehicleModel::gripOf(const VehicleState &car)
{
    double sum = 0;
    for (const Corner &corner : car.corners) {
        const double off = (corner.surfaceC - 88) / 95;
        sum += (1 - off * off) * (1 - 0.0022 * corner.wear);
    }
    return std::max(0.5, sum / 4);
}

double VehicleModel::resistance(const VehicleState &car, const RoadPoint &road, bool wingOpen)
{
    const double mass = massOf(car);
    const double air = AirDrag * (wingOpen ? 0.8 : 1.0) * car.speed * car.speed;
    return air + mass * Gravity * (RollingShare + road.grade);
}

double VehicleModel::fullDrive(const VehicleState &car)
{
    return fullTorque(car.rpm) * ratioOf(car.gear) / WheelRadius;
}

double VehicleModel::tractionLimit(const VehicleState &car, const RoadPoint &road)
{
    const double mass = massOf(car);
    const double limit = gripLimit(car.speed, gripOf(car), mass);
    const double across = std::min(std::abs(road.curvature) * car.speed * car.speed / limit, 1.0);
    const std::array<double, 4> loads = cornerLoads(car);
    const double rear = (loads[2] + loads[3]) / (loads[0] + loads[1] + loads[2] + loads[3]);
    return mass * limit * rear * std::sqrt(std::max(0.04, 1 - across * across));
}

double VehicleModel::wheelRpm(const VehicleState &car, int gear)
{
    return car.speed * (1 + car.slip) / WheelRadius * 30 / Pi * ratioOf(gear);
}

void VehicleModel::step(VehicleState &car, const Controls &controls, const RoadPoint &road,
                        double seconds)
{
    car.throttle = approached(car.throttle, controls.throttle, seconds * 6, seconds * 12);
    car.brake = approached(car.brake, controls.brake, seconds * 9, seconds * 7);
    shiftGears(car, controls, seconds);
    turnEngine(car, controls, seconds);

    const double mass = massOf(car);
    const double limit = gripLimit(car.speed, gripOf(car), mass);
    const double across = std::abs(road.curvature) * car.speed * car.speed / limit;
    const double along = std::sqrt(std::max(0.04, 1 - across * across));
    const double driven = drive(car, controls, tractionLimit(car, road), seconds);
    // The engine's drag holds on to the same grip as the brakes.
    const double brakeable = std::max(0.0, mass * limit * along + std::min(driven, 0.0));
    const double braked = slow(car, brakeable, seconds);

    const double used = std::min(1.1, std::hypot(across, (driven - braked) / (mass * limit)));
    // Beyond the limit the front wheels plough on, which costs speed until they hold again.
    const double ploughed = std::max(0.0, across - 0.98) * 3;
    const double scrubbed = mass * limit * (0.06 * used * across + ploughed);
    const double forward = driven - resistance(car, road, controls.wingOpen) - scrubbed;
    double change = (forward - braked) / mass * seconds;
    // Brakes and friction hold the car; they don't push it backwards.
    if (car.speed + change < 0 || (car.speed <= 0 && driven <= 0))
        change = -car.speed;
    const double before = car.speed;
    car.speed += change;
    car.surge = change / seconds;
    car.distance += (before + car.speed) / 2 * seconds;
    car.sway = road.curvature * car.speed * car.speed;

    double slipping = 0.018 * (driven - braked) / (mass * limit);
    if (car.tcTime > 0)
        slipping = 0.055;
    if (car.absTime > 0)
        slipping = -0.05;
    car.slip += (slipping - car.slip) * std::min(1.0, seconds / 0.07);

    if (!car.clutchSlips && car.shiftTime <= 0)
        car.rpm = wheelRpm(car, car.gear);

    markSlippingWheels(car, across);
    heatCorners(car, controls, used, braked, seconds);
    moveBody(car, road, seconds);
}
