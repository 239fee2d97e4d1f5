#pragma once

#include "telemetry/contracts/TelemetrySample.h"

#include <QtCore/QString>

/// Telemetry that can be asked for any moment, in any order. Used by one thread at a time.
class TimedTelemetry
{
public:
    virtual ~TimedTelemetry() = default;

    /// The telemetry `seconds` after the start.
    virtual TelemetrySample sampleAt(double seconds) = 0;

    /// The vehicle that is driven at that moment.
    virtual QString vehicleNameAt(double seconds) = 0;
};
