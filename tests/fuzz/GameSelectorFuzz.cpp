#include "Checks.h"

#include "telemetry/feeds/DataOutFeed.h"
#include "telemetry/feeds/EgoFeed.h"
#include "telemetry/feeds/GameSelector.h"
#include "telemetry/feeds/OutGaugeFeed.h"
#include "telemetry/feeds/RevLimitStore.h"

#include <QtCore/QtGlobal>

#include <algorithm>

// What the driver is told would fill the disk with gigabytes, and take most of the time.
extern "C" int LLVMFuzzerInitialize(int * /*argc*/, char *** /*argv*/)
{
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    return 0;
}

// The input is a sequence of datagrams: the sender, the time since the last one in units of 20 ms,
// the length in two bytes, the datagram.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    std::vector<std::unique_ptr<Feed>> feeds;
    // A place where no file can be made.
    feeds.push_back(std::make_unique<OutGaugeFeed>(
        std::make_unique<RevLimitStore>(QStringLiteral("/dev/null/cars.ini"))));
    feeds.push_back(std::make_unique<DataOutFeed>());
    feeds.push_back(std::make_unique<EgoFeed>());
    GameSelector games(std::move(feeds));
    GameSelector::TimePoint now{std::chrono::hours(1)};

    constexpr std::size_t Header = 4;
    while (size >= Header) {
        const quint8 from = data[0];
        now += data[1] * std::chrono::milliseconds(20);
        const auto length = std::min<std::size_t>(data[2] + 256U * data[3], size - Header);
        const QByteArray datagram(reinterpret_cast<const char *>(data) + Header,
                                  static_cast<int>(length));
        data += Header + length;
        size -= Header + length;

        games.checkSilence(now);
        games.offer(datagram, {QHostAddress(QHostAddress::LocalHost), from, quint16(from & 1)},
                    now);
        if (const auto sample = games.takeNewest())
            checkSample(sample->sample);
    }
    return 0;
}
