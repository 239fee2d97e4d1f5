#pragma once

#include "telemetry/TelemetryRequest.h"

#include <QtCore/QString>

#include <optional>

/// What a session is built with.
struct SessionOptions
{
    QString dashboard; ///< A QML file, or a profile's name or id; empty leaves it to the store.
    TelemetryRequest telemetry;
    std::optional<bool> useMph; ///< What dashboards show; without a value as set, or else km/h.
    bool hardwareAcceleration = true;
};
