#include "TelemetryFactory.h"

#include "Options.h"
#include "Terminal.h"
#include "telemetry/DemoCars.h"
#include "telemetry/PacedSource.h"
#include "telemetry/feeds/KnownFeeds.h"
#include "telemetry/feeds/UdpListener.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::uint32_t DemoSeed = 64;

const QLatin1String Demo("demo");
const QLatin1String Auto("auto");

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

std::unique_ptr<TelemetrySource> listen(const Options &options)
{
    std::vector<std::unique_ptr<Feed>> feeds =
        makeFeeds(options.telemetry == Auto ? QString() : options.telemetry);
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
    printLine(announcement(names, listener->ports(), wishes.addresses));
    return listener;
}

} // namespace

QStringList telemetryNames()
{
    return QStringList{Demo, Auto} + knownFeedOptions();
}

std::unique_ptr<TelemetrySource> makeTelemetry(const Options &options)
{
    if (options.telemetry == Demo) {
        return std::make_unique<PacedSource>(std::make_unique<DemoCars>(DemoSeed, options.demoCars),
                                             options.startAt);
    }
    return listen(options);
}
