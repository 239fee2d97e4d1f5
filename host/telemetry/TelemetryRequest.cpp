#include "TelemetryRequest.h"

#include "TelemetrySourceChoices.h"
#include "system/Terminal.h"
#include "telemetry/demo/DemoCars.h"
#include "telemetry/demo/DemoLap.h"
#include "telemetry/demo/DemoSource.h"
#include "telemetry/feeds/KnownFeeds.h"
#include "telemetry/feeds/described/DescribedFeed.h"
#include "telemetry/recordings/OpenDrive.h"
#include "telemetry/recordings/PlaybackSource.h"

#include <QtCore/QFileInfo>

#include <algorithm>
#include <chrono>
#include <optional>
#include <utility>

namespace {

const QLatin1String Demo("demo");

bool isDescription(const QString &path)
{
    return path.endsWith(QLatin1String(".json"), Qt::CaseInsensitive);
}

/// The feeds of a request; none, with the reasons in `problems`, if a description is wrong.
std::vector<std::unique_ptr<Feed>> feedsOf(const TelemetryRequest &request, QStringList &problems)
{
    std::vector<std::unique_ptr<Feed>> feeds;
    QStringList descriptions = request.feedFiles;
    if (isDescription(request.source))
        descriptions += request.source;
    // Described feeds come first: a description is surer than a guess by length.
    for (const QString &path : qAsConst(descriptions)) {
        std::optional<FeedDescription> description = FeedDescription::load(path, problems);
        if (!description)
            return {};
        feeds.push_back(std::make_unique<DescribedFeed>(std::move(*description)));
    }
    if (isDescription(request.source))
        return feeds;
    const std::vector<KnownFeed> &known = knownFeeds();
    const auto isWanted = [&request](const KnownFeed &feed) {
        return request.source == QLatin1String(feed.option);
    };
    const bool isOne = std::any_of(known.begin(), known.end(), isWanted);
    for (const KnownFeed &feed : known) {
        if (!isOne || isWanted(feed))
            feeds.push_back(feed.make());
    }
    return feeds;
}

UdpListener::Settings settingsOf(const TelemetryRequest &request,
                                 const std::vector<std::unique_ptr<Feed>> &feeds)
{
    UdpListener::Settings settings;
    if (request.listenAddress.isNull())
        settings.addresses = {QHostAddress(QHostAddress::LocalHost),
                              QHostAddress(QHostAddress::LocalHostIPv6)};
    else
        settings.addresses = {request.listenAddress};
    if (request.port != 0) {
        settings.ports = {request.port};
        return settings;
    }
    for (const auto &feed : feeds) {
        for (const quint16 port : feed->usualPorts()) {
            // Two feeds may share a port, which opens only once.
            if (std::find(settings.ports.begin(), settings.ports.end(), port) ==
                settings.ports.end())
                settings.ports.push_back(port);
        }
    }
    return settings;
}

/// "Listening for OutGauge, EGO on UDP 4444, 20777 of 127.0.0.1, ::1."
QString announcement(const QStringList &names, std::vector<quint16> ports,
                     const std::vector<QHostAddress> &addresses)
{
    std::sort(ports.begin(), ports.end());
    ports.erase(std::unique(ports.begin(), ports.end()), ports.end());
    QStringList numbers;
    for (const quint16 port : ports)
        numbers += QString::number(port);
    QStringList places;
    for (const QHostAddress &address : addresses)
        places += address.toString();
    const QString comma = QStringLiteral(", ");
    return QStringLiteral("Listening for %1 on UDP %2 of %3.")
        .arg(names.join(comma), numbers.join(comma), places.join(comma));
}

std::unique_ptr<TelemetrySource> play(const TelemetryRequest &request, QStringList &problems)
{
    QString error;
    std::unique_ptr<DatagramReader> drive = openDrive(request.source, error);
    std::vector<std::unique_ptr<Feed>> feeds = feedsOf(request, problems);
    if (drive == nullptr)
        problems += error;
    if (drive == nullptr || feeds.empty())
        return nullptr;
    constexpr double LongestDrive = 1e8; // Seconds, well within what nanoseconds can count.
    const std::chrono::duration<double> startAt(std::min(request.startAt, LongestDrive));
    return std::make_unique<PlaybackSource>(
        std::move(drive), std::move(feeds),
        Playback::Settings{request.speed,
                           std::chrono::duration_cast<std::chrono::nanoseconds>(startAt),
                           request.loop});
}

} // namespace

QStringList TelemetryRequest::names()
{
    QStringList names;
    for (const TelemetrySourceChoice &choice : telemetrySourceChoices())
        names += choice.name;
    return names;
}

bool TelemetryRequest::isFile() const
{
    return !source.isEmpty() && !names().contains(source) &&
           (QFileInfo::exists(source) || QFileInfo(source).fileName() != source ||
            source.contains(QLatin1Char('.')));
}

bool TelemetryRequest::isDrive() const
{
    return isFile() && !isDescription(source);
}

std::unique_ptr<TelemetrySource> TelemetryRequest::makeSource(QStringList &problems) const
{
    if (source.isEmpty() || source == Demo)
        return std::make_unique<DemoSource>(DemoCars(DemoLap::UsualSeed, demoCars), startAt);
    if (isDrive())
        return play(*this, problems);
    return makeListener(problems);
}

std::unique_ptr<UdpListener> TelemetryRequest::makeListener(QStringList &problems,
                                                            UdpListener::Tap tap) const
{
    std::vector<std::unique_ptr<Feed>> feeds = feedsOf(*this, problems);
    if (feeds.empty())
        return nullptr;
    QStringList titles;
    for (const auto &feed : feeds)
        titles += feed->name();
    UdpListener::Settings settings = settingsOf(*this, feeds);
    settings.tap = std::move(tap);
    auto listener = std::make_unique<UdpListener>(std::move(feeds), settings);
    problems += listener->errors();
    if (!listener->isListening()) {
        problems += QStringLiteral("No port is open for telemetry.");
        return nullptr;
    }
    printLine(announcement(titles, listener->ports(), listener->addresses()));
    return listener;
}
