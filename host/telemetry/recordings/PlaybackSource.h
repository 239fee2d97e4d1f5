#pragma once

#include "DrivePlayer.h"
#include "system/StoppableThread.h"
#include "telemetry/contracts/TelemetrySource.h"

#include <memory>
#include <vector>

/// Plays a recorded drive as if its game were running, on a thread of its own.
class PlaybackSource final : public TelemetrySource
{
public:
    PlaybackSource(std::unique_ptr<DatagramReader> reader, std::vector<std::unique_ptr<Feed>> feeds,
                   const Playback::Settings &settings);

    void start(TelemetrySink &sink) override;

private:
    void run(TelemetrySink &sink);

    DrivePlayer player;
    StoppableThread thread; ///< Last, as it uses the player until it has stopped.
};
