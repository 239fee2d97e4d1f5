#include "RealDrive.h"
#include "RecordFields.h"
#include "Senders.h"

#include "telemetry/feeds/ByteReader.h"
#include "telemetry/feeds/DataOut.h"
#include "telemetry/feeds/EgoExtradata.h"
#include "telemetry/feeds/OutGauge.h"

#include <QtCore/QRandomGenerator>
#include <QtTest/QtTest>

#include <algorithm>
#include <array>
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

/// A moment of a drive that was recorded in a real game.
struct Moment
{
    QByteArray datagram;
    double time = 0;               ///< s
    std::array<double, 3> place{}; ///< m: to the right, up, forward.
    VehicleTelemetry vehicle{};
};

enum Game { DataOutGame = 1, EgoGame = 2 }; ///< Numbers of decoders.

std::vector<Moment> drive(Game game)
{
    const bool isEgo = game == EgoGame;
    std::vector<Moment> moments;
    for (const Datagram &datagram :
         realDrive(isEgo ? QStringLiteral("ego-dirt-rally-2.pcap")
                         : QStringLiteral("data-out-motorsport-7.pcap"))) {
        const ByteReader bytes(datagram.payload);
        const auto real = [&](int place) {
            return double(bytes.real((isEgo ? 16 : 232) + 4 * place));
        };
        moments.push_back({datagram.payload,
                           std::chrono::duration<double>(datagram.time).count(),
                           {isEgo ? -real(0) : real(0), real(1), real(2)},
                           Decoders[game](datagram.payload).value().vehicle});
    }
    return moments;
}

/// How far measured numbers are from what was expected, of all that there was.
struct Error
{
    double off = 0;
    double all = 0;

    void add(double expected, double measured)
    {
        off += std::abs(measured - expected);
        all += std::abs(expected);
    }
};

/// From -180 to 180.
double turned(double degrees)
{
    return std::remainder(degrees, 360);
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
        QCOMPARE(reading->car, QStringLiteral("XFG"));
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
        const auto ego = [](float code, int count = 66) {
            return QByteArray(Senders::ego(count).reals(132, code));
        };
        QTest::newRow("OutGauge reverse") << outGauge(0) << 0 << -1;
        QTest::newRow("OutGauge neutral") << outGauge(1) << 0 << 0;
        QTest::newRow("OutGauge eighth") << outGauge(9) << 0 << 8;
        QTest::newRow("OutGauge unknown") << outGauge(255) << 0 << 0;
        QTest::newRow("Data Out reverse") << dataOut(0) << 1 << -1;
        QTest::newRow("Data Out first") << dataOut(1) << 1 << 1;
        QTest::newRow("Data Out tenth") << dataOut(10) << 1 << 10;
        QTest::newRow("Data Out shifting") << dataOut(11) << 1 << 0;
        QTest::newRow("EGO neutral") << ego(0) << 2 << 0;
        QTest::newRow("EGO reverse") << ego(10) << 2 << -1;
        QTest::newRow("EGO reverse, other games") << ego(-1) << 2 << -1;
        QTest::newRow("EGO eighth") << ego(8) << 2 << 8;
        QTest::newRow("EGO Formula reverse") << ego(0, 70) << 2 << -1;
        QTest::newRow("EGO Formula neutral") << ego(1, 70) << 2 << 0;
        QTest::newRow("EGO Formula eighth") << ego(9, 70) << 2 << 8;
    }

    void gearsAreTold()
    {
        QFETCH(QByteArray, datagram);
        QFETCH(int, decoder);
        QTEST(int(Decoders[decoder](datagram)->vehicle.gear), "gear");
    }

    void aRealDriveObeysPhysics_data()
    {
        QTest::addColumn<int>("game");
        QTest::addColumn<int>("step");     // A quarter of a second, which makes differences smooth.
        QTest::addColumn<double>("slide"); // Degrees between where the car looks and where it goes.
        QTest::newRow("Data Out, a circuit") << int(DataOutGame) << 2 << 2.0;
        QTest::newRow("EGO, a rally stage") << int(EgoGame) << 8 << 12.0;
    }

    void aRealDriveObeysPhysics()
    {
        QFETCH(int, game);
        QFETCH(int, step);
        QFETCH(double, slide);
        constexpr double Gravity = 9.80665;
        constexpr double Degrees = 57.29578;
        const std::vector<Moment> moments = drive(Game(game));
        Error speed, heading, pitch, sway, surge;
        double turnsAsSteered = 0;
        for (std::size_t i = step; i + step < moments.size(); ++i) {
            const Moment &then = moments[i - step], &now = moments[i], &soon = moments[i + step];
            const VehicleTelemetry &vehicle = now.vehicle;
            std::array<double, 3> way{}, acceleration{};
            const double time = soon.time - then.time;
            for (int axis = 0; axis < 3; ++axis) {
                way[axis] = soon.place[axis] - then.place[axis];
                const double after = (soon.place[axis] - now.place[axis]) / (soon.time - now.time);
                const double before = (now.place[axis] - then.place[axis]) / (now.time - then.time);
                acceleration[axis] = (after - before) / (time / 2);
            }
            const double length = std::hypot(way[0], way[1], way[2]);
            const double looks = double(vehicle.headingDeg) / Degrees;
            speed.add(length / time * 3.6, double(vehicle.speedKmh));
            heading.add(0, turned(std::atan2(way[0], way[2]) * Degrees - looks * Degrees));
            pitch.add(std::asin(way[1] / length) * Degrees, double(vehicle.pitchDeg));
            sway.add((acceleration[0] * std::cos(looks) - acceleration[2] * std::sin(looks)) /
                         Gravity,
                     double(vehicle.swayG));
            surge.add(double(soon.vehicle.speedKmh - then.vehicle.speedKmh) / 3.6 / time / Gravity,
                      double(vehicle.surgeG));
            turnsAsSteered += vehicle.steeringPercent *
                              turned(double(soon.vehicle.headingDeg - then.vehicle.headingDeg));
        }
        QVERIFY(turnsAsSteered > 0);
        const double slides = heading.off / double(moments.size());
        QVERIFY2(slides < slide, qPrintable(QString::number(slides)));
        // A wrong sign would make it about 2.
        for (const auto &[name, error, most] : {std::tuple{"speed", speed, 0.03},
                                                {"pitch", pitch, 0.3},
                                                {"sway", sway, 0.3},
                                                {"surge", surge, 0.8}}) {
            const double share = error.off / error.all;
            QVERIFY2(share < most, qPrintable(QLatin1String(name) + QString::number(share)));
        }
    }

    void realDatagramsAreRead()
    {
        const VehicleTelemetry circuit = drive(DataOutGame)[57].vehicle;
        QCOMPARE(+circuit.gear, 3);
        QCOMPARE(uint(circuit.rpm), 9283U);
        QCOMPARE(uint(circuit.maxRpm), 15'000U);
        QCOMPARE(+circuit.gasPedalPercent, 80);
        QCOMPARE(+circuit.fuelLevelPercent, 100);
        QCOMPARE(uint(circuit.currentTimeMs), 13'115U);
        QCOMPARE(int(circuit.position), 1);
        QCOMPARE(drive(DataOutGame)[0].vehicle.brakePedalPercent | 0, 41);

        const VehicleTelemetry stage = drive(EgoGame)[300].vehicle;
        QCOMPARE(+stage.gear, 3);
        QCOMPARE(uint(stage.rpm), 6178U);
        QCOMPARE(uint(stage.maxRpm), 8000U);
        QCOMPARE(+stage.gasPedalPercent, 100);
        QCOMPARE(int(stage.steeringPercent), 100);
        QCOMPARE(uint(stage.currentTimeMs), 44'715U);
        QCOMPARE(int(stage.numberOfLaps), 1);
        const int tyres[] = {69, 68, 86, 86};
        const int brakes[] = {78, 71, 87, 86};
        for (int i = 0; i < 4; ++i) {
            QCOMPARE(int(circuit.tyreTempC[i]), tyres[i]);
            QCOMPARE(int(stage.brakeTempC[i]), brakes[i]);
        }
    }

    void otherLengthsTellTheSame()
    {
        const auto bytesOf = [](Game game, const QByteArray &datagram) {
            const VehicleTelemetry vehicle = Decoders[game](datagram).value().vehicle;
            return QByteArray(reinterpret_cast<const char *>(&vehicle), sizeof vehicle);
        };
        const QByteArray dash = drive(DataOutGame)[57].datagram;
        const QByteArray horizon = dash.left(232) + QByteArray(12, 'x') + dash.mid(232) + 'x';
        QCOMPARE(bytesOf(DataOutGame, horizon), bytesOf(DataOutGame, dash));
        const Packet wear = Packet(20).reals(0, 0.1, 0.2, 0.3, 0.4).put<qint32>(16, 42);
        const auto worn = Decoders[DataOutGame](dash + wear)->vehicle;
        for (int i = 0; i < 4; ++i)
            QCOMPARE(+worn.tyreWearPercent[i], 10 + 10 * i);
        const auto sled = Decoders[DataOutGame](dash.left(232))->vehicle;
        QCOMPARE(uint(sled.rpm), uint(worn.rpm));
        QVERIFY(std::abs(sled.speedKmh - worn.speedKmh) < 0.1F);

        const QByteArray rally = drive(EgoGame)[300].datagram;
        QCOMPARE(bytesOf(EgoGame, rally + QByteArray(16, '\0')), bytesOf(EgoGame, rally));
        const auto brief = Decoders[EgoGame](rally.left(152))->vehicle;
        QCOMPARE(uint(brief.rpm), 6178U);
        const auto formula = Decoders[EgoGame](Senders::ego(70));
        QCOMPARE(uint(formula->vehicle.rpm), 11'500U);
        QCOMPARE(uint(formula->vehicle.maxRpm), 12'500U);
        QCOMPARE(int(formula->vehicle.completedLaps), 2); // And not the number of the team.
        QCOMPARE(uint(formula->vehicle.statusFlags),
                 uint(Status::DrsEngaged | Status::DrsAvailable | Status::FlagYellow));
    }

    void outSimIsNoOutGauge()
    {
        // Options 1f: header, id, time, motion, pedals.
        Packet outSim(92);
        outSim.text(0, "LFST").put<quint32>(8, 123'456).reals(12, 0.1, 0, 0, 1.5, 0.01, 0.02);
        outSim.reals(36, 1, 2, 0.1, 10, 20, 0).put<qint32>(60, 65'536).reals(72, 1, 0, 0.1, 0, 0);
        QVERIFY(!OutGauge::decode(outSim));
        QVERIFY(!OutGauge::decode(outSim.text(0, QByteArray(4, '\1')).reals(4, 0.2)));
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
