#pragma once

#include "Circuit.h"

#include <array>

/// A tyre and the brake behind it.
struct Corner
{
    double tyreC = 92;    ///< °C on its surface.
    double carcassC = 92; ///< °C further in, follows the surface.
    double brakeC = 560;  ///< °C.
};

/// A rear-wheel-driven racing car at one moment: a point mass whose tyres share one circle of grip
/// between braking, driving and cornering. Starts out standing, with warm tyres and brakes.
struct RaceCar
{
    static constexpr double MaxRpm = 8200;
    static constexpr double IdleRpm = 1100;
    static constexpr double Wheelbase = 2.7;     ///< m.
    static constexpr double AirC = 24;           ///< °C.
    static constexpr double PitSpeed = 60 / 3.6; ///< m/s that the limiter allows in the pit lane.

    double distance = 0;  ///< m from the start line, negative before it.
    double speed = 0;     ///< m/s over ground.
    double surge = 0;     ///< m/s², forward is positive.
    double slip = 0;      ///< Of the wheels, which turn as at `speed * (1 + slip)`.
    double throttle = 0;  ///< 0 to 1.
    double brake = 0;     ///< 0 to 1.
    double clutch = 1;    ///< 0 to 1, 1 is pressed.
    double rpm = IdleRpm; ///< 1/min.
    double shiftLeft = 0; ///< s until the shift under way is done.
    double absLeft = 0;   ///< s for which the ABS still counts as acting.
    double tcLeft = 0;    ///< s for which traction control still counts as acting.
    int gear = 1;         ///< From 1.
    int fromGear = 1;     ///< Differs from `gear` during a shift.
    bool clutchSlips = true;
    std::array<Corner, 4> corners{}; ///< Front left, front right, rear left, rear right.

    /// Goes on for `seconds`, at most 1/50, while the driver wants the acceleration `wish` (m/s²).
    void step(const RoadPoint &road, double wish, double seconds);

    /// m/s² that the tyres give in all directions together.
    static double gripLimit(double speed);

    /// m/s² by which air, tyres and grade slow the car.
    static double resistance(double speed, const RoadPoint &road);

    /// 1/min of the engine with the clutch pressed.
    static double freeRpm(double throttle) { return IdleRpm + throttle * 4400; }

private:
    double wheelRpm(int inGear) const;
    double fullDrive() const;
    void changeGear(double seconds);
    void turnEngine(double seconds);
    void heatCorners(double sway, double gripUsed, double braking, double seconds);
};
