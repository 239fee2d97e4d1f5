#pragma once

#include "Playback.h"
#include "telemetry/feeds/GameSelector.h"

#include <memory>
#include <optional>
#include <vector>

class TelemetrySink;

/// Plays a drive through the decoding that live telemetry takes. Time comes in as an argument. Used
/// by one thread at a time.
class DrivePlayer
{
public:
    using Nanoseconds = std::chrono::nanoseconds;

    DrivePlayer(std::unique_ptr<DatagramReader> reader, std::vector<std::unique_ptr<Feed>> feeds,
                const Playback::Settings &settings);

    /// Hands on what is due `elapsed` after the start: of several updates the newest, as a
    /// dashboard shows no other. Slower than the drive's own pace the last one is repeated, as
    /// updates must not come further apart than live ones. The result is the moment at which to
    /// call again, or nothing when all is over.
    std::optional<Nanoseconds> advance(Nanoseconds elapsed, TelemetrySink &sink);

private:
    /// Since `newest`, by the drive's clock.
    enum class Silence { None, Noticed, Told };

    bool takeDue(Nanoseconds elapsed);
    void hear(GameSelector::TimePoint time);
    std::optional<Nanoseconds> nextRepetition() const;
    std::optional<Nanoseconds> nextMoment(Nanoseconds elapsed);
    void tell();

    Playback playback;
    GameSelector games;
    const bool isSlow; ///< Slower than the drive's own pace.
    std::optional<FeedSample> newest;
    bool isNews = false;       ///< `newest` hasn't been handed on.
    Nanoseconds lastUpdate{0}; ///< When it was.
    Silence silence = Silence::None;
    bool anyUnderstood = false;
    bool toldRemarks = false;
    bool toldEnd = false;
};
