#include "LapTrace.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace {

constexpr double Grid = -60;           // m from the start line
constexpr double StartThrottle = 0.85; // 0 to 1, while the clutch waits for the lights
constexpr double Ahead = 600;          // m past the line that a driver can see
constexpr double FastestSpeed = 95;    // m/s, more than the car can do
constexpr double CornerMargin = 0.97;  // of the speed at the edge of grip
constexpr double BrakingMargin = 0.95; // of the grip that is left
constexpr double PitBraking = 3.2;     // m/s²
constexpr double ReactionSeconds = 0.1;

double mix(double from, double to, double share)
{
    return from + (to - from) * share;
}

/// m/s² that the driver wants.
double wish(const RaceCar &car, const std::vector<double> &allowed)
{
    const auto at = [&allowed](double distance) {
        const double place = std::max(distance - Grid, 0.0);
        const auto index = std::min(static_cast<std::size_t>(place), allowed.size() - 2);
        return mix(allowed[index], allowed[index + 1], place - static_cast<double>(index));
    };
    const double ahead = car.distance + car.speed * ReactionSeconds;
    const double target = at(ahead);
    if (target < 0.5)
        return -3; // Stop here.
    const double falls = target * (at(ahead + 1) - target);
    const double below = target - car.speed;
    // Stays at full throttle up to the braking point; then holds the pedal rather than lifting it.
    const double gain = car.brake > 0 && below > 0 && falls < -4 ? 3 : 8;
    return gain * below + (car.brake <= 0 && below > 1 ? std::max(falls, 0.0) : falls);
}

} // namespace

RaceCar LapTrace::at(double seconds) const
{
    const double place = std::clamp(seconds / Step, 0.0, static_cast<double>(cars.size() - 1));
    const auto index = std::min(static_cast<std::size_t>(place), cars.size() - 2);
    const double share = place - static_cast<double>(index);
    const RaceCar &a = cars[index];
    const RaceCar &b = cars[index + 1];
    RaceCar car = a;
    for (double RaceCar::*value :
         {&RaceCar::distance, &RaceCar::speed, &RaceCar::surge, &RaceCar::slip, &RaceCar::throttle,
          &RaceCar::brake, &RaceCar::clutch, &RaceCar::rpm})
        car.*value = mix(a.*value, b.*value, share);
    return car;
}

double LapTrace::secondsAt(double distance) const
{
    const auto after =
        std::upper_bound(cars.begin() + 1, cars.end() - 1, distance,
                         [](double value, const RaceCar &car) { return value < car.distance; });
    const RaceCar &before = *(after - 1);
    const double gone = std::max(after->distance - before.distance, 1e-9);
    const double share = std::clamp((distance - before.distance) / gone, 0.0, 1.0);
    return (static_cast<double>(after - cars.begin()) - 1 + share) * Step;
}

const Laps &Laps::instance()
{
    static const Laps laps;
    return laps;
}

Laps::Laps()
{
    RaceCar onGrid;
    onGrid.distance = Grid;
    onGrid.throttle = StartThrottle;
    onGrid.rpm = RaceCar::freeRpm(StartThrottle);
    const std::vector<double> open = allowed(Nowhere, Nowhere);
    start.cars = drive(onGrid, open);
    // Tyres and brakes take some laps to settle, so that each begins as the one before ends.
    flying = start;
    for (int i = 0; i < 3; ++i)
        flying.cars = drive(flying.cars.back(), open);
    in.cars = drive(flying.cars.back(), allowed(Circuit::PitEntry, Nowhere, Circuit::PitBox),
                    Circuit::PitBox);
    in.hold = in.seconds();
    const auto left = drive(in.cars.back(), allowed(Circuit::PitEntry, Nowhere));
    in.cars.insert(in.cars.end(), left.begin() + 1, left.end());
    out.cars = drive(in.cars.back(), allowed(Grid, Circuit::PitExit + 5));
}

std::vector<double> Laps::allowed(double limitFrom, double limitTo, double stopAt) const
{
    // Grip grows with speed: the limit is where v² times the curvature meets it.
    const double still = RaceCar::gripLimit(0);
    const double growth = RaceCar::gripLimit(1) - still;
    std::vector<double> speeds(std::size_t(Circuit::Length + Ahead - Grid), FastestSpeed);
    for (std::size_t i = speeds.size() - 1; i-- > 0;) {
        const double metre = static_cast<double>(i) + Grid;
        const RoadPoint road = circuit.at(metre);
        const double bend = std::abs(road.curvature);
        if (bend > growth)
            speeds[i] = std::min(speeds[i], CornerMargin * std::sqrt(still / (bend - growth)));
        const bool limited = metre >= limitFrom && metre < limitTo;
        if (limited)
            speeds[i] = std::min(speeds[i], RaceCar::PitSpeed - 0.2);
        if (metre >= stopAt)
            speeds[i] = 0;
        const double next = speeds[i + 1];
        const double grip = RaceCar::gripLimit(next);
        const double across = std::min(bend * next * next, grip);
        const double braking = limited ? PitBraking
                                       : BrakingMargin * std::sqrt(grip * grip - across * across) +
                                             RaceCar::resistance(next, road);
        speeds[i] = std::min(speeds[i], std::sqrt(next * next + 2 * std::max(braking, 0.0)));
    }
    return speeds;
}

std::vector<RaceCar> Laps::drive(RaceCar car, const std::vector<double> &allowed, double to) const
{
    if (car.distance >= Circuit::Length)
        car.distance -= Circuit::Length;
    std::vector<RaceCar> cars{car};
    while (car.distance < to && (to - car.distance > 1.5 || car.speed > 0)) {
        car.step(circuit.at(car.distance), wish(car, allowed), LapTrace::Step);
        cars.push_back(car);
    }
    return cars;
}
