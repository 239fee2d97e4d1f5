#pragma once

#include "DemoCars.h"
#include "system/StoppableThread.h"
#include "telemetry/contracts/TelemetrySource.h"

/// Sends the demo's telemetry 60 times a second, as a game does.
class DemoSource final : public TelemetrySource
{
public:
    /// Begins `startAt` seconds into the demo.
    DemoSource(DemoCars cars, double startAt);

    void start(TelemetrySink &sink) override;

private:
    void run(TelemetrySink &sink);

    const DemoCars cars;
    const double startAt;
    StoppableThread thread; ///< Last, as it uses the others until it has stopped.
};
