#pragma once

#include "RaceCar.h"

#include <vector>

/// A lap at full speed, moment by moment.
struct LapTrace
{
    static constexpr double Step = 1.0 / 60; ///< s.

    std::vector<RaceCar> cars; ///< One a step, from the lap's start to its end.
    double hold = 0;           ///< s at which the car stands at the box, if it comes there.

    double seconds() const { return static_cast<double>(cars.size() - 1) * Step; }

    /// `seconds` from 0 to the end.
    RaceCar at(double seconds) const;

    /// When the car passes this distance, seconds from 0 to the end.
    double secondsAt(double distance) const;
};

/// The four kinds of lap, each driven once by a driver who looks ahead and brakes for each curve as
/// late as the grip allows. Constant.
class Laps
{
public:
    static const Laps &instance();

    Circuit circuit;
    LapTrace start;  ///< From the grid, where the car waits at first.
    LapTrace flying; ///< Ends as it begins.
    LapTrace in;     ///< A flying lap that ends through the pit lane, with a stop at the box.
    LapTrace out;    ///< From the pit lane on.

private:
    static constexpr double Nowhere = 1e6; // m

    Laps();
    /// Highest speed, m/s, at each metre from the grid on, with the pit lane's limit between two
    /// places and a stop at a third. Metres.
    std::vector<double> allowed(double limitFrom, double limitTo, double stopAt = Nowhere) const;
    std::vector<RaceCar> drive(RaceCar car, const std::vector<double> &allowed,
                               double to = Circuit::Length) const;
};
