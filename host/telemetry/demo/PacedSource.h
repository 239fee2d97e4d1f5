#pragma once

#include "system/StoppableThread.h"
#include "telemetry/contracts/TelemetrySource.h"

#include <memory>

class TimedTelemetry;

/// Plays telemetry that is known for any moment, 60 times a second, as a game does.
class PacedSource final : public TelemetrySource
{
public:
    /// Begins `startAt` seconds into the telemetry.
    PacedSource(std::unique_ptr<TimedTelemetry> telemetry, double startAt);
    ~PacedSource() override;

    void start(TelemetrySink &sink) override;

private:
    void run(TelemetrySink &sink);

    std::unique_ptr<TimedTelemetry> telemetry;
    const double startAt;
    StoppableThread thread; ///< Last, as it uses the others until it has stopped.
};
