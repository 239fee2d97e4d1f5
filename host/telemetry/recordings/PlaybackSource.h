#pragma once

#include "DrivePlayer.h"
#include "telemetry/TelemetrySource.h"

#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

/// Plays a drive from a file as if its game was running, on a thread of its own.
class PlaybackSource final : public TelemetrySource
{
public:
    PlaybackSource(std::unique_ptr<DatagramReader> reader, std::vector<std::unique_ptr<Feed>> feeds,
                   const Playback::Settings &settings);
    ~PlaybackSource() override;

    void start(TelemetrySink &sink) override;

private:
    void run(TelemetrySink &sink);

    DrivePlayer player;
    std::mutex mutex;
    std::condition_variable stopRequested;
    bool stopping = false;
    std::thread thread;
};
