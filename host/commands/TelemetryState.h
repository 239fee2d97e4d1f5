#pragma once

#include "telemetry/contracts/TelemetrySample.h"

#include <QtCore/QString>

#include <vector>

/// A moment as a dashboard may meet it.
struct TelemetryState
{
    QString name; ///< In words, for reports.
    TelemetrySample sample;
    bool useMph = false;
    bool showMarkers = false;
};

/// The moment of the demo lap that previews show: at full speed in a lap, with every value known.
TelemetryState previewState();

/// The preview's moment, and what differs from it in one thing each: unknown values, units, pause,
/// markers, and values at and beyond every limit.
std::vector<TelemetryState> telemetryStates();
