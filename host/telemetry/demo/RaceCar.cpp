#include "RaceCar.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double Mass = 1295; // kg
constexpr double StallRpm = 1400;
constexpr double UpshiftRpm = 8100;
constexpr double ShiftSeconds = 0.12;
constexpr double WheelRadius = 0.34;          // m
constexpr double AirDrag = 0.64 / Mass;       // 1/m
constexpr double Downforce = 1.45 / Mass;     // 1/m
constexpr double RollingShare = 0.014;        // of the weight
constexpr double TyreGrip = 1.52;             // coefficient of friction
constexpr double FullBraking = 32'000 / Mass; // m/s²
constexpr double AssistSeconds = 0.12;        // that a lamp shows at least

// Gearbox and final drive together; there is no gear 0.
constexpr std::array<double, 7> Ratios{0, 10.46, 7.60, 5.97, 4.93, 4.22, 3.68};

/// m/s² that so many N m of the engine give.
double driveOf(double torque, int gear)
{
    return torque * Ratios[static_cast<std::size_t>(gear)] / WheelRadius / Mass;
}

void approach(double &value, double target, double up, double down)
{
    value = target > value ? std::min(target, value + up) : std::max(target, value - down);
}

} // namespace

double RaceCar::gripLimit(double speed)
{
    return TyreGrip * (Gravity + Downforce * speed * speed);
}

double RaceCar::resistance(double speed, const RoadPoint &road)
{
    return AirDrag * speed * speed + Gravity * (RollingShare + road.grade);
}

double RaceCar::wheelRpm(int inGear) const
{
    return speed * (1 + slip) / WheelRadius * 30 / Pi * Ratios[static_cast<std::size_t>(inGear)];
}

double RaceCar::fullDrive() const
{
    const double offBest = (rpm - 5700) / 1000;
    return driveOf(548 - 16 * offBest * offBest, gear);
}

void RaceCar::changeGear(double seconds)
{
    shiftLeft = std::max(0.0, shiftLeft - seconds);
    if (shiftLeft > 0)
        return;
    fromGear = gear;
    // On the brakes the driver shifts down early, for the engine's help and to be ready to leave.
    const double downRpm = brake > 0.05 ? 7000 : 6100;
    if (rpm > UpshiftRpm && gear < 6 && throttle > 0.4)
        ++gear;
    else if (gear > 1 && wheelRpm(gear - 1) < downRpm)
        --gear;
    shiftLeft = gear != fromGear ? ShiftSeconds : 0;
}

void RaceCar::turnEngine(double seconds)
{
    const double wheels = wheelRpm(gear);
    clutchSlips = wheels < StallRpm || (clutchSlips && (wheels < rpm || throttle <= 0));
    if (shiftLeft > 0) {
        const double done = 1 - shiftLeft / ShiftSeconds;
        const double before = wheelRpm(fromGear);
        rpm = before + (wheels - before) * done * done * (3 - 2 * done);
        clutch = std::sin(Pi * done);
    } else if (clutchSlips) {
        rpm += (freeRpm(throttle) - rpm) * std::min(1.0, seconds / 0.18);
        const double pressed = throttle > 0 ? 0.05 + 0.8 * std::max(0.0, 1 - wheels / rpm) : 1;
        approach(clutch, pressed, seconds / 0.1, seconds / 0.25);
    } else {
        rpm = wheels;
        clutch = 0;
    }
}

void RaceCar::heatCorners(double sway, double gripUsed, double braking, double seconds)
{
    const double pressed = Mass * gripLimit(speed) / TyreGrip / 4;
    const double sliding = TyreGrip * gripUsed * (0.003 + 0.036 * gripUsed * gripUsed) + 0.0056;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        Corner &corner = corners[i];
        const double front = i < 2 ? 1 : -1;
        const double left = i % 2 == 0 ? 1 : -1;
        const double moved = (0.27 * left * sway - 0.16 * front * surge) / Gravity;
        const double load = std::max(0.1, 1 - 0.06 * front + moved) * pressed;
        const double cooled = (14 + 1.15 * speed) * (corner.tyreC - AirC);
        corner.tyreC += (load * sliding * speed - cooled) / 5200 * seconds;
        corner.carcassC += (corner.tyreC - corner.carcassC) / 22 * seconds;

        const double heat = Mass * braking * speed * (0.25 + 0.02 * front);
        const double radiated = 4.6e-9 * std::pow(corner.brakeC + 273, 4);
        const double blown = (9 + 0.95 * speed) * (corner.brakeC - AirC);
        corner.brakeC += (heat - radiated - blown) / (4700 + 200 * front) * seconds;
    }
}

void RaceCar::step(const RoadPoint &road, double wish, double seconds)
{
    const double limit = gripLimit(speed);
    const double sway = road.curvature * speed * speed;
    const double across = std::min(std::abs(sway) / limit, 1.0);
    const double along = limit * std::sqrt(std::max(0.04, 1 - across * across));
    const double traction = along * (0.57 + 0.16 * std::max(surge, 0.0) / Gravity);
    const double held = resistance(speed, road);
    const double full = fullDrive();

    const double needed = wish + held;
    const bool brakes = needed < -0.04 * FullBraking;
    const double pushed = brakes ? 0 : std::clamp(std::min(needed, traction) / full, 0.0, 1.0);
    approach(throttle, pushed, seconds * 6, seconds * 12);
    approach(brake, brakes ? std::min(1.0, -needed / FullBraking) : 0, seconds * 9, seconds * 7);
    changeGear(seconds);
    turnEngine(seconds);

    approach(tcLeft, 0, 0, throttle > 0 ? seconds : 1);
    if (needed > traction && throttle * full > 0.97 * traction)
        tcLeft = AssistSeconds;
    approach(absLeft, 0, 0, brake > 0 ? seconds : 1);
    if (brake * FullBraking > 0.9 * along && speed > 3)
        absLeft = AssistSeconds;

    const double dragged = clutchSlips ? 0 : (1 - throttle) * driveOf(18 + rpm * 0.0075, gear);
    const double driven = shiftLeft > 0 ? 0 : throttle * full - dragged;
    const double braking = std::min(brake * FullBraking, along);
    const double gripUsed = std::min(1.0, std::hypot(across, (driven - braking) / limit));
    const double scrubbed = limit * 0.06 * gripUsed * across;
    // Brakes and friction hold the car; they don't push it backwards.
    surge = driven - braking - held * std::min(speed, 1.0) - scrubbed;
    const double after = std::max(0.0, speed + surge * seconds);
    distance += (speed + after) / 2 * seconds;
    speed = after;

    const double usual = 0.018 * (driven - braking) / limit;
    const double slipping = tcLeft > 0 ? 0.055 : absLeft > 0 ? -0.05 : usual;
    slip += (slipping - slip) * std::min(1.0, seconds / 0.07);
    heatCorners(sway, gripUsed, braking, seconds);
}
