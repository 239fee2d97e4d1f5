#pragma once

#include <QtCore/QString>

#include <vector>

/// A source of telemetry that options and settings offer by name.
struct TelemetrySourceChoice
{
    QString name;      ///< As `--telemetry` takes it.
    const char *title; ///< English; the settings translate it in the context "TelemetrySources".
};

/// The demo, any game, and each feed alone, in the order in which they are offered.
std::vector<TelemetrySourceChoice> telemetrySourceChoices();
