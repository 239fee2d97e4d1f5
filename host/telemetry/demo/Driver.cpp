#include "Driver.h"

#include "Chance.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace {

constexpr double FastestSpeed = 95;    // m/s, more than the car can do
constexpr double NominalMass = 1300;   // kg
constexpr double CornerMargin = 0.97;  // of the speed at the edge of grip
constexpr double BrakingMargin = 0.95; // of the grip that is left
constexpr double ReactionSeconds = 0.1;

} // namespace

Driver::Driver(const Circuit &circuit, std::uint32_t seed)
    : circuit(&circuit)
    , seed(seed)
{
    const auto count = static_cast<std::size_t>(circuit.length());
    speeds.assign(count, FastestSpeed);
    std::vector<double> bends(count);
    for (std::size_t i = 0; i < count; ++i) {
        bends[i] = std::abs(circuit.at(static_cast<double>(i)).curvature);
        // Grip grows with speed, so the limit is where v² times the curvature meets it.
        const double still = VehicleModel::gripLimit(0, 1, NominalMass);
        const double growth = VehicleModel::gripLimit(1, 1, NominalMass) - still;
        const double left = bends[i] - growth;
        if (left > 0)
            speeds[i] = std::min(FastestSpeed, CornerMargin * std::sqrt(still / left));
    }
    // Backwards, twice around so that the end of the lap knows the start of the next.
    for (std::size_t n = 2 * count; n-- > 0;) {
        const std::size_t i = n % count;
        const double next = speeds[(i + 1) % count];
        const double grip = VehicleModel::gripLimit(next, 1, NominalMass);
        const double across = std::min(bends[i] * next * next, grip);
        VehicleState car;
        car.speed = next;
        const double held =
            VehicleModel::resistance(car, circuit.at(static_cast<double>(i)), false) /
            VehicleModel::massOf(car);
        const double braking = BrakingMargin * std::sqrt(grip * grip - across * across) + held;
        speeds[i] = std::min(speeds[i], std::sqrt(next * next + 2 * std::max(braking, 0.0)));
    }
}

double Driver::targetSpeed(double distance, double speed, const Orders &orders) const
{
    const double place = circuit->wrapped(distance);
    const auto index = static_cast<std::size_t>(place);
    const double from = speeds[index];
    const double to = speeds[(index + 1) % speeds.size()];
    double target = (from + (to - from) * (place - static_cast<double>(index))) * orders.pace;
    if (!orders.comingIn)
        return target;

    const auto brakingTo = [](double end, double metres, double deceleration) {
        return std::sqrt(end * end + 2 * deceleration * std::max(metres, 0.0));
    };
    if (place > Circuit::PitExit && place < Circuit::PitEntry)
        return std::min(target, brakingTo(PitSpeed - 0.6, Circuit::PitEntry - place - 4, 8));
    if (orders.followSpeed && speed > PitSpeed + 0.2)
        target = std::min(target, PitSpeed - 0.4);
    if (orders.stopAtBox && place > Circuit::PitExit)
        target = std::min(target, brakingTo(0, Circuit::PitBox - place, 3.2));
    return target;
}

Controls Driver::pedals(const VehicleState &car, const RoadPoint &road, const Orders &orders) const
{
    const double ahead = car.distance + car.speed * ReactionSeconds;
    const double target = targetSpeed(ahead, car.speed, orders);
    const double further = targetSpeed(ahead + 1, car.speed, orders);
    const double falls = target * (further - target);
    const double below = target - car.speed;
    // Waits for the braking point with the foot down; then rather holds the pedal than lifts it.
    const bool onBrakes = car.brake > 0;
    const double gain = onBrakes && below > 0 && falls < -4 ? 3 : 8;
    const double wish = gain * below + (!onBrakes && below > 1 ? std::max(falls, 0.0) : falls);

    const double mass = VehicleModel::massOf(car);
    const double force = wish * mass + VehicleModel::resistance(car, road, false);
    Controls controls;
    if (force < -0.04 * VehicleModel::FullBrake) {
        controls.brake = std::min(1.0, -force / VehicleModel::FullBrake * orders.brakeStab);
        return controls;
    }
    const double full = std::max(VehicleModel::fullDrive(car), 1.0);
    const double carried = VehicleModel::tractionLimit(car, road) * orders.eagerness / full;
    controls.throttle = std::clamp(force / full, 0.0, std::min(1.0, carried));
    return controls;
}

bool Driver::isMistake(std::uint32_t lap, unsigned curve) const
{
    return chance(seed, 'm', lap, curve) < 0.05;
}

double Driver::commitment(std::uint32_t lap, unsigned curve) const
{
    const double usual = 0.985 + 0.03 * chance(seed, 'c', lap, curve);
    return isMistake(lap, curve) ? usual + 0.04 : usual;
}

double Driver::eagerness(std::uint32_t lap, unsigned curve) const
{
    return 0.88 + 0.2 * chance(seed, 'e', lap, curve);
}

double Driver::brakeStab(std::uint32_t lap, unsigned curve) const
{
    return 0.95 + 0.29 * chance(seed, 'b', lap, curve);
}

std::vector<double> Driver::flyingLap() const
{
    constexpr double Step = 1.0 / 120;
    constexpr double RunUp = -400; // m, from the last curve on
    VehicleState car;
    car.distance = RunUp;
    car.speed = speeds[static_cast<std::size_t>(circuit->wrapped(RunUp))] / 2;
    car.fuelKg = VehicleModel::TankKg / 2;

    std::vector<double> seconds;
    double now = 0;
    while (seconds.size() <= speeds.size()) {
        Orders orders;
        orders.pace = std::sqrt(VehicleModel::gripOf(car));
        const RoadPoint road = circuit->at(car.distance);
        VehicleModel::step(car, pedals(car, road, orders), road, Step);
        if (car.distance < 0)
            continue;
        now += Step;
        while (seconds.size() <= speeds.size()) {
            const double past = car.distance - static_cast<double>(seconds.size());
            if (past < 0)
                break;
            seconds.push_back(now - past / car.speed);
        }
    }
    return seconds;
}

unsigned Driver::mistakes(std::uint32_t lap) const
{
    unsigned count = 0;
    for (unsigned curve = 0; curve < circuit->curveCount(); ++curve)
        count += isMistake(lap, curve) ? 1 : 0;
    return count;
}
