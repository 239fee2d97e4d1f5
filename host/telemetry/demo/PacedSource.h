#pragma once

#include "telemetry/TelemetrySource.h"

#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>

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
    std::mutex mutex;
    std::condition_variable stopRequested;
    bool stopping = false;
    std::thread thread;
};
