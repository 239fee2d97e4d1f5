#pragma once

#include "Circuit.h"

#include <array>
#include <cstddef>

/// What the driver does at one moment.
struct Controls
{
    double throttle = 0;     ///< 0 to 1, where the pedal is meant to go.
    double brake = 0;        ///< 0 to 1, where the pedal is meant to go.
    double brakeBias = 0.54; ///< Share of the front axle, 0 to 1.
    double limiterSpeed = 0; ///< m/s that the limiter holds; 0 is off.
    bool wingOpen = false;   ///< The rear wing is flat.
    bool holdClutch = false; ///< The clutch stays pressed, as before a start.
    bool neutral = false;    ///< Out of gear; only when standing.
    double tcShare = 0.97;   ///< Share of the rear tyres' grip to which drive is cut.
};

/// A tyre and the brake behind it.
struct Corner
{
    double surfaceC = 68; ///< °C, as it leaves the tyre blankets.
    double carcassC = 66; ///< °C, follows the surface; decides the pressure.
    double wear = 0;      ///< Percent, 0 is new.
    double brakeC = 120;  ///< °C.
    bool spins = false;   ///< Slips along the car's axis: locks or spins.
    bool slides = false;  ///< Slips across it.
};

/// Everything that one step hands to the next. Copied whole as a checkpoint.
struct VehicleState
{
    double distance = 0;   ///< m from the start line, negative before it.
    double speed = 0;      ///< m/s over ground.
    double slip = 0;       ///< Of the driven wheels: their speed is `speed * (1 + slip)`.
    double throttle = 0;   ///< 0 to 1, where the pedal is.
    double brake = 0;      ///< 0 to 1, where the pedal is.
    double clutch = 1;     ///< 0 to 1, 1 is pressed.
    double rpm = 1100;     ///< 1/min.
    double engineLoad = 0; ///< 0 to 1, delivered torque over the torque at full throttle.
    double fuelKg = 0;
    double surge = 0; ///< m/s², forward is positive.
    double sway = 0;  ///< m/s², to the right is positive.
    double heave = 0; ///< m/s², up is positive, 0 at rest.
    double pitch = 0; ///< Radians of the body on its springs, nose up is positive.
    double pitchRate = 0;
    double roll = 0; ///< Radians of the body on its springs, right side down is positive.
    double rollRate = 0;
    double rideHeight = 0.075; ///< m.
    double rideRate = 0;
    double ball = 0;      ///< -1 to 1, right is positive.
    double shiftTime = 0; ///< s that the shift under way takes yet.
    double absTime = 0;   ///< s for which the ABS counts as acting.
    double tcTime = 0;    ///< s for which the traction control counts as acting.
    int gear = 0;
    int fromGear = 0;
    bool clutchSlips = true;
    std::array<Corner, 4> corners{}; ///< Front left, front right, rear left, rear right.
};

/// A point-mass car with a rear-wheel drive, whose tyres share one circle of grip between braking,
/// driving and cornering. Has no state of its own. Figures are those of a
/// silhouette touring car with a wing that opens.
class VehicleModel
{
public:
    static constexpr double MaxRpm = 8200;
    static constexpr double TankKg = 30;
    static constexpr double Wheelbase = 2.7; ///< m.
    static constexpr double AirC = 24;       ///< °C.
    static constexpr double BlanketC = 68;   ///< °C of a fresh tyre.

    /// Moves the car on by `seconds`, at most 1/100.
    static void step(VehicleState &car, const Controls &controls, const RoadPoint &road,
                     double seconds);

    /// m/s² that the tyres give in all directions together, at `grip` of the tyres' best.
    static double gripLimit(double speed, double grip, double mass);

    /// 0 to 1, of the four tyres by temperature and wear.
    static double gripOf(const VehicleState &car);

    static double massOf(const VehicleState &car) { return 1280 + car.fuelKg; }

    /// N against the motion: air, tyres and the grade.
    static double resistance(const VehicleState &car, const RoadPoint &road, bool wingOpen);

    /// N at the rear wheels at full throttle in the present gear.
    static double fullDrive(const VehicleState &car);

    /// N at full pedal.
    static constexpr double FullBrake = 32'000;

    /// N that the driven wheels carry onto the road while cornering.
    static double tractionLimit(const VehicleState &car, const RoadPoint &road);

    /// 1/min of the engine when it turns with the driven wheels.
    static double wheelRpm(const VehicleState &car, int gear);
};
