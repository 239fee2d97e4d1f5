#pragma once

#include <array>
#include <cstdint>
#include <vector>

/// Where the other cars are, seen from this one. Copied whole as part of a checkpoint.
struct Field
{
    struct Rival
    {
        double ahead = 0;  ///< s by which it passes the same place earlier.
        double toLose = 0; ///< s that the pit stop under way costs yet.
        std::uint32_t stops = 0;
        bool leads = false;  ///< Counts as ahead of this car.
        bool faster = false; ///< Of the class that laps this car's.
    };

    std::array<Rival, 20> rivals;
    double laps = 0;    ///< Driven by this car, in shares of a flying lap's time.
    double settled = 0; ///< s since the last change of position.
};

/// The other cars and the marshals: the running order and the flags. Constant. Distances are metres
/// driven from the start line; laps are counted from 0.
class RaceDirector
{
public:
    /// `flyingLap` tells the seconds since the start line at each metre of a lap: all cars gain
    /// and lose speed along the lap alike. The race takes `laps`.
    RaceDirector(std::uint32_t seed, std::uint32_t laps, std::vector<double> flyingLap);

    /// The cars as they line up.
    Field grid() const;

    /// This car has come to `distance` on its `lap` in the last `seconds`. While the order is
    /// `held`, nobody gains on anybody.
    void advance(Field &field, std::uint32_t lap, double distance, double seconds, bool held) const;

    /// Place among the cars of the same class, from 1.
    static int position(const Field &field);

    /// A faster car comes up from behind to lap this one.
    bool isLapped(const Field &field) const;

    /// A rival is close enough ahead to open the wing behind it.
    bool followsRival(const Field &field) const;

    /// The sector at this place is under a yellow flag on that lap.
    bool isYellow(std::uint32_t lap, double wrappedDistance) const;

private:
    double lapsAt(double distance) const;
    /// s of a flying lap that the rival covers; sends it to the pits when it is time.
    double run(Field::Rival &rival, std::uint32_t number, std::uint32_t lap, double driven,
               double seconds) const;
    double secondsAhead(const Field::Rival &rival) const;

    std::uint32_t seed;
    std::uint32_t laps;
    std::vector<double> flyingLap;
    double lapLength; // m
};
