#include "FeedRig.h"
#include "render/TelemetryPublisher.h"
#include "telemetry/demo/DemoSource.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QVariant>
#include <QtTest/QtTest>

#include <cmath>
#include <limits>
#include <map>

namespace {

constexpr std::uint32_t Seed = 64;
constexpr double Frame = 1.0 / 30; // s

bool isKnown(const TelemetrySample &sample)
{
    return sample.vehicle.availabilityMask != 0;
}

} // namespace

class DemoTest : public QObject
{
    Q_OBJECT

    std::vector<TelemetrySample> race; // At 30 Hz, until nothing is known.

private Q_SLOTS:
    void initTestCase()
    {
        const DemoLap demo(Seed);
        do
            race.push_back(demo.sampleAt(double(race.size()) * Frame));
        while (isKnown(race.back()) && race.size() < 108'000);
        // Five seconds later it starts over.
        QVERIFY(!isKnown(race.back()) && isKnown(demo.sampleAt(double(race.size()) * Frame + 5)));
    }

    void aMomentIsTheSameInAnyOrder()
    {
        const DemoLap demo(Seed);
        for (const double moment : {3599.0, 1800.0, 611.25, 41.5, 0.0})
            QCOMPARE(bytesOf(demo.sampleAt(moment).vehicle),
                     bytesOf(DemoLap(Seed).sampleAt(moment).vehicle));
        QVERIFY(bytesOf(demo.sampleAt(41.5).vehicle) !=
                bytesOf(DemoLap(Seed + 1).sampleAt(41.5).vehicle));
        for (const double odd : {-1.0, std::nan(""), std::numeric_limits<double>::infinity()})
            QCOMPARE(bytesOf(demo.sampleAt(odd).vehicle), bytesOf(demo.sampleAt(0).vehicle));
    }

    void aRaceCountsItsLapsAndTimes()
    {
        QCOMPARE(int(race.front().vehicle.position), 9);
        int laps = 0;
        std::uint32_t best = 0;
        double driven = -60; // m; the grid is in front of the line.
        double told = 5000;  // ms; the lights go out after 5 s.
        for (std::size_t i = 1; isKnown(race[i]); ++i) {
            const VehicleTelemetry &before = race[i - 1].vehicle;
            const VehicleTelemetry &now = race[i].vehicle;
            driven += double(now.groundSpeedKmh) / 3.6 * Frame;
            QVERIFY(std::abs(now.position - before.position) <= 1 && now.position >= 1);
            if (now.completedLaps == laps)
                continue;
            QCOMPARE(int(now.completedLaps), ++laps);
            told += now.lastTimeMs; // The laps' times add up to the race's.
            QVERIFY(std::abs(double(i) * Frame * 1000 - told - now.currentTimeMs) < 2 + laps);
            // A lap is as long as its speed says, and its time is what the clock had shown.
            QVERIFY(std::abs(driven - laps * Circuit::Length) < 3 + laps);
            QVERIFY(std::abs(double(now.lastTimeMs) - before.currentTimeMs) <= 34);
            QVERIFY(now.lastTimeMs > 75'000 && now.lastTimeMs < 120'000);
            const auto last = std::uint32_t(now.lastTimeMs); // The record is packed.
            best = best == 0 ? last : std::min(best, last);
            QCOMPARE(std::uint32_t(now.bestTimeMs), best);
            // At the line the delta is the lap's time less the best one's.
            const double gap = (double(before.currentTimeMs) - before.bestTimeMs) / 1000;
            QVERIFY(laps == 1 || std::abs(double(before.deltaTimeS) - gap) < 0.05);
        }
        QCOMPARE(laps, 36);
    }

    void theCarObeysPhysics()
    {
        int stops = 0;
        double expected = 0; // m/s, by the surge of a second
        for (std::size_t i = 30; isKnown(race[i + 1]); ++i) {
            const VehicleTelemetry &before = race[i - 1].vehicle;
            const VehicleTelemetry &now = race[i].vehicle;
            const VehicleTelemetry &next = race[i + 1].vehicle;
            const double v = double(now.groundSpeedKmh) / 3.6; // m/s
            const auto sway = double(now.swayG);
            const QByteArray moment = QByteArray::number(double(i) * Frame) + " s";
            expected += double(now.surgeG) * Gravity * Frame;
            if (i % 30 == 0) {
                QVERIFY2(std::abs(expected - v) < 0.6, moment);
                expected = v;
            }
            const double turned = std::remainder(double(next.headingDeg - before.headingDeg), 360);
            const double across = v * qDegreesToRadians(turned) / (2 * Frame) / Gravity;
            QVERIFY2(std::abs(sway - across) < 0.1, moment);
            QVERIFY2(std::abs(sway) < 0.3 || (now.steeringPercent > 0) == (sway > 0), moment);
            const auto wheels = race[i].extended.wheels;
            const std::size_t outer = sway > 0 ? 0 : 1;
            QVERIFY2(std::abs(sway) < 0.3 || wheels[outer].wheelFlagA == 0, moment);
            QVERIFY2(now.gear >= 0 && now.gear <= 6 && now.rpm < now.maxRpm, moment);
            // Only the box fills the tank and changes the tyres.
            const bool isBetter = next.fuelLevelPercent > now.fuelLevelPercent ||
                                  next.tyreWearPercent[0] < now.tyreWearPercent[0];
            QVERIFY2(now.fuelLevelPercent > 0 && (!isBetter || v <= 0), moment);
            stops += before.groundSpeedKmh > 0 && v <= 0 ? 1 : 0;
        }
        QCOMPARE(stops, 4); // The last is the end.
    }

    void everyPublishedNameMovesInARace()
    {
        // What the host sets and reports by itself, and what is the same as long as a game is on.
        const QString hosts = QStringLiteral("tune.*|motionProfileName|useMph|showMarkers");
        const QString lasting =
            QStringLiteral(".*_Available|maxRpm|numberOfLaps.*|.*Threshold_Percent|") + hosts;
        std::map<QString, QVariantList> values;
        TelemetryPublisher publisher([&](const QString &name, const QVariant &value) {
            QVariantList &known = values[name];
            if (known.size() < 2 && !known.contains(value))
                known.append(value);
        });
        const auto verifyStill = [&values](const QString &names) {
            const QRegularExpression expected(QStringLiteral("^dash_(%1)$").arg(names));
            for (const auto &[name, known] : values)
                QVERIFY2(known.size() > 1 || expected.match(name).hasMatch(), qPrintable(name));
        };
        for (const TelemetrySample &sample : race) {
            if (!isKnown(sample))
                verifyStill(lasting);
            Publication publication{sample.vehicle, sample.limits, sample.extended, {}, {}};
            publication.paused = sample.paused;
            publisher.publish(publication);
        }
        QCOMPARE(values.size(), std::size_t{129});
        verifyStill(hosts);
    }

    void documentedMomentsAreWhatTheGuidesSay()
    {
        FakeSink sink;
        auto source = std::make_unique<DemoSource>(DemoCars(Seed), 180);
        source->start(sink);
        QTRY_VERIFY_WITH_TIMEOUT(sink.updates > 0, 10'000);
        source.reset();
        QCOMPARE(int(sink.last.vehicle.completedLaps), 2); // The host starts in the third lap.
        const VehicleTelemetry preview = DemoLap(Seed).sampleAt(281.4).vehicle;
        QVERIFY(preview.fuelLevelPercent < race.front().vehicle.fuelLevelPercent);
        QVERIFY(preview.rpm > 6500 && preview.gear >= 4 && preview.gasPedalPercent == 100);
        QVERIFY(preview.bestTimeMs > 0 && preview.bestTimeMs < preview.lastTimeMs);
    }

    void carsTakeTurnsAndGoOnWhereTheyWere()
    {
        const DemoCars cars(Seed, 3);
        for (const auto &[moment, own] : {std::pair(22, 2), std::pair(84, 24)})
            QCOMPARE(bytesOf(cars.sampleAt(moment).vehicle),
                     bytesOf(DemoLap(Seed + 1).sampleAt(own).vehicle));
        const auto name = [&cars](double moment) { return cars.vehicleNameAt(moment); };
        QVERIFY(name(19.9) == name(60) && name(20) == name(81) && name(59) == name(119));
        QVERIFY(name(0) != name(20) && name(20) != name(40) && name(0) != name(40));
        QCOMPARE(bytesOf(DemoCars(Seed).sampleAt(84).vehicle),
                 bytesOf(DemoLap(Seed).sampleAt(84).vehicle));
        QVERIFY(!name(std::nan("")).isEmpty() && !name(1e300).isEmpty());
    }
};

QTEST_GUILESS_MAIN(DemoTest)
#include "DemoTest.moc"
