#pragma once

#include "TelemetrySample.h"

class QString;

/// Where a source's telemetry goes. Called on the source's thread, one call at a time.
class TelemetrySink
{
public:
    virtual ~TelemetrySink() = default;

    /// The newest telemetry and the vehicle that it is about, empty if nobody tells.
    virtual void update(const TelemetrySample &sample, const QString &vehicle) = 0;

    /// Updates should have come and haven't: the game stands still.
    virtual void fallSilent() = 0;
};

/// Where the host's telemetry comes from: a game, a recording, a simulation. A source keeps its own
/// time and has its own thread. Its destruction ends the telemetry; no call of the sink follows.
class TelemetrySource
{
public:
    virtual ~TelemetrySource() = default;

    /// Lets telemetry flow into `sink`, which outlives the source. Called once.
    virtual void start(TelemetrySink &sink) = 0;
};
