#pragma once

#include "DatagramReader.h"

#include <chrono>
#include <memory>
#include <optional>

/// Plays a drive at a pace: tells which datagrams are due. Time comes in as an argument, so nothing
/// here waits. Used by one thread at a time.
class Playback
{
public:
    using Nanoseconds = std::chrono::nanoseconds;

    static constexpr double SlowestSpeed = 0.1;
    static constexpr double FastestSpeed = 100;

    /// A longer silence in the file plays as one of this length.
    static constexpr Nanoseconds LongestGap = std::chrono::seconds(6);

    /// Between the last datagram and the first one of the next round.
    static constexpr Nanoseconds LoopGap = std::chrono::milliseconds(100);

    struct Settings
    {
        double speed = 1;       ///< 1 is the drive's own pace; taken into the limits above.
        Nanoseconds startAt{0}; ///< Where in the drive to begin, counted as it plays, from 0 on.
        bool loop = false;      ///< Begin again at the end.
    };

    Playback(std::unique_ptr<DatagramReader> reader, const Settings &settings);

    /// The next datagram that is due `elapsed` after the playback's start, or nothing if none is.
    /// Call it until then. Its time is its place in the drive and never runs back. What lies
    /// before `startAt` is due at once, since decoders learn from it.
    std::optional<Datagram> take(Nanoseconds elapsed);

    /// When the next datagram is due; nothing at the end.
    std::optional<Nanoseconds> nextDue();

    /// Whether the last datagram has been taken. Never with `loop`, unless there is none to play.
    bool atEnd();

    /// Whether datagrams that lie before `startAt` are still to be taken.
    bool isSkipping();

    /// Which place of the drive is played `elapsed` after the start, and the other way round.
    Nanoseconds placeAt(Nanoseconds elapsed) const;
    Nanoseconds elapsedAt(Nanoseconds target) const;

    /// Whether the drive ended before the place at which to begin, at `length()`.
    bool startsBeyondEnd();

    /// Where the last datagram that was read stands in the drive.
    Nanoseconds length() const { return place; }

    /// Whether the file has been read to its end at least once.
    bool isRoundOver() const { return roundOver; }

    /// What the user should know of the file: one line each. Empty until the first round is over.
    QStringList remarks() const { return remarkLines; }

private:
    const Datagram *upcoming();
    void beginAgain();

    const std::unique_ptr<DatagramReader> reader;
    const Settings settings;
    std::optional<Datagram> pending; ///< With its place as time.
    Nanoseconds fileTime{0};         ///< Of the last datagram read.
    Nanoseconds place{0};
    bool begun = false;
    bool roundOver = false;
    bool ended = false;
    QStringList remarkLines;
};
