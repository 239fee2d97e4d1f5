#include "DemoCars.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr std::array<const char *, DemoCars::MaximumCars> Names{
    "Auralis Silhouette", "Borealis Touring", "Caldera Super Coupe"};

} // namespace

DemoCars::DemoCars(std::uint32_t seed, int cars, double turnSeconds)
    : turnSeconds(turnSeconds)
{
    const int count = std::clamp(cars, 1, MaximumCars);
    for (int car = 0; car < count; ++car) {
        this->cars.push_back(std::make_unique<DemoLap>(seed + static_cast<std::uint32_t>(car),
                                                       DemoLap::DefaultLaps,
                                                       QLatin1String(Names[std::size_t(car)])));
    }
}

TelemetrySample DemoCars::sampleAt(double seconds)
{
    const Turn turn = turnAt(seconds);
    return turn.car->sampleAt(turn.seconds);
}

QString DemoCars::vehicleNameAt(double seconds)
{
    const Turn turn = turnAt(seconds);
    return turn.car->vehicleNameAt(turn.seconds);
}

DemoCars::Turn DemoCars::turnAt(double seconds) const
{
    // One car has no turns, and its own clock bears any number.
    if (cars.size() == 1 || !std::isfinite(seconds) || seconds < 0)
        return {cars.front().get(), seconds};
    const double turns = std::floor(seconds / turnSeconds);
    const auto count = static_cast<double>(cars.size());
    const auto car = static_cast<std::size_t>(std::fmod(turns, count));
    return {cars[car].get(),
            std::floor(turns / count) * turnSeconds + (seconds - turns * turnSeconds)};
}
