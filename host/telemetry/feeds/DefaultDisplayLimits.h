#pragma once

#include "TelemetryRecords.h"

/// Display limits for games that send none: a steering wheel of 900 degrees from lock to lock, and
/// the zones of an ordinary rev counter.
inline DisplayLimits defaultDisplayLimits()
{
    DisplayLimits limits{};
    limits.steeringScale = 4.5F;
    limits.lowFuelLevelThresholdPercent = 15;
    limits.rpmGreenThresholdPercent = 80;
    limits.rpmYellowThresholdPercent = 88;
    limits.rpmRedThresholdPercent = 94;
    limits.rpmBlinkingThresholdPercent = 97;
    return limits;
}
