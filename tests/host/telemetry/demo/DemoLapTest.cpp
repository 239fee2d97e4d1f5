#include "Drive.h"

#include <QtTest/QtTest>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <map>
#include <vector>

namespace {

using Bytes =
    std::array<char, sizeof(VehicleTelemetry) + sizeof(DisplayLimits) + sizeof(ExtendedTelemetry)>;

Bytes bytesOf(const TelemetrySample &sample)
{
    Bytes bytes{};
    char *to = bytes.data();
    std::memcpy(to, &sample.vehicle, sizeof(VehicleTelemetry));
    std::memcpy(to + sizeof(VehicleTelemetry), &sample.limits, sizeof(DisplayLimits));
    std::memcpy(to + sizeof(VehicleTelemetry) + sizeof(DisplayLimits), &sample.extended,
                sizeof(ExtendedTelemetry));
    return bytes;
}

} // namespace

/// The demo as a source of telemetry: any moment, every field.
class DemoLapTest : public QObject
{
    Q_OBJECT

    std::vector<VehicleTelemetry> race; // One race at 10 Hz.

private Q_SLOTS:
    void initTestCase() { race = wholeRace(); }

    void theSameSeedGivesTheSameBytesInAnyOrderOfRequests()
    {
        const std::vector<double> moments{0, 3.2, 41.5, 41.6, 120, 299.99, 300, 611.25, 1800, 3599};
        std::vector<Bytes> forwards;
        forwards.reserve(moments.size());
        DemoLap first(7);
        for (double moment : moments)
            forwards.push_back(bytesOf(first.sampleAt(moment)));

        DemoLap second(7);
        for (std::size_t i = moments.size(); i-- > 0;)
            QVERIFY(bytesOf(second.sampleAt(moments[i])) == forwards[i]);
        for (std::size_t i = 0; i < moments.size(); ++i) {
            const std::size_t shuffled = (i * 7) % moments.size();
            QVERIFY(bytesOf(second.sampleAt(moments[shuffled])) == forwards[shuffled]);
            DemoLap alone(7);
            QVERIFY(bytesOf(alone.sampleAt(moments[i])) == forwards[i]);
        }
    }

    void anotherSeedGivesAnotherRace()
    {
        DemoLap one(1);
        DemoLap two(2);
        QVERIFY(bytesOf(one.sampleAt(200)) != bytesOf(two.sampleAt(200)));
    }

    void everyFrameAtSixtyHertzIsFurtherOn()
    {
        DemoLap lap(Seed);
        for (int i = 60 * 20; i < 60 * 40; ++i)
            QVERIFY(bytesOf(lap.sampleAt(i / 60.0)) != bytesOf(lap.sampleAt((i + 1) / 60.0)));
    }

    void everyFieldMoves()
    {
        std::map<QByteArray, std::pair<double, double>> ranges;
        const auto note = [&ranges](const char *name, double value) {
            const auto known = ranges.emplace(name, std::make_pair(value, value)).first;
            known->second.first = std::min(known->second.first, value);
            known->second.second = std::max(known->second.second, value);
        };
        for (const VehicleTelemetry &v : race) {
            note("speedKmh", double(v.speedKmh));
            note("groundSpeedKmh", double(v.groundSpeedKmh));
            note("steeringPercent", v.steeringPercent);
            note("gear", v.gear);
            note("rpm", v.rpm);
            note("gasPedalPercent", v.gasPedalPercent);
            note("brakePedalPercent", v.brakePedalPercent);
            note("clutchPedalPercent", v.clutchPedalPercent);
            note("fuelLevelPercent", v.fuelLevelPercent);
            note("position", v.position);
            note("currentTimeMs", v.currentTimeMs);
            note("lastTimeMs", v.lastTimeMs);
            note("bestTimeMs", v.bestTimeMs);
            note("completedLaps", v.completedLaps);
            note("absLevel", v.absLevel);
            note("tractionControlLevel", v.tractionControlLevel);
            note("heaveG", double(v.heaveG));
            note("swayG", double(v.swayG));
            note("surgeG", double(v.surgeG));
            note("brakeBiasPercent", v.brakeBiasPercent);
            note("deltaTimeS", double(v.deltaTimeS));
            for (int wheel = 0; wheel < 4; ++wheel) {
                const QByteArray corner = QByteArray::number(wheel);
                note(("tyreTempC" + corner).constData(), v.tyreTempC[wheel]);
                note(("brakeTempC" + corner).constData(), v.brakeTempC[wheel]);
                note(("tyreWearPercent" + corner).constData(), v.tyreWearPercent[wheel]);
                note(("tyrePressureKpa" + corner).constData(), v.tyrePressureKpa[wheel]);
            }
            note("altitudeAboveGroundM", double(v.altitudeAboveGroundM));
            note("altitudeAboveSeaLevelM", double(v.altitudeAboveSeaLevelM));
            note("turnCoordinatorBall", double(v.turnCoordinatorBall));
            note("pitchDeg", double(v.pitchDeg));
            note("rollDeg", double(v.rollDeg));
            note("headingDeg", double(v.headingDeg));
            note("engineLoadPercent", v.engineLoadPercent);
            for (int bit : {0, 1, 3, 4, 5, 8, 12, 14})
                note(("statusFlags bit " + QByteArray::number(bit)).constData(),
                     (v.statusFlags >> bit) & 1U);
            QCOMPARE(v.statusFlags & ~0x517BU, 0U);
        }
        QCOMPARE(ranges.size(), std::size_t{52});
        for (const auto &[name, range] : ranges)
            QVERIFY2(range.second > range.first, name.constData());
        QVERIFY(ranges["headingDeg"].second - ranges["headingDeg"].first > 350);
        QVERIFY(ranges["speedKmh"].second > 240);
    }

    void valuesStayPlausibleForAnHour_data()
    {
        QTest::addColumn<quint32>("seed");
        for (quint32 seed : {Seed, 2U, 77U, 4'294'967'295U})
            QTest::addRow("seed %u", seed) << seed;
    }

    void valuesStayPlausibleForAnHour()
    {
        QFETCH(quint32, seed);
        DemoLap lap(seed);
        for (int i = 0; i < 36'000; ++i) {
            const TelemetrySample sample = lap.sampleAt(i / 10.0);
            const VehicleTelemetry &v = sample.vehicle;
            const auto within = [](double value, double least, double most) {
                return value >= least && value <= most;
            };
            QVERIFY(!sample.paused);
            QVERIFY(within(double(v.speedKmh), 0, 290));
            QVERIFY(within(double(v.groundSpeedKmh), 0, 290));
            QVERIFY(within(v.steeringPercent, -60, 60));
            QVERIFY(within(v.gear, 0, 6));
            QVERIFY(within(v.rpm, 900, v.maxRpm + 100));
            QVERIFY(within(v.gasPedalPercent, 0, 100));
            QVERIFY(within(v.brakePedalPercent, 0, 100));
            QVERIFY(within(v.clutchPedalPercent, 0, 100));
            QVERIFY(within(v.engineLoadPercent, 0, 100));
            QVERIFY(within(v.fuelLevelPercent, 1, 100));
            QVERIFY(within(v.position, 1, 18));
            QVERIFY(within(double(v.heaveG), -0.8, 0.8));
            QVERIFY(within(double(v.swayG), -2.2, 2.2));
            QVERIFY(within(double(v.surgeG), -2.8, 1.3));
            QVERIFY(within(v.brakeBiasPercent, 50, 60));
            QVERIFY(within(double(v.deltaTimeS), -20, 60));
            QVERIFY(within(double(v.altitudeAboveGroundM), 0.03, 0.12));
            QVERIFY(within(double(v.altitudeAboveSeaLevelM), 190, 230));
            QVERIFY(within(double(v.turnCoordinatorBall), -1, 1));
            QVERIFY(within(double(v.pitchDeg), -8, 8));
            QVERIFY(within(double(v.rollDeg), -6, 6));
            QVERIFY(within(double(v.headingDeg), 0, 360));
            for (int wheel = 0; wheel < 4; ++wheel) {
                QVERIFY(within(v.tyreTempC[wheel], 55, 120));
                QVERIFY(within(v.brakeTempC[wheel], 80, 780));
                QVERIFY(within(v.tyreWearPercent[wheel], 0, 30));
                QVERIFY(within(v.tyrePressureKpa[wheel], 160, 220));
            }
            QVERIFY(std::all_of(std::begin(v.reserved8), std::end(v.reserved8),
                                [](std::uint8_t byte) { return byte == 0; }));
        }
    }

    void theMaskNamesEveryFieldThatHasABit()
    {
        QCOMPARE(quint64(race.front().availabilityMask), Q_UINT64_C(0x9C7A7BF000));
    }

    void oddMomentsAreAnswered()
    {
        DemoLap lap(Seed, 2);
        const auto start = bytesOf(lap.sampleAt(0));
        QVERIFY(bytesOf(lap.sampleAt(-1)) == start);
        QVERIFY(bytesOf(lap.sampleAt(std::numeric_limits<double>::quiet_NaN())) == start);
        QVERIFY(bytesOf(lap.sampleAt(std::numeric_limits<double>::infinity())) == start);
        QVERIFY(bytesOf(lap.sampleAt(-std::numeric_limits<double>::infinity())) == start);
        QCOMPARE(read(lap.sampleAt(std::numeric_limits<double>::max()).vehicle.numberOfLaps), 2);
        QCOMPARE(read(lap.sampleAt(1e12).vehicle.numberOfLaps), 2);
        QCOMPARE(read(DemoLap(Seed, 0).sampleAt(10).vehicle.numberOfLaps), 1);
        QCOMPARE(read(DemoLap(Seed, 4'000'000'000).sampleAt(10).vehicle.numberOfLaps),
                 int(DemoLap::LongestRace));
        QVERIFY(!lap.vehicleNameAt(1).isEmpty());
        QCOMPARE(lap.vehicleNameAt(-5), lap.vehicleNameAt(1e9));
    }
};

QTEST_GUILESS_MAIN(DemoLapTest)
#include "DemoLapTest.moc"
