#include "telemetry/feeds/DataOutFeed.h"
#include "telemetry/feeds/EgoFeed.h"
#include "telemetry/feeds/GameSelector.h"
#include "telemetry/feeds/OutGaugeFeed.h"
#include "telemetry/feeds/RevLimitStore.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace {

/// Whether a sample holds only what dashboards may be given.
bool isSound(const VehicleTelemetry &vehicle)
{
    bool sound = true;
    for (const float real :
         {+vehicle.speedKmh, +vehicle.groundSpeedKmh, +vehicle.heaveG, +vehicle.swayG,
          +vehicle.surgeG, +vehicle.pitchDeg, +vehicle.rollDeg, +vehicle.headingDeg})
        sound = sound && std::abs(real) <= 20'000; // Which no NaN is.
    for (int corner = 0; corner < 4; ++corner) {
        sound = sound && vehicle.tyreWearPercent[corner] <= 100 &&
                std::abs(vehicle.tyreTempC[corner]) <= 5000 &&
                std::abs(vehicle.brakeTempC[corner]) <= 5000 &&
                vehicle.tyrePressureKpa[corner] <= 10'000;
    }
    return sound && vehicle.gasPedalPercent <= 100 && vehicle.brakePedalPercent <= 100 &&
           vehicle.clutchPedalPercent <= 100 && vehicle.fuelLevelPercent <= 100 &&
           std::abs(vehicle.steeringPercent) <= 100 && vehicle.headingDeg >= 0 &&
           vehicle.headingDeg < 360 && vehicle.gear >= -1 && vehicle.gear <= 40 &&
           vehicle.rpm <= 100'000 && vehicle.maxRpm <= 100'000 && vehicle.position >= 0 &&
           vehicle.completedLaps >= 0 && vehicle.numberOfLaps >= 0;
}

} // namespace

// What drivers are told would fill the disk with gigabytes, and take most of the time.
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
        const Datagram::Sender sender{QHostAddress(QHostAddress::LocalHost), data[0],
                                      quint16(data[0] & 1)};
        now += data[1] * std::chrono::milliseconds(20);
        const auto length = std::min<std::size_t>(data[2] + 256U * data[3], size - Header);
        games.checkSilence(now);
        games.offer({reinterpret_cast<const char *>(data) + Header, static_cast<int>(length)},
                    sender, now);
        const auto sample = games.takeNewest();
        if (sample && !isSound(sample->sample.vehicle))
            std::abort();
        data += Header + length;
        size -= Header + length;
    }
    return 0;
}
