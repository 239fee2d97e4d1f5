#pragma once

#include "Datagram.h"
#include "Feed.h"

#include <QtCore/QSet>

#include <chrono>
#include <memory>
#include <optional>
#include <vector>

/// Selects the game whose telemetry counts, and the feed that reads it. The selected game is the
/// only one that counts until it is silent for half a second. One thread at a time; time comes in
/// as an argument.
class GameSelector
{
public:
    using TimePoint = std::chrono::steady_clock::time_point;

    enum class Silence {
        None,
        Paused, ///< Reported once, when nothing has come for `SilenceLimits::Paused`.
        Lost,   ///< Reported once, when nothing has come for `SilenceLimits::Lost`.
    };

    /// Takes the feeds in the order in which they are tried.
    explicit GameSelector(std::vector<std::unique_ptr<Feed>> feeds);

    /// Takes a datagram; true if it counts. Only the last one that counts is kept.
    bool offer(const QByteArray &datagram, const Datagram::Sender &sender, TimePoint now);

    /// Decodes the last datagram that counted, once.
    std::optional<FeedSample> takeNewest();

    /// Whether the selected game has just been silent for long enough to report it.
    Silence checkSilence(TimePoint now);

    /// When `checkSilence` has something to report if no datagram comes; nothing if it never has.
    std::optional<TimePoint> nextSilenceCheck() const;

private:
    /// Whether the selected game sends each datagram from the same port.
    enum class SourcePorts {
        Unknown, ///< It has sent once.
        Fixed,
        Changing,
    };

    Feed *feedFor(const QByteArray &datagram) const;
    bool isSilent(TimePoint now) const;
    bool isLikeSelected(const Datagram::Sender &sender, const Feed *feed) const;
    bool maySelect(const Datagram::Sender &sender, const Feed *feed, TimePoint now);
    void select(const Datagram::Sender &sender, Feed *feed, TimePoint now);
    void warnOfUnknownFormat(const QByteArray &datagram, const Datagram::Sender &sender);
    void warnOfSecondGame(const Datagram::Sender &sender, const Feed *feed);

    const std::vector<std::unique_ptr<Feed>> feeds;
    Datagram::Sender selectedSender;
    Feed *selectedFeed = nullptr; ///< Null until the first datagram that a feed accepts.
    TimePoint lastHeard;
    SourcePorts sourcePorts = SourcePorts::Unknown;
    QSet<quint16> otherPorts; ///< Where else something like the selected game was heard.
    Silence reported = Silence::None;
    bool hasNewest = false;
    QByteArray newest;
    QSet<int> warnedLengths; ///< Of datagrams in unknown formats.
    bool warnedOfSecondGame = false;
};
