#pragma once

#include "telemetry/TelemetryRequest.h"

#include <QtCore/QString>

#include <optional>

/// What a session is created with.
struct SessionOptions
{
    QString dashboard; ///< A QML file, or a profile's name or id; empty: the store decides.
    TelemetryRequest telemetry;
    std::optional<bool> useMph; ///< Units of dashboards; by default those of the settings, or km/h.
    bool hardwareAcceleration = true;
};
