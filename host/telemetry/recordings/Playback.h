#pragma once

#include "DatagramReader.h"

#include <chrono>
#include <memory>
#include <optional>

/// Plays a drive at a pace: tells which datagrams are due. Time comes in as an argument; nothing
/// here waits. One thread at a time.
class Playback
{
public:
    using Nanoseconds = std::chrono::nanoseconds;

    static constexpr double SlowestSpeed = 0.1;
    static constexpr double FastestSpeed = 100;

    /// A longer silence in the file plays as one of this length.
    static constexpr Nanoseconds LongestGap = std::chrono::seconds(6);

    /// The pause between the last datagram and the first one of the next round.
    static constexpr Nanoseconds LoopGap = std::chrono::milliseconds(100);

    struct Settings
    {
        double speed = 1;       ///< 1 is the drive's own pace; kept within the limits above.
        Nanoseconds startAt{0}; ///< Where in the drive to begin, long silences shortened.
        bool loop = false;      ///< Begin again at the end.
    };

    Playback(std::unique_ptr<DatagramReader> reader, const Settings &settings);

    /// Takes the next datagram that is due `elapsed` after the start; nothing if none is. Its time
    /// is its place in the drive, which never runs back. What lies before `startAt` is due at once,
    /// since feeds learn from it.
    std::optional<Datagram> take(Nanoseconds elapsed);

    /// When the next datagram is due; nothing at the end.
    std::optional<Nanoseconds> nextDue();

    /// Whether the last datagram has been taken. With `loop` only if there is nothing to play.
    bool atEnd();

    /// Whether datagrams that lie before `startAt` are still to be taken.
    bool isSkipping();

    /// The place in the drive that is played `elapsed` after the start, and the reverse.
    Nanoseconds placeAt(Nanoseconds elapsed) const;
    Nanoseconds elapsedAt(Nanoseconds target) const;

    /// Whether the drive ended, at `length()`, before the place at which to begin.
    bool startsBeyondEnd();

    /// The place in the drive of the last datagram that was read.
    Nanoseconds length() const { return place; }

    /// Whether the file has been read to its end at least once.
    bool isRoundOver() const { return roundOver; }

    /// What the user should know about the file: one line each. Empty until the first round is
    /// over.
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
