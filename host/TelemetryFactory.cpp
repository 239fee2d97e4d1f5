#include "TelemetryFactory.h"

#include "Options.h"
#include "Terminal.h"
#include "telemetry/DemoCars.h"
#include "telemetry/PacedSource.h"
#include "telemetry/feeds/DataOutFeed.h"
#include "telemetry/feeds/EgoFeed.h"
#include "telemetry/feeds/OutGaugeFeed.h"
#include "telemetry/feeds/RevLimitStore.h"
#include "telemetry/feeds/UdpListener.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace {

constexpr std::uint32_t DemoSeed = 64;

const QLatin1String Demo("demo");
const QLatin1String Auto("auto");

struct KnownFeed
{
    QString option;
    std::function<std::unique_ptr<Feed>()> make;
};

/// Every feed that the host understands, in the order in which they are tried.
const std::vector<KnownFeed> &knownFeeds()
{
    static const std::vector<KnownFeed> feeds{
        {QStringLiteral("outgauge"),
         [] {
             return std::make_unique<OutGaugeFeed>(
                 std::make_unique<RevLimitStore>(RevLimitStore::usualPath()));
         }},
        {QStringLiteral("data-out"), [] { return std::make_unique<DataOutFeed>(); }},
        {QStringLiteral("ego"), [] { return std::make_unique<EgoFeed>(); }},
    };
    return feeds;
}

std::vector<std::unique_ptr<Feed>> makeFeeds(const QString &option)
{
    std::vector<std::unique_ptr<Feed>> feeds;
    for (const KnownFeed &known : knownFeeds()) {
        if (option == Auto || option == known.option)
            feeds.push_back(known.make());
    }
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
        for (const quint16 port : feed->usualPorts())
            wishes.ports.push_back(port);
    }
    return wishes;
}

/// "Listening for OutGauge and EGO on UDP ports 4444, 30000, 20777."
QString announcement(const QStringList &names, std::vector<quint16> ports)
{
    std::sort(ports.begin(), ports.end());
    ports.erase(std::unique(ports.begin(), ports.end()), ports.end());
    QStringList numbers;
    for (const quint16 port : ports)
        numbers += QString::number(port);
    return QStringLiteral("Listening for %1 on UDP %2 %3.")
        .arg(names.join(QStringLiteral(", ")),
             ports.size() == 1 ? QStringLiteral("port") : QStringLiteral("ports"),
             numbers.join(QStringLiteral(", ")));
}

std::unique_ptr<TelemetrySource> listen(const Options &options)
{
    std::vector<std::unique_ptr<Feed>> feeds = makeFeeds(options.telemetry);
    QStringList names;
    for (const auto &feed : feeds)
        names += feed->name();
    const UdpListener::Wishes wishes = wishesOf(options, feeds);
    auto listener = std::make_unique<UdpListener>(std::move(feeds), wishes);
    for (const QString &error : listener->errors())
        printError(error);
    if (!listener->isListening()) {
        printError(QStringLiteral("No port is open for telemetry."));
        return nullptr;
    }
    printLine(announcement(names, listener->ports()));
    return listener;
}

} // namespace

QStringList telemetryNames()
{
    QStringList names{Demo, Auto};
    for (const KnownFeed &known : knownFeeds())
        names += known.option;
    return names;
}

std::unique_ptr<TelemetrySource> makeTelemetry(const Options &options)
{
    if (options.telemetry == Demo) {
        return std::make_unique<PacedSource>(std::make_unique<DemoCars>(DemoSeed, options.demoCars),
                                             options.startAt);
    }
    return listen(options);
}
