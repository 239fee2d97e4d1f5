#include "DemoCars.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double TurnSeconds = 20;
constexpr const char *Names[DemoCars::MaximumCars] = {"Auralis Silhouette", "Borealis Touring",
                                                      "Caldera Super Coupe"};

} // namespace

DemoCars::DemoCars(std::uint32_t seed, int cars)
{
    for (int car = 0; car < std::clamp(cars, 1, MaximumCars); ++car)
        this->cars.emplace_back(seed + static_cast<std::uint32_t>(car));
}

TelemetrySample DemoCars::sampleAt(double seconds) const
{
    const auto [car, moment] = turnAt(seconds);
    return cars[car].sampleAt(moment);
}

QString DemoCars::vehicleNameAt(double seconds) const
{
    return QLatin1String(Names[turnAt(seconds).first]);
}

std::pair<std::size_t, double> DemoCars::turnAt(double seconds) const
{
    // One car has no turns, and its own clock takes any number.
    if (cars.size() == 1 || !std::isfinite(seconds) || seconds < 0)
        return {0, seconds};
    const double turns = std::floor(seconds / TurnSeconds);
    const auto count = static_cast<double>(cars.size());
    const double earlier = std::floor(turns / count) * TurnSeconds;
    return {std::size_t(std::fmod(turns, count)), earlier + seconds - turns * TurnSeconds};
}
