#include "FeedRig.h"

#include "telemetry/feeds/ByteReader.h"
#include "telemetry/feeds/DataOut.h"
#include "telemetry/feeds/EgoExtradata.h"
#include "telemetry/feeds/OutGauge.h"
#include "telemetry/feeds/described/TelemetryFields.h"

#include <QtCore/QRandomGenerator>
#include <QtCore/QtMath>
#include <QtGui/QVector3D>
#include <QtTest/QtTest>

#include <cmath>
#include <limits>
#include <tuple>

namespace {

using Decode = std::optional<TelemetrySample> (*)(const QByteArray &);

template<auto &decode> std::optional<TelemetrySample> sample(const QByteArray &datagram)
{
    const auto reading = decode(datagram);
    return reading ? std::optional(reading->sample) : std::nullopt;
}

constexpr Decode outGauge = &sample<OutGauge::decode>;
constexpr Decode dataOut = &sample<DataOut::decode>;
constexpr Decode ego = &sample<EgoExtradata::decode>;

/// A datagram of each kind, and who reads it.
struct Format
{
    QByteArray datagram;
    Decode decode;
    std::vector<std::pair<int, int>> reals; ///< Where measured numbers begin and end.
};

std::vector<Format> formats()
{
    return {
        {Senders::outGauge(), outGauge, {{12, 40}, {48, 60}}},
        {Senders::outGauge("XFG", 96), outGauge, {{12, 40}, {48, 60}}},
        {Senders::dataOut(232), dataOut, {{8, 116}, {132, 212}}},
        {Senders::dataOut(311), dataOut, {{8, 116}, {132, 212}, {232, 300}}},
        {Senders::dataOut(324), dataOut, {{8, 116}, {132, 212}, {244, 312}}},
        {Senders::dataOut(331), dataOut, {{8, 116}, {132, 212}, {232, 300}, {311, 327}}},
        {Senders::ego(66), ego, {{0, 264}}},
        {Senders::ego(38), ego, {{0, 152}}},
        {Senders::ego(70), ego, {{0, 280}}},
    };
}

/// A moment of a drive that was recorded in a real game.
struct Moment
{
    float time;      ///< s
    QVector3D place; ///< m: to the right, up, forward.
    VehicleTelemetry vehicle;
    QByteArray datagram;
};

/// The place stands at `placeAt`; the first of its axes points to the right by `right`.
std::vector<Moment> drive(const char *file, Decode decode, int placeAt, float right)
{
    std::vector<Moment> moments;
    const std::vector<Datagram> datagrams = realDrive(file);
    for (const Datagram &datagram : datagrams) {
        const ByteReader bytes(datagram.payload);
        moments.push_back(
            {std::chrono::duration<float>(datagram.time - datagrams[0].time).count(),
             {right * bytes.real(placeAt), bytes.real(placeAt + 4), bytes.real(placeAt + 8)},
             decode(datagram.payload).value().vehicle,
             datagram.payload});
    }
    return moments;
}

/// How far measured numbers are from what was expected, of all that there was.
struct Error
{
    float off = 0;
    float all = 0;

    void add(float expected, float measured)
    {
        off += std::abs(measured - expected);
        all += std::abs(expected);
    }
};

/// What a sample holds in one field, as the bytes that change when the field becomes 0.
QByteArray contentOf(TelemetrySample sample, const TelemetryField &field)
{
    QByteArray bytes = bytesOf(sample);
    field.write(sample, 0);
    const QByteArray without = bytesOf(sample);
    for (int i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>(bytes[i] ^ without[i]);
    return bytes;
}

/// The first field for which a damaged datagram tells anything but what the whole one does, and
/// which isn't 0 and marked as missing.
const char *wrongField(const TelemetrySample &damaged, const TelemetrySample &whole)
{
    for (const TelemetryField &field : telemetryFields()) {
        const QByteArray content = contentOf(damaged, field);
        const bool isMissing = content.count('\0') == content.size() &&
                               (damaged.vehicle.availabilityMask & field.availability) == 0;
        if (!isMissing && content != contentOf(whole, field))
            return field.name;
    }
    return nullptr;
}

} // namespace

class FeedDecodersTest : public QObject
{
    Q_OBJECT

private:
    const std::vector<Moment> circuit = drive("data-out-motorsport-7.pcap", dataOut, 232, 1);
    const std::vector<Moment> rally = drive("ego-dirt-rally-2.pcap", ego, 16, -1);

private Q_SLOTS:
    void outGaugeTellsOfLightsThatTheCarHas()
    {
        const auto reading = OutGauge::decode(Senders::outGauge());
        QCOMPARE(reading->car, QStringLiteral("XFG"));
        QCOMPARE(reading->sample.vehicle.statusFlags | 0,
                 Status::SpeedLimiter | Status::AbsInAction);
        QVERIFY(reading->hasShiftLight && !reading->shiftLight);
        // Lights that shine without being there are none.
        const auto dark =
            OutGauge::decode(Senders::outGauge().put<quint32>(40, 0).put<quint32>(44, 0xffffffff));
        QCOMPARE(dark->sample.vehicle.statusFlags | 0, 0U);
        QCOMPARE(dark->sample.vehicle.availabilityMask | 0,
                 quint64(Available::Pedals | Available::FuelLevel));
        QVERIFY(!dark->shiftLight);

        // OutSim with options 1f has the same length: header, id, time, motion, pedals.
        Packet outSim(92);
        outSim.text(0, "LFST").put<quint32>(8, 123'456).reals(12, 0.1, 0, 0, 1.5, 0.01, 0.02);
        outSim.reals(36, 1, 2, 0.1, 10, 20, 0).put<qint32>(60, 65'536).reals(72, 1, 0, 0.1, 0, 0);
        QVERIFY(!outGauge(outSim));
        QVERIFY(!outGauge(outSim.text(0, QByteArray(4, '\1')).reals(4, 0.2)));
    }

    void gearsAreTold()
    {
        const auto gear = [](auto decode, Packet packet, int offset, auto code) {
            return int(decode(packet.put(offset, code))->vehicle.gear);
        };
        for (const auto &[code, told] : {std::pair{0, -1}, {1, 0}, {9, 8}, {255, 0}})
            QCOMPARE(gear(outGauge, Senders::outGauge(), 10, quint8(code)), told);
        for (const auto &[code, told] : {std::pair{0, -1}, {1, 1}, {10, 10}, {11, 0}})
            QCOMPARE(gear(dataOut, Senders::dataOut(), 232 + 75, quint8(code)), told);
        for (const auto &[code, told] : {std::pair{0, 0}, {10, -1}, {-1, -1}, {8, 8}})
            QCOMPARE(gear(ego, Senders::ego(), 132, float(code)), told);
        for (const auto &[code, told] : {std::pair{0, -1}, {1, 0}, {9, 8}})
            QCOMPARE(gear(ego, Senders::ego(70), 132, float(code)), told);
    }

    void aRealDriveObeysPhysics()
    {
        constexpr float Gravity = 9.80665F;
        // Differences over a quarter of a second are smooth. In a slide the car goes some degrees
        // beside where it looks.
        for (const auto &[moments, step, slide] :
             {std::tuple{circuit, std::size_t{2}, 2.0F}, {rally, std::size_t{8}, 12.0F}}) {
            Error speed, heading, pitch, sway, surge;
            float turnsAsSteered = 0;
            for (std::size_t i = step; i + step < moments.size(); ++i) {
                const Moment &then = moments[i - step], &now = moments[i],
                             &soon = moments[i + step];
                const float time = soon.time - then.time;
                const QVector3D way = soon.place - then.place;
                const QVector3D before = (now.place - then.place) / (now.time - then.time);
                const QVector3D after = (soon.place - now.place) / (soon.time - now.time);
                const float looks = qDegreesToRadians(+now.vehicle.headingDeg);
                const QVector3D right(std::cos(looks), 0, -std::sin(looks));
                speed.add(way.length() / time * 3.6F, now.vehicle.speedKmh);
                heading.add(0,
                            std::remainder(qRadiansToDegrees(std::atan2(way.x(), way.z()) - looks),
                                           360.0F));
                pitch.add(qRadiansToDegrees(std::asin(way.y() / way.length())),
                          now.vehicle.pitchDeg);
                sway.add(QVector3D::dotProduct(after - before, right) / (time / 2) / Gravity,
                         now.vehicle.swayG);
                surge.add((soon.vehicle.speedKmh - then.vehicle.speedKmh) / 3.6F / time / Gravity,
                          now.vehicle.surgeG);
                turnsAsSteered +=
                    float(now.vehicle.steeringPercent) *
                    std::remainder(soon.vehicle.headingDeg - then.vehicle.headingDeg, 360.0F);
            }
            QVERIFY(turnsAsSteered > 0);
            QVERIFY(heading.off / float(moments.size()) < slide);
            // A wrong sign would make it about 2.
            for (const auto &[error, most] :
                 {std::pair{speed, 0.03F}, {pitch, 0.3F}, {sway, 0.3F}, {surge, 0.8F}})
                QVERIFY2(error.off / error.all < most, qPrintable(QString::number(double(most))));
        }
    }

    void realDatagramsAreRead()
    {
        const VehicleTelemetry race = circuit.at(57).vehicle;
        QCOMPARE((Numbers{race.gear, int(race.rpm), int(race.maxRpm), race.gasPedalPercent,
                          race.fuelLevelPercent, int(race.currentTimeMs), race.position,
                          race.tyreTempC[0], race.tyreTempC[1], race.tyreTempC[2]}),
                 (Numbers{3, 9283, 15'000, 80, 100, 13'115, 1, 69, 68, 86}));
        QCOMPARE(circuit[0].vehicle.brakePedalPercent | 0, 41);
        // A compass has no 360.
        QCOMPARE(+dataOut(Senders::dataOut().reals(56, -1e-9))->vehicle.headingDeg, 0.0F);
        const VehicleTelemetry stage = rally.at(300).vehicle;
        QCOMPARE((Numbers{stage.gear, int(stage.rpm), int(stage.maxRpm), stage.gasPedalPercent,
                          stage.steeringPercent, int(stage.currentTimeMs), stage.numberOfLaps,
                          stage.brakeTempC[0], stage.brakeTempC[1], stage.brakeTempC[2]}),
                 (Numbers{3, 6178, 8000, 100, 100, 44'715, 1, 78, 71, 87}));
    }

    void otherLengthsTellTheSame()
    {
        const auto same = [](Decode decode, const QByteArray &one, const QByteArray &other) {
            return bytesOf(decode(one)->vehicle) == bytesOf(decode(other)->vehicle);
        };
        const QByteArray dash = circuit.at(57).datagram;
        const QByteArray gap(12, 'x');
        QVERIFY(same(dataOut, dash.left(232) + gap + dash.mid(232) + 'x', dash));
        const VehicleTelemetry sled = dataOut(dash.left(232))->vehicle;
        const float speed = dataOut(dash)->vehicle.speedKmh;
        QVERIFY(sled.rpm == 9283 && std::abs(sled.speedKmh - speed) < 0.1F);
        const VehicleTelemetry worn = dataOut(Senders::dataOut(331))->vehicle;
        QVERIFY(worn.tyreWearPercent[0] == 10 && worn.tyreWearPercent[3] == 40);

        const QByteArray stage = rally.at(300).datagram;
        QVERIFY(same(ego, stage + QByteArray(16, '\0'), stage));
        QCOMPARE(uint(ego(stage.left(152))->vehicle.rpm), 6178U);
        QCOMPARE(int(ego(Senders::ego())->vehicle.tyrePressureKpa[0]), 152); // Of 22 psi.
        const VehicleTelemetry formula = ego(Senders::ego(70))->vehicle;
        // The laps, and not the number of the team.
        QCOMPARE((Numbers{int(formula.rpm), int(formula.maxRpm), formula.completedLaps}),
                 (Numbers{11'500, 12'500, 2}));
        QCOMPARE(formula.statusFlags | 0,
                 Status::DrsEngaged | Status::DrsAvailable | Status::FlagYellow);
    }

    void noDamagedNumberIsShownAsOne()
    {
        constexpr float Infinity = std::numeric_limits<float>::infinity();
        for (const auto &[datagram, decode, reals] : formats()) {
            for (const auto &[from, to] : reals) {
                for (int at = from; at < to; at += 4) {
                    for (const float bad : {std::nanf(""), Infinity, -Infinity, 1e38F, -4e9F}) {
                        QByteArray damaged = datagram;
                        qToLittleEndian(bad, damaged.data() + at);
                        const char *wrong = wrongField(*decode(damaged), *decode(datagram));
                        QVERIFY2(wrong == nullptr, wrong);
                    }
                }
            }
        }
    }

    void noiseAndOtherLengthsAreNoTelemetry()
    {
        QRandomGenerator random(64);
        for (const auto &[datagram, decode, reals] : formats()) {
            QVERIFY(!decode(datagram.left(datagram.size() - 1)) && !decode(datagram + '\0'));
            int taken = 0;
            QByteArray noise(datagram.size(), '\0');
            for (int i = 0; i < 1000; ++i) {
                for (char &byte : noise)
                    byte = static_cast<char>(random.bounded(256));
                taken += decode(noise) ? 1 : 0;
            }
            QVERIFY(taken < 50);
        }
    }
};

QTEST_GUILESS_MAIN(FeedDecodersTest)
#include "FeedDecodersTest.moc"
