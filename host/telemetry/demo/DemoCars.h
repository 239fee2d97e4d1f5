#pragma once

#include "DemoLap.h"

#include <QtCore/QString>

#include <cstdint>
#include <utility>
#include <vector>

/// Several cars of the demo driven in turn: each has its name and its own race, which stands still
/// while another car is driven.
class DemoCars
{
public:
    static constexpr int MaximumCars = 3;

    /// `cars` from 1 to `MaximumCars`; a single car is driven for ever.
    explicit DemoCars(std::uint32_t seed, int cars = 1);

    TelemetrySample sampleAt(double seconds) const;
    /// The car that is driven then.
    QString vehicleNameAt(double seconds) const;

private:
    /// The car that is driven, and the seconds on its own clock.
    std::pair<std::size_t, double> turnAt(double seconds) const;

    std::vector<DemoLap> cars;
};
