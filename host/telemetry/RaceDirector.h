#pragma once

#include <cstdint>
#include <vector>

/// The other cars and the marshals: the running order and the flags. Depends on nothing but its
/// seed and the arguments. Constant. Times are seconds from the start of the race; distances are
/// metres driven from the start line; laps are counted from 0.
class RaceDirector
{
public:
    /// `flyingLap` tells the seconds since the start line at each metre of a lap: all cars gain
    /// and lose speed along the lap alike.
    RaceDirector(std::uint32_t seed, std::vector<double> flyingLap);

    /// Place among the cars of the same class, from 1.
    int position(double seconds, double distance) const;

    /// A faster car comes up from behind to lap this one.
    bool isLapped(double seconds, double distance) const;

    /// A rival is close enough ahead to open the wing behind it.
    bool followsRival(double seconds, double distance) const;

    /// The sector at this place is under a yellow flag on that lap.
    bool isYellow(std::uint32_t lap, double wrappedDistance) const;

private:
    struct Rival
    {
        double gap;         // laps behind the start line when the race starts
        double lapTime;     // s
        double stint;       // s between two pit stops
        bool fasterClass{}; // Laps this car's class.
    };

    static double lapsOf(const Rival &rival, double seconds);
    double lapsAt(double distance) const;
    double secondsAhead(const Rival &rival, double seconds, double distance) const;

    std::uint32_t seed;
    std::vector<double> flyingLap;
    double lapLength; // m
    std::vector<Rival> rivals;
};
