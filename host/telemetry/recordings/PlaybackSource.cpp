#include "PlaybackSource.h"

#include <chrono>
#include <utility>

PlaybackSource::PlaybackSource(std::unique_ptr<DatagramReader> reader,
                               std::vector<std::unique_ptr<Feed>> feeds,
                               const Playback::Settings &settings)
    : player(std::move(reader), std::move(feeds), settings)
{
}

PlaybackSource::~PlaybackSource()
{
    {
        const std::lock_guard guard(mutex);
        stopping = true;
    }
    stopRequested.notify_all();
    if (thread.joinable())
        thread.join();
}

void PlaybackSource::start(TelemetrySink &sink)
{
    thread = std::thread([this, &sink] { run(sink); });
}

void PlaybackSource::run(TelemetrySink &sink)
{
    using Clock = std::chrono::steady_clock;
    const Clock::time_point start = Clock::now();
    std::unique_lock lock(mutex);
    while (!stopping) {
        lock.unlock();
        const std::optional<DrivePlayer::Nanoseconds> next =
            player.advance(Clock::now() - start, sink);
        lock.lock();
        if (!next)
            return;
        stopRequested.wait_until(lock, start + std::chrono::duration_cast<Clock::duration>(*next),
                                 [this] { return stopping; });
    }
}
