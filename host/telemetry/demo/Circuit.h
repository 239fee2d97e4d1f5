#pragma once

#include <vector>

inline constexpr double Gravity = 9.80665; ///< m/s².
inline constexpr double Pi = 3.14159265358979323846;

/// The road at one distance from the start line.
struct RoadPoint
{
    double curvature = 0;  ///< 1/m, positive to the right.
    double heading = 0;    ///< Radians clockwise from the heading at the start line, 0 to 2 pi.
    double elevation = 0;  ///< m above sea level.
    double grade = 0;      ///< Rise over run, positive uphill.
    double hollow = 0;     ///< 1/m, change of grade over distance; negative on a crest.
    double bank = 0;       ///< Radians, right side down is positive.
    double roughness = 0;  ///< -1 to 1, the surface's own bumps.
    unsigned curveAhead{}; ///< Number of the curve that the car is in or comes to next.
};

/// A closed road course of straights and curves, driven clockwise, with a pit lane along its main
/// straight. Constant after its construction. Distances are metres from the start line and wrap.
class Circuit
{
public:
    /// Where the pit lane leaves the road, where it joins it again, and where the car is served.
    static constexpr double PitEntry = 3128;
    static constexpr double PitExit = 220;
    static constexpr double PitBox = 3398;

    /// The last place before the pit lane at which the driver can be called in.
    static constexpr double PitCall = 2760;

    Circuit();

    /// Metres.
    double length() const { return roadLength; }
    unsigned curveCount() const { return curves; }
    RoadPoint at(double distance) const;

    /// Brings any finite distance into [0, length).
    double wrapped(double distance) const;

    /// The zone in which the rear wing may be opened, from 0, or -1 outside of them.
    static int drsZoneAt(double wrappedDistance);

    static bool isPitLane(double wrappedDistance)
    {
        return wrappedDistance >= PitEntry || wrappedDistance < PitExit;
    }

private:
    void layOutCurves();
    void layOutHeights();

    std::vector<RoadPoint> points; // One a metre; the last repeats the first, a full turn further.
    double roadLength = 0;
    unsigned curves = 0;
};
