#pragma once

#include "VehicleModel.h"

#include <cstdint>
#include <vector>

/// What the driver has been told.
struct Orders
{
    double pace = 1;          ///< Of the speed that full grip allows.
    double eagerness = 1;     ///< Of the drive that the rear tyres carry; above 1 they spin.
    double brakeStab = 1;     ///< Of the braking that is called for, when the pedal goes down.
    bool comingIn = false;    ///< Take the pit lane.
    bool stopAtBox = false;   ///< Stop where the car is served.
    bool followSpeed = false; ///< The lane's speed limit holds.
};

/// Knows the circuit by heart and looks ahead: brakes for the next curve by the speed that its grip
/// allows, steers the pedals from there. Two drivers with one seed drive alike. Constant.
class Driver
{
public:
    static constexpr double PitSpeed = 60 / 3.6; ///< m/s allowed in the pit lane.

    /// `circuit` is borrowed and must outlive the driver.
    Driver(const Circuit &circuit, std::uint32_t seed);

    /// Pedals for this moment. The rest of `Controls` is left at its defaults.
    Controls pedals(const VehicleState &car, const RoadPoint &road, const Orders &orders) const;

    /// How hard the driver takes a curve on a lap, counted from 0: about 1, and above on a mistake.
    double commitment(std::uint32_t lap, unsigned curve) const;

    /// Of the drive that the tyres carry, on the way out of a curve.
    double eagerness(std::uint32_t lap, unsigned curve) const;

    /// Of the braking that the next curve calls for, as the driver first treads on the pedal.
    double brakeStab(std::uint32_t lap, unsigned curve) const;

    /// Seconds since the start line at each metre of a flying lap alone on the road, with the whole
    /// lap's time at the end.
    std::vector<double> flyingLap() const;

    /// Curves of a lap that the driver takes too fast.
    unsigned mistakes(std::uint32_t lap) const;

private:
    bool isMistake(std::uint32_t lap, unsigned curve) const;
    double targetSpeed(double distance, double speed, const Orders &orders) const;

    const Circuit *circuit;
    std::uint32_t seed;
    std::vector<double> speeds; // m/s by metre, at full grip; falls towards each curve.
};
