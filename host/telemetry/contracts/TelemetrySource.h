#pragma once

#include "TelemetrySample.h"

class QString;

/// Receives a source's telemetry, on the source's thread, one call at a time.
class TelemetrySink
{
public:
    virtual ~TelemetrySink() = default;

    /// Takes the newest telemetry and the vehicle's name, which is empty if unknown.
    virtual void update(const TelemetrySample &sample, const QString &vehicle) = 0;

    /// No update has come for a while: the game counts as paused.
    virtual void fallSilent() = 0;
};

/// Where the host's telemetry comes from: a game, a recording, a simulation. A source keeps its own
/// time and has its own thread. Its destruction ends the telemetry; no call of the sink follows.
class TelemetrySource
{
public:
    virtual ~TelemetrySource() = default;

    /// Starts to send telemetry to `sink`, which must outlive the source. Called once.
    virtual void start(TelemetrySink &sink) = 0;
};
