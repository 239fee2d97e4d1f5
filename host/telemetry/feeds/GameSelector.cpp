#include "GameSelector.h"

#include "telemetry/contracts/SilenceLimits.h"

#include <QtCore/QDebug>

#include <algorithm>
#include <cstring>
#include <utility>

namespace {

QString nameOf(const Datagram::Sender &sender)
{
    return QStringLiteral("%1, port %2").arg(sender.address.toString()).arg(sender.port);
}

bool isSame(const Datagram::Sender &one, const Datagram::Sender &other)
{
    return one.port == other.port && one.toPort == other.toPort && one.address == other.address;
}

} // namespace

GameSelector::GameSelector(std::vector<std::unique_ptr<Feed>> feeds)
    : feeds(std::move(feeds))
{
}

bool GameSelector::offer(const QByteArray &datagram, const Datagram::Sender &sender, TimePoint now)
{
    Feed *const feed = feedFor(datagram);
    if (feed == nullptr) {
        warnOfUnknownFormat(datagram, sender);
        return false;
    }
    const bool isSelected = selectedFeed != nullptr && isSame(sender, selectedSender);
    if (!isSelected && !maySelect(sender, feed, now)) {
        if (!isLikeSelected(sender, feed) || sourcePorts == SourcePorts::Fixed)
            warnOfSecondGame(sender, feed);
        return false;
    }
    if (!isSelected || feed != selectedFeed)
        select(sender, feed, now);
    else if (sourcePorts == SourcePorts::Unknown)
        sourcePorts = SourcePorts::Fixed;
    lastHeard = now;
    reported = Silence::None;
    newest.resize(datagram.size());
    std::memcpy(newest.data(), datagram.constData(), static_cast<std::size_t>(datagram.size()));
    hasNewest = true;
    return true;
}

std::optional<FeedSample> GameSelector::takeNewest()
{
    if (!std::exchange(hasNewest, false))
        return std::nullopt;
    return selectedFeed->decode(newest, lastHeard);
}

GameSelector::Silence GameSelector::checkSilence(TimePoint now)
{
    const std::optional<TimePoint> due = nextSilenceCheck();
    if (!due || now < *due)
        return Silence::None;
    if (now - lastHeard < SilenceLimits::Lost)
        return reported = Silence::Paused;
    // Even if nobody asked in between, the pause comes first.
    if (reported == Silence::None)
        return reported = Silence::Paused;
    warnedLengths.clear();
    qInfo("Telemetry: the game fell silent.");
    return reported = Silence::Lost;
}

std::optional<GameSelector::TimePoint> GameSelector::nextSilenceCheck() const
{
    if (selectedFeed == nullptr || reported == Silence::Lost)
        return std::nullopt;
    return lastHeard + (reported == Silence::None ? TimePoint::duration(SilenceLimits::Paused)
                                                  : TimePoint::duration(SilenceLimits::Lost));
}

Feed *GameSelector::feedFor(const QByteArray &datagram) const
{
    if (selectedFeed != nullptr && selectedFeed->accepts(datagram))
        return selectedFeed;
    const auto found = std::find_if(feeds.begin(), feeds.end(), [&datagram](const auto &feed) {
        return feed->accepts(datagram);
    });
    return found == feeds.end() ? nullptr : found->get();
}

bool GameSelector::isSilent(TimePoint now) const
{
    return selectedFeed == nullptr || now - lastHeard >= SilenceLimits::Paused;
}

bool GameSelector::isLikeSelected(const Datagram::Sender &sender, const Feed *feed) const
{
    return feed == selectedFeed && sender.toPort == selectedSender.toPort &&
           sender.address == selectedSender.address;
}

bool GameSelector::maySelect(const Datagram::Sender &sender, const Feed *feed, TimePoint now)
{
    if (isSilent(now))
        return true;
    if (!isLikeSelected(sender, feed))
        return false;
    // Some games send each datagram from another port. Two games of the same kind don't: the
    // selected one is heard from its port again before there have been so many others.
    constexpr int EnoughPorts = 3;
    if (sourcePorts == SourcePorts::Unknown) {
        otherPorts.insert(sender.port);
        if (otherPorts.size() >= EnoughPorts)
            sourcePorts = SourcePorts::Changing;
    }
    return sourcePorts == SourcePorts::Changing;
}

void GameSelector::select(const Datagram::Sender &sender, Feed *feed, TimePoint now)
{
    const bool isSameGame =
        isLikeSelected(sender, feed) && (sourcePorts == SourcePorts::Changing || isSilent(now));
    if (!isSameGame) {
        feed->restart();
        warnedLengths.clear();
        warnedOfSecondGame = false;
        qInfo().noquote()
            << QStringLiteral("Telemetry: %1 from %2.").arg(feed->name(), nameOf(sender));
    }
    if (!isSameGame || isSilent(now)) {
        sourcePorts = SourcePorts::Unknown;
        otherPorts.clear();
    }
    selectedSender = sender;
    selectedFeed = feed;
}

void GameSelector::warnOfUnknownFormat(const QByteArray &datagram, const Datagram::Sender &sender)
{
    // Drivers try one format after another, and some games send several at once.
    constexpr int MostWarnings = 8;
    if (warnedLengths.size() >= MostWarnings || warnedLengths.contains(datagram.size()))
        return;
    warnedLengths.insert(datagram.size());
    qWarning().noquote() << QStringLiteral("Port %1 receives datagrams of %2 bytes from %3 in an "
                                           "unknown format.")
                                .arg(sender.toPort)
                                .arg(datagram.size())
                                .arg(nameOf(sender));
}

void GameSelector::warnOfSecondGame(const Datagram::Sender &sender, const Feed *feed)
{
    if (std::exchange(warnedOfSecondGame, true))
        return;
    qWarning().noquote() << QStringLiteral("A second game sends %1 from %2. It is ignored until "
                                           "%3 from %4 stops sending.")
                                .arg(feed->name(), nameOf(sender), selectedFeed->name(),
                                     nameOf(selectedSender));
}
