#include "TelemetryFactory.h"

#include "options/Options.h"
#include "system/Terminal.h"
#include "telemetry/demo/DemoCars.h"
#include "telemetry/demo/PacedSource.h"
#include "telemetry/feeds/described/DescribedFeed.h"
#include "telemetry/feeds/KnownFeeds.h"
#include "telemetry/recordings/DriveFile.h"
#include "telemetry/recordings/PlaybackSource.h"

#include <QtCore/QFileInfo>

#include <algorithm>
#include <chrono>
#include <optional>
#include <utility>

namespace {

constexpr std::uint32_t DemoSeed = 64;

const QLatin1String Demo("demo");
const QLatin1String Auto("auto");

bool isDescription(const QString &path)
{
    return path.endsWith(QLatin1String(".json"), Qt::CaseInsensitive);
}

/// The feeds that the options name; none, with the reasons in `problems`, if a description is
/// wrong.
std::vector<std::unique_ptr<Feed>> feedsOf(const Options &options, QStringList &problems)
{
    std::vector<std::unique_ptr<Feed>> feeds;
    QStringList descriptions = options.feedFiles;
    if (isDescription(options.telemetry))
        descriptions += options.telemetry;
    // Described feeds come first: who describes one knows better than a guess by length.
    for (const QString &path : qAsConst(descriptions)) {
        std::optional<FeedDescription> description = FeedDescription::load(path, problems);
        if (!description)
            return {};
        feeds.push_back(std::make_unique<DescribedFeed>(std::move(*description)));
    }
    if (isDescription(options.telemetry))
        return feeds;
    const bool isOne = knownFeedOptions().contains(options.telemetry);
    for (auto &known : makeFeeds(isOne ? options.telemetry : QString()))
        feeds.push_back(std::move(known));
    return feeds;
}

UdpListener::Wishes wishesOf(const Options &options,
                             const std::vector<std::unique_ptr<Feed>> &feeds)
{
    UdpListener::Wishes wishes;
    if (options.listenAddress.isNull())
        wishes.addresses = {QHostAddress(QHostAddress::LocalHost),
                            QHostAddress(QHostAddress::LocalHostIPv6)};
    else
        wishes.addresses = {options.listenAddress};
    if (options.port != 0) {
        wishes.ports = {options.port};
        return wishes;
    }
    for (const auto &feed : feeds) {
        for (const quint16 port : feed->usualPorts()) {
            // Two feeds may share a port, which opens but once.
            if (std::find(wishes.ports.begin(), wishes.ports.end(), port) == wishes.ports.end())
                wishes.ports.push_back(port);
        }
    }
    return wishes;
}

/// "Listening for OutGauge, EGO on UDP ports 4444, 20777 of 127.0.0.1, ::1."
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
    return QStringLiteral("Listening for %1 on UDP %2 %3 of %4.")
        .arg(names.join(comma),
             ports.size() == 1 ? QStringLiteral("port") : QStringLiteral("ports"),
             numbers.join(comma), places.join(comma));
}

std::unique_ptr<TelemetrySource> play(const Options &options, QStringList &problems)
{
    QString error;
    std::unique_ptr<DatagramReader> drive = openDrive(options.telemetry, error);
    std::vector<std::unique_ptr<Feed>> feeds = feedsOf(options, problems);
    if (drive == nullptr)
        problems += error;
    if (drive == nullptr || feeds.empty())
        return nullptr;
    constexpr double LongestDrive = 1e8; // Seconds; beyond what nanoseconds can count is far more.
    const std::chrono::duration<double> startAt(std::min(options.startAt, LongestDrive));
    return std::make_unique<PlaybackSource>(
        std::move(drive), std::move(feeds),
        Playback::Settings{options.speed,
                           std::chrono::duration_cast<std::chrono::nanoseconds>(startAt),
                           options.loop});
}

} // namespace

QStringList telemetryNames()
{
    return QStringList{Demo, Auto} + knownFeedOptions();
}

bool isTelemetryFile(const QString &telemetry)
{
    return !telemetryNames().contains(telemetry) &&
           (QFileInfo::exists(telemetry) || QFileInfo(telemetry).fileName() != telemetry ||
            telemetry.contains(QLatin1Char('.')));
}

bool isDriveFile(const QString &telemetry)
{
    return isTelemetryFile(telemetry) && !isDescription(telemetry);
}

std::unique_ptr<TelemetrySource> makeTelemetry(const Options &options, QStringList &problems)
{
    if (options.telemetry.isEmpty() || options.telemetry == Demo) {
        return std::make_unique<PacedSource>(std::make_unique<DemoCars>(DemoSeed, options.demoCars),
                                             options.startAt);
    }
    if (isDriveFile(options.telemetry))
        return play(options, problems);
    return makeListener(options, problems);
}

std::unique_ptr<UdpListener> makeListener(const Options &options, QStringList &problems,
                                          UdpListener::Tap tap)
{
    std::vector<std::unique_ptr<Feed>> feeds = feedsOf(options, problems);
    if (feeds.empty())
        return nullptr;
    QStringList names;
    for (const auto &feed : feeds)
        names += feed->name();
    UdpListener::Wishes wishes = wishesOf(options, feeds);
    wishes.tap = std::move(tap);
    auto listener = std::make_unique<UdpListener>(std::move(feeds), wishes);
    problems += listener->errors();
    if (!listener->isListening()) {
        problems += QStringLiteral("No port is open for telemetry.");
        return nullptr;
    }
    printLine(announcement(names, listener->ports(), listener->addresses()));
    return listener;
}
