#pragma once

#include "DemoLap.h"
#include "TimedTelemetry.h"

#include <cstdint>
#include <vector>

/// Several cars of the demo driven in turn: each has its name and its own race, which stands still
/// while another car is driven.
class DemoCars final : public TimedTelemetry
{
public:
    static constexpr int MaximumCars = 3;

    /// `cars` from 1 to `MaximumCars`; a single car is driven for ever.
    explicit DemoCars(std::uint32_t seed, int cars = 1);

    TelemetrySample sampleAt(double seconds) override;
    QString vehicleNameAt(double seconds) override;

private:
    struct Turn
    {
        std::size_t car = 0;
        double seconds = 0; ///< On the car's own clock.
    };

    Turn turnAt(double seconds) const;

    std::vector<DemoLap> cars;
};
