#pragma once

#include "TelemetryRecords.h"

#include <QtCore/QString>

/// The telemetry of one moment, as the engine takes it.
struct TelemetrySample
{
    VehicleTelemetry vehicle{};
    DisplayLimits limits{};
    ExtendedTelemetry extended{};
    bool paused = false;
};

/// Where the host's telemetry comes from. Used by one thread at a time.
class TelemetrySource
{
public:
    virtual ~TelemetrySource() = default;

    /// The telemetry `seconds` after the source's start. Any moment may be asked for, in any order.
    virtual TelemetrySample sampleAt(double seconds) = 0;

    /// The vehicle that is driven at that moment.
    virtual QString vehicleNameAt(double seconds) = 0;
};
