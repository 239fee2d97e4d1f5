#pragma once

#include "telemetry/contracts/TelemetrySample.h"

#include <cmath>
#include <cstdlib>
#include <initializer_list>

/// Ends the program if a sample holds what no dashboard should be given.
inline void checkSample(const TelemetrySample &sample)
{
    const VehicleTelemetry &vehicle = sample.vehicle;
    const auto require = [](bool holds) {
        if (!holds)
            std::abort();
    };
    for (const float real :
         {+vehicle.speedKmh, +vehicle.groundSpeedKmh, +vehicle.heaveG, +vehicle.swayG,
          +vehicle.surgeG, +vehicle.pitchDeg, +vehicle.rollDeg, +vehicle.headingDeg})
        require(std::isfinite(real) && std::abs(real) <= 20'000);
    for (const int percent : {+vehicle.gasPedalPercent, +vehicle.brakePedalPercent,
                              +vehicle.clutchPedalPercent, +vehicle.fuelLevelPercent})
        require(percent <= 100);
    require(std::abs(vehicle.steeringPercent) <= 100);
    require(vehicle.headingDeg >= 0 && vehicle.headingDeg < 360);
    require(vehicle.gear >= -1 && vehicle.gear <= 40);
    require(vehicle.rpm <= 100'000 && vehicle.maxRpm <= 100'000);
    require(vehicle.position >= 0 && vehicle.completedLaps >= 0 && vehicle.numberOfLaps >= 0);
    for (int corner = 0; corner < 4; ++corner) {
        require(vehicle.tyreWearPercent[corner] <= 100);
        require(std::abs(vehicle.tyreTempC[corner]) <= 5000);
        require(std::abs(vehicle.brakeTempC[corner]) <= 5000);
        require(vehicle.tyrePressureKpa[corner] <= 10'000);
    }
}
