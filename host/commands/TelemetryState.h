#pragma once

#include "telemetry/contracts/TelemetrySample.h"

#include <QtCore/QString>

#include <vector>

/// Telemetry and settings that a dashboard may have to show.
struct TelemetryState
{
    QString name; ///< For reports.
    TelemetrySample sample;
    bool useMph = false;
    bool showMarkers = false;
};

/// The moment of the demo that previews show: at full speed, with every value known.
TelemetryState previewState();

/// The preview's moment first, then states that differ from it in one respect each: unknown values,
/// units, pause, markers, and values at and beyond every limit.
std::vector<TelemetryState> telemetryStates();
