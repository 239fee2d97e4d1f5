#pragma once

#include "TelemetryRecords.h"

/// The telemetry of one moment, as the engine takes it.
struct TelemetrySample
{
    VehicleTelemetry vehicle{};
    DisplayLimits limits{};
    ExtendedTelemetry extended{};
    bool paused = false;
};
