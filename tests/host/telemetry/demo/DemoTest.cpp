#include "render/TelemetryPublisher.h"
#include "telemetry/demo/DemoCars.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QVariant>
#include <QtTest/QtTest>

#include <cmath>
#include <limits>
#include <map>

namespace {

constexpr std::uint32_t Seed = 64;
constexpr double Frame = 1.0 / 30; // s

QByteArray bytesOf(const TelemetrySample &sample)
{
    return QByteArray(reinterpret_cast<const char *>(&sample.vehicle), sizeof sample.vehicle);
}

double metresPerSecond(const VehicleTelemetry &vehicle)
{
    return static_cast<double>(vehicle.groundSpeedKmh) / 3.6;
}

bool isKnown(const TelemetrySample &sample)
{
    return sample.vehicle.availabilityMask != 0;
}

} // namespace

class DemoTest : public QObject
{
    Q_OBJECT

    std::vector<TelemetrySample> race; // At 30 Hz, until it starts over.

private Q_SLOTS:
    void initTestCase()
    {
        const DemoLap demo(Seed);
        for (int i = 0; i < 30 * 3600; ++i) {
            const TelemetrySample sample = demo.sampleAt(i * Frame);
            if (isKnown(sample) && !race.empty() && !isKnown(race.back()))
                break;
            race.push_back(sample);
        }
    }

    void aMomentIsTheSameInAnyOrder()
    {
        const DemoLap demo(Seed);
        for (const double moment : {3599.0, 1800.0, 611.25, 41.5, 0.0})
            QCOMPARE(bytesOf(demo.sampleAt(moment)), bytesOf(DemoLap(Seed).sampleAt(moment)));
        QVERIFY(bytesOf(demo.sampleAt(41.5)) != bytesOf(DemoLap(Seed + 1).sampleAt(41.5)));
        for (const double odd : {-1.0, std::nan(""), std::numeric_limits<double>::infinity()})
            QCOMPARE(bytesOf(demo.sampleAt(odd)), bytesOf(demo.sampleAt(0)));
        QVERIFY(demo.sampleAt(1e300).vehicle.position >= 0);
    }

    void aRaceCountsItsLapsAndTimes()
    {
        int laps = 0;
        std::uint32_t best = 0;
        double driven = -60; // m; the grid is in front of the line.
        for (std::size_t i = 1; i < race.size() && isKnown(race[i]); ++i) {
            const VehicleTelemetry &before = race[i - 1].vehicle;
            const VehicleTelemetry &now = race[i].vehicle;
            driven += metresPerSecond(now) * Frame;
            QVERIFY(i >= 150 || now.groundSpeedKmh <= 0);
            QVERIFY(std::abs(now.position - before.position) <= 1);
            QVERIFY(now.position >= 1 && now.position <= 18);
            if (now.completedLaps == laps)
                continue;
            QCOMPARE(int(now.completedLaps), ++laps);
            // A lap is as long as its speed says, and its time is what the clock had shown.
            QVERIFY(std::abs(driven - laps * Circuit::Length) < 3 + laps);
            QVERIFY(std::abs(double(now.lastTimeMs) - before.currentTimeMs) <= 34);
            QVERIFY(now.lastTimeMs > 75'000 && now.lastTimeMs < 120'000);
            best = best == 0 ? now.lastTimeMs : std::min<std::uint32_t>(best, now.lastTimeMs);
            QCOMPARE(std::uint32_t(now.bestTimeMs), best);
            // At the line the delta is the lap's time less the best one's.
            const double gap = (double(before.currentTimeMs) - before.bestTimeMs) / 1000;
            QVERIFY(laps == 1 || std::abs(double(before.deltaTimeS) - gap) < 0.05);
        }
        QCOMPARE(laps, 36);
    }

    void theCarObeysPhysics()
    {
        // 1/min of the engine for each km/h of the wheels.
        constexpr double Ratios[] = {0, 81.6, 59.3, 46.6, 38.5, 32.9, 28.7};
        int stops = 0;
        double gained = 0; // m/s by surge, in a second
        for (std::size_t i = 30; i + 1 < race.size() && isKnown(race[i + 1]); ++i) {
            const VehicleTelemetry &before = race[i - 1].vehicle;
            const VehicleTelemetry &now = race[i].vehicle;
            const VehicleTelemetry &next = race[i + 1].vehicle;
            const double v = metresPerSecond(now);
            const auto sway = static_cast<double>(now.swayG);
            const QByteArray moment = QByteArray::number(double(i) * Frame) + " s";
            gained += static_cast<double>(now.surgeG) * Gravity * Frame;
            if (i % 30 == 0) {
                const double change = v - metresPerSecond(race[i - 30].vehicle);
                QVERIFY2(std::abs(gained - change) < 0.6, moment);
                gained = 0;
            }
            const double turned = std::remainder(double(next.headingDeg - before.headingDeg), 360);
            const double across = v * qDegreesToRadians(turned) / (2 * Frame) / Gravity;
            QVERIFY2(std::abs(sway - across) < 0.1, moment);
            QVERIFY2(std::abs(sway) < 0.3 || (now.steeringPercent > 0) == (sway > 0), moment);
            QVERIFY2(std::abs(now.surgeG) < 2.9F && std::abs(sway) < 2, moment);

            QVERIFY2(now.gear >= 0 && now.gear <= 6 && now.rpm < now.maxRpm, moment);
            const double ratio = now.rpm / std::max(double(now.speedKmh), 1.0);
            if (before.clutchPedalPercent + now.clutchPedalPercent + next.clutchPedalPercent == 0)
                QVERIFY2(std::abs(ratio / Ratios[now.gear] - 1) < 0.03, moment);
            QVERIFY2(now.gasPedalPercent < 60 || now.brakePedalPercent < 60, moment);
            const bool isLimited = (now.statusFlags & Status::SpeedLimiter) != 0;
            QVERIFY2(!isLimited || now.groundSpeedKmh < 62, moment);
            // Only the box fills the tank and changes the tyres.
            const bool isBetter = next.fuelLevelPercent > now.fuelLevelPercent ||
                                  next.tyreWearPercent[0] < now.tyreWearPercent[0];
            QVERIFY2(now.fuelLevelPercent > 0 && (!isBetter || v <= 0), moment);
            QVERIFY2(std::abs(now.tyreTempC[0] - 90) < 30, moment);
            QVERIFY2(std::abs(now.brakeTempC[0] - 450) < 310, moment);
            QVERIFY2(std::abs(int(now.tyrePressureKpa[0]) - 190) < 20, moment);
            stops += before.groundSpeedKmh > 0 && v <= 0 ? 1 : 0;
        }
        QCOMPARE(stops, 4); // The last is the end.
    }

    void everyPublishedNameMovesInARace()
    {
        std::map<QString, QVariant> first;
        std::set<QString> still;
        TelemetryPublisher publisher([&](const QString &name, const QVariant &value) {
            const auto [known, isNew] = first.emplace(name, value);
            if (isNew)
                still.insert(name);
            else if (known->second != value)
                still.erase(name);
        });
        for (std::size_t i = 0; i < race.size(); i += i < 9000 ? 1 : 11) {
            const TelemetrySample &sample = race[i];
            publisher.publish({sample.vehicle,
                               sample.limits,
                               sample.extended,
                               {},
                               {},
                               1,
                               false,
                               false,
                               sample.paused});
        }
        QCOMPARE(first.size(), std::size_t{129});
        // What the host sets and reports by itself.
        const QRegularExpression hosts(
            QStringLiteral("^dash_(tune.*|motionProfileName|useMph|showMarkers)$"));
        for (const QString &name : still)
            QVERIFY2(hosts.match(name).hasMatch(), qPrintable(name));
    }

    void documentedMomentsAreWhatTheGuidesSay()
    {
        const VehicleTelemetry start = DemoLap(Seed).sampleAt(180).vehicle;
        QCOMPARE(int(start.completedLaps), 2); // "in its third lap"
        const VehicleTelemetry preview = DemoLap(Seed).sampleAt(281.4).vehicle;
        QVERIFY(preview.groundSpeedKmh > 150 && preview.gasPedalPercent == 100);
        QVERIFY(preview.rpm > 6500 && preview.gear >= 4);
        QVERIFY(preview.bestTimeMs > 0 && preview.bestTimeMs < preview.lastTimeMs);
        QCOMPARE(std::uint32_t(preview.statusFlags), 0U);
    }

    void carsTakeTurnsAndGoOnWhereTheyWere()
    {
        DemoCars cars(Seed, 3);
        const DemoLap second(Seed + 1);
        QCOMPARE(bytesOf(cars.sampleAt(22)), bytesOf(second.sampleAt(2)));
        QCOMPARE(bytesOf(cars.sampleAt(84)), bytesOf(second.sampleAt(24)));
        const auto name = [&cars](double moment) { return cars.vehicleNameAt(moment); };
        QVERIFY(name(19.9) == name(60) && name(20) == name(81) && name(59) == name(119));
        QVERIFY(name(0) != name(20) && name(20) != name(40) && name(0) != name(40));
        DemoCars alone(Seed);
        QCOMPARE(bytesOf(alone.sampleAt(84)), bytesOf(DemoLap(Seed).sampleAt(84)));
        QCOMPARE(alone.vehicleNameAt(std::nan("")), alone.vehicleNameAt(1e300));
    }
};

QTEST_GUILESS_MAIN(DemoTest)
#include "DemoTest.moc"
