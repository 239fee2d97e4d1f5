#include "RecordFields.h"
#include "Senders.h"

#include "telemetry/feeds/DataOut.h"
#include "telemetry/feeds/EgoExtradata.h"
#include "telemetry/feeds/OutGauge.h"

#include <QtCore/QRandomGenerator>
#include <QtTest/QtTest>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

using Sample = std::optional<TelemetrySample>;
using Decode = Sample (*)(const QByteArray &);

template<typename Reading> Sample sampleOf(const std::optional<Reading> &reading)
{
    return reading ? std::optional(reading->sample) : std::nullopt;
}

const Decode Decoders[] = {
    [](const QByteArray &bytes) { return sampleOf(OutGauge::decode(bytes)); },
    [](const QByteArray &bytes) { return sampleOf(DataOut::decode(bytes)); },
    [](const QByteArray &bytes) { return sampleOf(EgoExtradata::decode(bytes)); },
};

/// One datagram of each format, with the decoder that reads it and where its real numbers stand.
struct Format
{
    const char *name;
    QByteArray datagram;
    int decoder;
    std::vector<std::pair<int, int>> reals; ///< From the first offset to before the second.
};

std::vector<Format> formats()
{
    return {
        {"OutGauge", Senders::outGauge(), 0, {{12, 40}, {48, 60}}},
        {"OutGauge with an id", Senders::outGauge("XFG", 96), 0, {{12, 40}, {48, 60}}},
        {"Data Out, sled", Senders::dataOut(232), 1, {{8, 116}, {132, 212}}},
        {"Data Out, dash", Senders::dataOut(311), 1, {{8, 116}, {132, 212}, {232, 300}}},
        {"Data Out, Horizon", Senders::dataOut(324), 1, {{8, 116}, {132, 212}, {244, 312}}},
        {"Data Out, 2023",
         Senders::dataOut(331),
         1,
         {{8, 116}, {132, 212}, {232, 300}, {311, 327}}},
        {"EGO, 3", Senders::ego(66), 2, {{0, 264}}},
        {"EGO, 1", Senders::ego(38), 2, {{0, 152}}},
        {"EGO, Formula", Senders::ego(70), 2, {{0, 280}}},
    };
}

/// The wrong numbers among what came of a damaged datagram: anything that is neither what the whole
/// one told nor marked as missing.
QStringList wrongNumbers(const TelemetrySample &damaged, const TelemetrySample &whole)
{
    QStringList wrong;
    const std::vector<RecordField> fields = fieldsOf(damaged);
    const std::vector<RecordField> truth = fieldsOf(whole);
    for (std::size_t i = 0; i < fields.size(); ++i) {
        const bool isMarked =
            fields[i].bit != 0 && (damaged.vehicle.availabilityMask & fields[i].bit) == 0;
        for (std::size_t k = 0; k < fields[i].values.size(); ++k) {
            const double value = fields[i].values[k];
            const bool isMissing = value == 0 && (isMarked || fields[i].bit == 0);
            if (!isMissing && (isMarked || !qFuzzyCompare(1 + value, 1 + truth[i].values[k])))
                wrong += QString::fromLatin1(fields[i].name);
        }
    }
    return wrong;
}

} // namespace

class FeedDecodersTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void outGaugeSpeaksOfLightsThatTheCarHas()
    {
        const auto reading = OutGauge::decode(Senders::outGauge());
        QVERIFY(reading.has_value());
        const VehicleTelemetry &vehicle = reading->sample.vehicle;
        QCOMPARE(reading->car, QByteArray("XFG"));
        QCOMPARE(+vehicle.gear, 3);
        QCOMPARE(float(vehicle.speedKmh), 180.0F);
        QCOMPARE(uint(vehicle.rpm), 6543U);
        QCOMPARE(+vehicle.fuelLevelPercent, 63);
        QCOMPARE(+vehicle.gasPedalPercent, 75);
        QCOMPARE(+vehicle.brakePedalPercent, 25);
        QCOMPARE(+vehicle.clutchPedalPercent, 50);
        QCOMPARE(uint(vehicle.statusFlags), uint(Status::SpeedLimiter | Status::AbsInAction));
        QVERIFY(reading->hasShiftLight);
        QVERIFY(!reading->shiftLight);

        // Lights that shine without being there are no lights.
        const auto dark =
            OutGauge::decode(Senders::outGauge().put<quint32>(40, 0).put<quint32>(44, 0xffffffff));
        QCOMPARE(uint(dark->sample.vehicle.statusFlags), 0U);
        QCOMPARE(dark->sample.vehicle.availabilityMask | 0,
                 quint64(Available::Pedals | Available::FuelLevel));
        QVERIFY(!dark->shiftLight);
    }

    void gearsAreTold_data()
    {
        QTest::addColumn<QByteArray>("datagram");
        QTest::addColumn<int>("decoder");
        QTest::addColumn<int>("gear");
        const auto outGauge = [](int code) {
            return QByteArray(Senders::outGauge().put<quint8>(10, quint8(code)));
        };
        const auto dataOut = [](int code) {
            return QByteArray(Senders::dataOut().put<quint8>(232 + 75, quint8(code)));
        };
        const auto ego = [](float code) { return QByteArray(Senders::ego().reals(132, code)); };
        QTest::newRow("OutGauge reverse") << outGauge(0) << 0 << -1;
        QTest::newRow("OutGauge neutral") << outGauge(1) << 0 << 0;
        QTest::newRow("OutGauge eighth") << outGauge(9) << 0 << 8;
        QTest::newRow("Data Out reverse") << dataOut(0) << 1 << -1;
        QTest::newRow("Data Out first") << dataOut(1) << 1 << 1;
        QTest::newRow("Data Out tenth") << dataOut(10) << 1 << 10;
        QTest::newRow("Data Out shifting") << dataOut(11) << 1 << 0;
        QTest::newRow("EGO neutral") << ego(0) << 2 << 0;
        QTest::newRow("EGO reverse") << ego(10) << 2 << -1;
        QTest::newRow("EGO reverse, other games") << ego(-1) << 2 << -1;
        QTest::newRow("EGO eighth") << ego(8) << 2 << 8;
    }

    void gearsAreTold()
    {
        QFETCH(QByteArray, datagram);
        QFETCH(int, decoder);
        QTEST(int(Decoders[decoder](datagram)->vehicle.gear), "gear");
    }

    void dataOutIsConverted_data()
    {
        QTest::addColumn<int>("length");
        for (const int length : {232, 311, 324, 331})
            QTest::newRow(qPrintable(QString::number(length))) << length;
    }

    void dataOutIsConverted()
    {
        QFETCH(int, length);
        const auto reading = DataOut::decode(Senders::dataOut(length));
        QVERIFY(reading.has_value());
        const VehicleTelemetry &vehicle = reading->sample.vehicle;
        const bool hasDash = length > 232;
        QCOMPARE(reading->car, 1234);
        QVERIFY(!reading->sample.paused);
        QCOMPARE(uint(vehicle.rpm), 7250U);
        QCOMPARE(uint(vehicle.maxRpm), 8000U);
        QCOMPARE(float(vehicle.swayG), 1.0F);
        QCOMPARE(float(vehicle.heaveG), 0.5F);
        QCOMPARE(float(vehicle.surgeG), -2.0F);
        QCOMPARE(float(vehicle.groundSpeedKmh), 180.0F);
        QCOMPARE(float(vehicle.speedKmh), hasDash ? 183.6F : 180.0F);
        QVERIFY(std::abs(vehicle.headingDeg - 270) < 0.001F);
        QVERIFY(std::abs(vehicle.pitchDeg - 5) < 0.001F);
        QVERIFY(std::abs(vehicle.rollDeg + 2) < 0.001F);
        const auto *const wheels = reading->sample.extended.wheels;
        const bool spins[] = {true, false, false, true};
        const bool slides[] = {false, true, false, true};
        for (int i = 0; i < 4; ++i) {
            QCOMPARE(wheels[i].wheelFlagA != 0, spins[i]);
            QCOMPARE(wheels[i].wheelFlagB != 0, slides[i]);
            QCOMPARE(int(vehicle.tyreTempC[i]), hasDash ? 80 + 5 * i : 0);
            QCOMPARE(+vehicle.tyreWearPercent[i], length == 331 ? 10 + 10 * i : 0);
        }
        QCOMPARE(int(vehicle.steeringPercent), hasDash ? -100 : 0);
        QCOMPARE(+vehicle.gasPedalPercent, hasDash ? 100 : 0);
        QCOMPARE(+vehicle.brakePedalPercent, hasDash ? 20 : 0);
        QCOMPARE(+vehicle.clutchPedalPercent, hasDash ? 50 : 0);
        QCOMPARE(+vehicle.fuelLevelPercent, hasDash ? 45 : 0);
        QCOMPARE(uint(vehicle.bestTimeMs), hasDash ? 81'250U : 0U);
        QCOMPARE(uint(vehicle.lastTimeMs), hasDash ? 83'456U : 0U);
        QCOMPARE(uint(vehicle.currentTimeMs), hasDash ? 12'500U : 0U);
        QCOMPARE(int(vehicle.completedLaps), hasDash ? 3 : 0);
        QCOMPARE(int(vehicle.position), hasDash ? 7 : 0);
    }

    void egoIsConverted_data()
    {
        QTest::addColumn<int>("count");
        for (const int count : {38, 66, 70})
            QTest::newRow(qPrintable(QString::number(count))) << count;
    }

    void egoIsConverted()
    {
        QFETCH(int, count);
        const auto reading = EgoExtradata::decode(Senders::ego(count));
        QVERIFY(reading.has_value());
        const VehicleTelemetry &vehicle = reading->sample.vehicle;
        const bool isLong = count > 38;
        QCOMPARE(float(vehicle.speedKmh), 180.0F);
        QCOMPARE(int(vehicle.steeringPercent), -50);
        QCOMPARE(+vehicle.gasPedalPercent, 75);
        QCOMPARE(+vehicle.brakePedalPercent, 25);
        QCOMPARE(+vehicle.clutchPedalPercent, 10);
        QCOMPARE(float(vehicle.swayG), 1.25F);
        QCOMPARE(float(vehicle.surgeG), -0.75F);
        QCOMPARE(uint(vehicle.rpm), 7250U);
        QCOMPARE(uint(vehicle.currentTimeMs), 12'500U);
        QVERIFY(std::abs(vehicle.headingDeg - 90) < 0.001F);
        QVERIFY(std::abs(vehicle.pitchDeg - 30) < 0.001F);
        QVERIFY(std::abs(vehicle.rollDeg - 5.739F) < 0.001F);
        // Where the rally games count laps, the Formula games name the team.
        QCOMPARE(int(vehicle.completedLaps), count == 66 ? 3 : 2);
        QCOMPARE(uint(vehicle.maxRpm), isLong ? 8000U : 0U);
        QCOMPARE(int(vehicle.position), isLong ? 7 : 0);
        QCOMPARE(int(vehicle.numberOfLaps), isLong ? 12 : 0);
        QCOMPARE(uint(vehicle.lastTimeMs), isLong ? 83'456U : 0U);
        QCOMPARE(+vehicle.tractionControlLevel, isLong ? 3 : 0);
        QCOMPARE(+vehicle.absLevel, isLong ? 1 : 0);
        QCOMPARE(+vehicle.fuelLevelPercent, isLong ? 25 : 0);
        // The feed has the rear wheels first, the record the front wheels.
        const int brakes[] = {320, 330, 300, 310};
        const uint pressures[] = {152, 159, 138, 145};
        for (int i = 0; i < 4 && isLong; ++i) {
            QCOMPARE(int(vehicle.brakeTempC[i]), brakes[i]);
            QCOMPARE(uint(vehicle.tyrePressureKpa[i]), pressures[i]);
        }
        const std::uint32_t formula = Status::DrsAvailable | Status::FlagYellow;
        QCOMPARE(uint(vehicle.statusFlags),
                 uint((isLong ? Status::DrsEngaged : 0) | (count == 70 ? formula : 0)));
        QCOMPARE(reading->gears, isLong ? 6 : 0);
        QCOMPARE(reading->idleRpm, isLong ? 900U : 0U);
    }

    void noDamagedNumberIsShownAsOne()
    {
        using Limits = std::numeric_limits<float>;
        const float bad[] = {Limits::quiet_NaN(),
                             Limits::infinity(),
                             -Limits::infinity(),
                             1e38F,
                             -1e38F,
                             4e9F,
                             -4e9F};
        for (const Format &format : formats()) {
            const Sample whole = Decoders[format.decoder](format.datagram);
            QVERIFY2(whole.has_value(), format.name);
            for (const auto &[from, to] : format.reals) {
                for (int offset = from; offset < to; offset += 4) {
                    for (const float value : bad) {
                        QByteArray datagram = format.datagram;
                        std::memcpy(datagram.data() + offset, &value, sizeof value);
                        const Sample damaged = Decoders[format.decoder](datagram);
                        const QString where = QStringLiteral("%1, offset %2, %3: ")
                                                  .arg(QLatin1String(format.name))
                                                  .arg(offset)
                                                  .arg(double(value));
                        QVERIFY2(damaged.has_value(), qPrintable(where));
                        const QStringList wrong = wrongNumbers(*damaged, *whole);
                        QVERIFY2(wrong.isEmpty(), qPrintable(where + wrong.join(u',')));
                    }
                }
            }
        }
    }

    void onlyTheRightLengthsAreRead()
    {
        for (int length = 0; length <= 65'507; length += length < 400 ? 1 : 4999) {
            int readers = 0;
            for (const Decode decode : Decoders)
                readers += decode(QByteArray(length, '\0')).has_value() ? 1 : 0;
            const int lengths[] = {92, 96, 152, 232, 264, 280, 311, 324, 331};
            const bool isKnown = std::count(std::begin(lengths), std::end(lengths), length) > 0;
            QCOMPARE(readers, isKnown ? 1 : 0);
        }
    }

    void noiseAndTextAreMostlyNoTelemetry()
    {
        QRandomGenerator random(64);
        for (const Format &format : formats()) {
            int taken = 0;
            for (int i = 0; i < 1000; ++i) {
                QByteArray noise(format.datagram.size(), '\0');
                std::generate(noise.begin(), noise.end(),
                              [&] { return static_cast<char>(random.bounded(256)); });
                taken += Decoders[format.decoder](noise) ? 1 : 0;
            }
            QVERIFY2(taken < 50, format.name);
            const QByteArray text =
                QByteArray(R"({"speed":51.2,"rpm":7250,"gear":4})").repeated(10);
            QVERIFY2(!Decoders[format.decoder](text.left(format.datagram.size())), format.name);
        }
    }
};

QTEST_GUILESS_MAIN(FeedDecodersTest)
#include "FeedDecodersTest.moc"
