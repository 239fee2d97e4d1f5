#pragma once

#include "DemoLap.h"
#include "TimedTelemetry.h"

#include <cstdint>
#include <memory>
#include <vector>

/// Several cars of the demo lap driven in turn: each has its name and its own race, which stands
/// still while another car is driven.
class DemoCars final : public TimedTelemetry
{
public:
    static constexpr int MaximumCars = 3;
    static constexpr double DefaultTurnSeconds = 20;

    /// `cars` from 1 to `MaximumCars`; a single car is driven for ever. `turnSeconds` is how long
    /// each is driven at a time.
    explicit DemoCars(std::uint32_t seed, int cars = 1, double turnSeconds = DefaultTurnSeconds);

    TelemetrySample sampleAt(double seconds) override;
    QString vehicleNameAt(double seconds) override;

private:
    struct Turn
    {
        DemoLap *car = nullptr;
        double seconds = 0; ///< On the car's own clock.
    };

    Turn turnAt(double seconds) const;

    const double turnSeconds;
    std::vector<std::unique_ptr<DemoLap>> cars;
};
