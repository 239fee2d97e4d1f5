#include "PlaybackSource.h"

#include <chrono>
#include <utility>

PlaybackSource::PlaybackSource(std::unique_ptr<DatagramReader> reader,
                               std::vector<std::unique_ptr<Feed>> feeds,
                               const Playback::Settings &settings)
    : player(std::move(reader), std::move(feeds), settings)
{
}

void PlaybackSource::start(TelemetrySink &sink)
{
    thread.start([this, &sink] { run(sink); });
}

void PlaybackSource::run(TelemetrySink &sink)
{
    using Clock = std::chrono::steady_clock;
    const Clock::time_point start = Clock::now();
    std::optional<DrivePlayer::Nanoseconds> next;
    do {
        next = player.advance(Clock::now() - start, sink);
    } while (next && thread.waitUntil(start + std::chrono::duration_cast<Clock::duration>(*next)));
}
