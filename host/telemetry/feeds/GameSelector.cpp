#include "GameSelector.h"

#include "telemetry/SilenceLimits.h"

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
    Feed *const feed = formatOf(datagram);
    if (feed == nullptr) {
        tellOfUnknown(datagram, sender);
        return false;
    }
    const bool isDriver = format != nullptr && isSame(sender, driver);
    if (!isDriver && !mayDrive(sender, feed, now)) {
        if (!isLikeDriver(sender, feed) || ports == Ports::Kept)
            tellOfOther(sender, feed);
        return false;
    }
    if (!isDriver || feed != format)
        handOver(sender, feed, now);
    else if (ports == Ports::Unknown)
        ports = Ports::Kept;
    lastHeard = now;
    told = Silence::None;
    newest.resize(datagram.size());
    std::memcpy(newest.data(), datagram.constData(), static_cast<std::size_t>(datagram.size()));
    hasNewest = true;
    return true;
}

std::optional<FeedSample> GameSelector::takeNewest()
{
    if (!std::exchange(hasNewest, false))
        return std::nullopt;
    return format->decode(newest, lastHeard);
}

GameSelector::Silence GameSelector::check(TimePoint now)
{
    const std::optional<TimePoint> due = nextCheck();
    if (!due || now < *due)
        return Silence::None;
    if (now - lastHeard < SilenceLimits::Lost)
        return told = Silence::Paused;
    // Even if nobody asked in between, the pause comes first.
    if (told == Silence::None)
        return told = Silence::Paused;
    unknownTold.clear();
    qInfo("Telemetry: the game fell silent.");
    return told = Silence::Lost;
}

std::optional<GameSelector::TimePoint> GameSelector::nextCheck() const
{
    if (format == nullptr || told == Silence::Lost)
        return std::nullopt;
    return lastHeard + (told == Silence::None ? TimePoint::duration(SilenceLimits::Paused)
                                              : TimePoint::duration(SilenceLimits::Lost));
}

Feed *GameSelector::formatOf(const QByteArray &datagram) const
{
    if (format != nullptr && format->accepts(datagram))
        return format;
    const auto found = std::find_if(feeds.begin(), feeds.end(), [&datagram](const auto &feed) {
        return feed->accepts(datagram);
    });
    return found == feeds.end() ? nullptr : found->get();
}

bool GameSelector::isSilent(TimePoint now) const
{
    return format == nullptr || now - lastHeard >= SilenceLimits::Paused;
}

bool GameSelector::isLikeDriver(const Datagram::Sender &sender, const Feed *feed) const
{
    return feed == format && sender.toPort == driver.toPort && sender.address == driver.address;
}

bool GameSelector::mayDrive(const Datagram::Sender &sender, const Feed *feed, TimePoint now)
{
    if (isSilent(now))
        return true;
    if (!isLikeDriver(sender, feed))
        return false;
    // Some senders open a port anew for each datagram. Of two games the first one comes from its
    // port again before there have been so many.
    constexpr int EnoughPorts = 3;
    if (ports == Ports::Unknown) {
        otherPorts.insert(sender.port);
        if (otherPorts.size() >= EnoughPorts)
            ports = Ports::Changing;
    }
    return ports == Ports::Changing;
}

void GameSelector::handOver(const Datagram::Sender &sender, Feed *feed, TimePoint now)
{
    const bool isSameGame =
        isLikeDriver(sender, feed) && (ports == Ports::Changing || isSilent(now));
    if (!isSameGame) {
        feed->restart();
        unknownTold.clear();
        toldOfOther = false;
        qInfo().noquote()
            << QStringLiteral("Telemetry: %1 from %2.").arg(feed->name(), nameOf(sender));
    }
    if (!isSameGame || isSilent(now)) {
        ports = Ports::Unknown;
        otherPorts.clear();
    }
    driver = sender;
    format = feed;
}

void GameSelector::tellOfUnknown(const QByteArray &datagram, const Datagram::Sender &sender)
{
    // A driver tries one format after another, and some games send several at once.
    constexpr int MostTold = 8;
    if (unknownTold.size() >= MostTold || unknownTold.contains(datagram.size()))
        return;
    unknownTold.insert(datagram.size());
    qWarning().noquote() << QStringLiteral("Port %1 gets datagrams of %2 bytes from %3 that are in "
                                           "no format known here.")
                                .arg(sender.toPort)
                                .arg(datagram.size())
                                .arg(nameOf(sender));
}

void GameSelector::tellOfOther(const Datagram::Sender &sender, const Feed *feed)
{
    if (std::exchange(toldOfOther, true))
        return;
    qWarning().noquote() << QStringLiteral("A second game sends %1 from %2. It must wait until %3 "
                                           "from %4 is silent.")
                                .arg(feed->name(), nameOf(sender), format->name(), nameOf(driver));
}
