#pragma once

#include "Datagram.h"
#include "Feed.h"

#include <QtCore/QSet>

#include <chrono>
#include <memory>
#include <optional>
#include <vector>

/// Decides whose telemetry counts, and in which format it is. The game that began keeps the wheel
/// until it is silent for half a second. One thread at a time; time comes in as an argument.
class GameSelector
{
public:
    using TimePoint = std::chrono::steady_clock::time_point;

    enum class Silence {
        None,
        Paused, ///< Reported once, when nothing has come for `SilenceLimits::Paused`.
        Lost,   ///< Reported once, when nothing has come for `SilenceLimits::Lost`.
    };

    explicit GameSelector(std::vector<std::unique_ptr<Feed>> feeds);

    /// Takes a datagram; true if it counts. Only the last one that counts is kept.
    bool offer(const QByteArray &datagram, const Datagram::Sender &sender, TimePoint now);

    /// The sample of the last datagram that counted, once.
    std::optional<FeedSample> takeNewest();

    /// What `now` is to be told of the silence.
    Silence check(TimePoint now);

    /// When `check` may have something new to tell; nothing if it won't before the next datagram.
    std::optional<TimePoint> nextCheck() const;

private:
    /// Whether the driver sends each datagram from the same port.
    enum class Ports {
        Unknown, ///< It has sent once.
        Kept,
        Changing,
    };

    Feed *formatOf(const QByteArray &datagram) const;
    bool isSilent(TimePoint now) const;
    bool isLikeDriver(const Datagram::Sender &sender, const Feed *feed) const;
    bool mayDrive(const Datagram::Sender &sender, const Feed *feed, TimePoint now);
    void handOver(const Datagram::Sender &sender, Feed *feed, TimePoint now);
    void tellOfUnknown(const QByteArray &datagram, const Datagram::Sender &sender);
    void tellOfOther(const Datagram::Sender &sender, const Feed *feed);

    const std::vector<std::unique_ptr<Feed>> feeds;
    Datagram::Sender driver;
    Feed *format = nullptr; ///< Of the driver; null until the first one.
    TimePoint lastHeard;
    Ports ports = Ports::Unknown;
    QSet<quint16> otherPorts; ///< From which something like the driver's was heard meanwhile.
    Silence told = Silence::None;
    bool hasNewest = false;
    QByteArray newest;
    QSet<int> unknownTold; ///< Lengths of unknown datagrams that were told of.
    bool toldOfOther = false;
};
