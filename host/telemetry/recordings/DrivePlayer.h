#pragma once

#include "Playback.h"
#include "telemetry/feeds/GameSelector.h"

#include <memory>
#include <optional>
#include <vector>

class TelemetrySink;

/// Plays a recorded drive through the same decoding as live telemetry. Time comes in as an
/// argument. One thread at a time.
class DrivePlayer
{
public:
    using Nanoseconds = std::chrono::nanoseconds;

    DrivePlayer(std::unique_ptr<DatagramReader> reader, std::vector<std::unique_ptr<Feed>> feeds,
                const Playback::Settings &settings);

    /// Decodes what is due `elapsed` after the start, and hands the newest update to `sink`. A
    /// drive that plays slower than its own pace repeats updates, so that it doesn't count as
    /// paused. The result is when to call again, or nothing once all is over.
    std::optional<Nanoseconds> advance(Nanoseconds elapsed, TelemetrySink &sink);

private:
    /// Of the drive since `newest`, by its own clock.
    enum class Silence { None, Noticed, Reported };

    bool takeDue(Nanoseconds elapsed);
    void noticeSilence(GameSelector::TimePoint time);
    std::optional<Nanoseconds> nextRepetition() const;
    std::optional<Nanoseconds> nextMoment(Nanoseconds elapsed);
    void report();

    Playback playback;
    GameSelector games;
    const bool isSlow; ///< Slower than the drive's own pace.
    std::optional<FeedSample> newest;
    bool isNews = false;       ///< `newest` hasn't been handed on.
    Nanoseconds lastUpdate{0}; ///< When it was.
    Silence silence = Silence::None;
    bool anyUnderstood = false;
    bool reportedRemarks = false;
    bool reportedEnd = false;
};
