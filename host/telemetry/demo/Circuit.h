#pragma once

#include <cstddef>
#include <vector>

inline constexpr double Gravity = 9.80665; ///< m/s².
inline constexpr double Pi = 3.14159265358979323846;

/// The road at one distance from the start line.
struct RoadPoint
{
    double curvature = 0; ///< 1/m, positive to the right.
    double heading = 0;   ///< Radians clockwise from the heading at the start line, 0 to 2 pi.
    double elevation = 0; ///< m above sea level.
    double grade = 0;     ///< Rise over run, positive uphill.
};

/// A closed road course of straights and curves, driven clockwise, with a pit lane along its main
/// straight. Constant after construction. Distances are metres from the start line and wrap.
class Circuit
{
public:
    static constexpr double Length = 3508;   ///< All the way around.
    static constexpr double PitEntry = 3128; ///< Where the pit lane leaves the road.
    static constexpr double PitBox = 3398;   ///< Where the car is served.
    static constexpr double PitExit = 220;   ///< Where the pit lane joins the road again.

    Circuit();

    RoadPoint at(double distance) const;

private:
    // One a metre, from the start line around to it.
    std::vector<double> bends; // 1/m.
    std::vector<double> headings;
};
