#include "RealDrive.h"
#include "RecordFields.h"
#include "Senders.h"

#include "telemetry/feeds/DataOutFeed.h"
#include "telemetry/feeds/EgoFeed.h"
#include "telemetry/feeds/FormerVehicleNames.h"
#include "telemetry/feeds/OutGaugeFeed.h"
#include "telemetry/feeds/RevLimitStore.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

using namespace std::chrono_literals;

namespace {

/// An OutGauge datagram of a car at full throttle.
Packet revving(const QByteArray &car, float rpm, int gear, bool shiftLight)
{
    return Senders::outGauge(car)
        .put<quint8>(10, quint8(gear + 1))
        .reals(16, rpm)
        .put<quint32>(44, shiftLight ? 1 : 0)
        .reals(48, 1.0);
}

class FeedStateTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir folder;
    RevLimitStore::TimePoint now{1h};

    QString path() const { return folder.filePath(QStringLiteral("cars.ini")); }
    OutGaugeFeed outGauge()
    {
        return OutGaugeFeed(std::make_unique<RevLimitStore>(path(), [this] { return now; }));
    }

    TelemetrySample send(Feed &feed, const QByteArray &datagram)
    {
        return feed.decode(datagram, now += 20ms)->sample;
    }
    QString nameIn(Feed &&feed, const QByteArray &datagram)
    {
        return feed.decode(datagram, now)->vehicle;
    }

    /// The shift light comes on at 7000, and the engine goes on to 7500.
    TelemetrySample driveToTheLight(Feed &feed, const QByteArray &car)
    {
        for (int rpm = 3000; rpm <= 7500; rpm += 250)
            send(feed, revving(car, float(rpm), 2, rpm >= 7000));
        for (int i = 0; i < 3; ++i)
            send(feed, revving(car, 7500, 2, true));
        return send(feed, revving(car, 5000, 3, false));
    }

private Q_SLOTS:
    void init() { QFile::remove(path()); }

    void vehiclesHaveLastingNames()
    {
        const auto outGaugeName = [&](const QByteArray &car) {
            return nameIn(outGauge(), Senders::outGauge(car));
        };
        QCOMPARE(outGaugeName("XFG"), QStringLiteral("OutGauge XFG"));
        QCOMPARE(outGaugeName("beam"), QStringLiteral("OutGauge beam"));
        QCOMPARE(outGaugeName("\x12\x34\x56"), QStringLiteral("OutGauge 563412"));
        QCOMPARE(outGaugeName(QByteArray("\0\x12\0", 3)), QStringLiteral("OutGauge 001200"));
        QCOMPARE(outGaugeName(""), QString());
        QCOMPARE(nameIn(DataOutFeed(), Senders::dataOut()), QStringLiteral("Data Out car 1234"));
        QCOMPARE(nameIn(DataOutFeed(), Senders::dataOut(311, 0)), QString());
        QCOMPARE(nameIn(EgoFeed(), Senders::ego()), QStringLiteral("EGO car 8000-1450-5"));
        QCOMPARE(nameIn(EgoFeed(), Senders::ego(38)), QString());
        QCOMPARE(formerVehicleNames(QStringLiteral("OutGauge 563412")),
                 QStringList{QStringLiteral("OutGauge 123456")});
    }

    void limitsAreLearntFromTheShiftLight()
    {
        OutGaugeFeed feed = outGauge();
        QCOMPARE(uint(send(feed, revving("XFG", 900, 0, false)).vehicle.maxRpm), 0U);
        const TelemetrySample sample = driveToTheLight(feed, "XFG");
        QCOMPARE(uint(sample.vehicle.maxRpm), 7500U);
        QCOMPARE(+sample.limits.rpmBlinkingThresholdPercent, 93);
        QVERIFY(sample.limits.rpmYellowThresholdPercent < sample.limits.rpmRedThresholdPercent);
        // Another car is another engine.
        QCOMPARE(uint(send(feed, revving("FZ5", 5000, 3, false)).vehicle.maxRpm), 0U);
        QCOMPARE(uint(send(feed, revving("XFG", 5000, 3, false)).vehicle.maxRpm), 7500U);
    }

    void limitsAreLearntFromADriverWhoLiftsAndUsesTheClutch()
    {
        EgoFeed feed;
        int count = 0;
        for (const Datagram &datagram : realDrive(QStringLiteral("ego-dirt-rally-2.pcap"))) {
            // As with extradata 1, which doesn't tell it.
            const auto sample =
                feed.decode(datagram.payload.left(152), now + datagram.time)->sample;
            // After two upshifts and four downshifts, and after the third upshift. It turns to
            // 8000.
            if (++count == 310)
                QCOMPARE(uint(sample.vehicle.maxRpm), 0U);
            if (count == 350)
                QVERIFY(sample.vehicle.maxRpm > 7600 && sample.vehicle.maxRpm < 8100);
        }
    }

    void limitsAreLearntOnlyFromUpshifts()
    {
        OutGaugeFeed feed = outGauge();
        const auto drive = [&](const QByteArray &car, std::chrono::milliseconds pause, float rpm,
                               float speed) {
            TelemetrySample sample;
            for (int gear = 1; gear < 5; ++gear) {
                for (int i = 0; i < 3; ++i)
                    sample = send(feed, revving(car, 2400, gear, false).reals(12, speed));
                send(feed, revving(car, 2400, 0, false).reals(48, 0));
                now += pause;
                send(feed, revving(car, rpm, gear + 1, false).reals(12, speed));
            }
            return uint(sample.vehicle.maxRpm);
        };
        QCOMPARE(drive("UP1", 400ms, 1900, 20), 2400U);
        QCOMPARE(drive("UP2", 3s, 1900, 20), 0U);
        QCOMPARE(drive("UP3", 400ms, 2400, 20), 0U);
        QCOMPARE(drive("UP4", 400ms, 1900, 0), 0U);
    }

    void neitherAWildNumberNorATestOfTheLightsIsLearnt()
    {
        OutGaugeFeed feed = outGauge();
        send(feed, revving("XFG", 0, 0, false));
        QCOMPARE(uint(send(feed, revving("XFG", 0, 0, true)).vehicle.maxRpm), 0U);
        send(feed, revving("XFG", 900, 0, false));
        QCOMPARE(uint(driveToTheLight(feed, "XFG").vehicle.maxRpm), 7500U);
        send(feed, revving("XFG", 29'000, 3, false));
        send(feed, revving("XFG", 29'000, 3, false));
        QCOMPARE(uint(send(feed, revving("XFG", 6000, 3, false)).vehicle.maxRpm), 7500U);
    }

    void limitsLastFromSessionToSession()
    {
        {
            OutGaugeFeed feed = outGauge();
            driveToTheLight(feed, "XFG");
            // One name for all cars is worth nothing in the next session.
            driveToTheLight(feed, "beam");
            QVERIFY2(!QFile::exists(path()), "written with each datagram");
            now += RevLimitStore::WritingPause;
            driveToTheLight(feed, "FZ5");
            QVERIFY(QFile::exists(path()));
        }
        OutGaugeFeed feed = outGauge();
        QCOMPARE(uint(send(feed, revving("XFG", 900, 0, false)).vehicle.maxRpm), 7500U);
        QCOMPARE(uint(send(feed, revving("FZ5", 900, 0, false)).vehicle.maxRpm), 7500U);
        QCOMPARE(uint(send(feed, revving("beam", 900, 0, false)).vehicle.maxRpm), 0U);
    }

    void aSpoiltFileCostsOnlyTheLearning()
    {
        QFile file(path());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("[RevLimits]\nXFG\\highest=4000000000\nXFG\\shiftLight=-7\nXFG\\fullShifts=x\n"
                   "\xff\xfe\x00garbage");
        file.close();
        OutGaugeFeed feed = outGauge();
        QCOMPARE(uint(send(feed, revving("XFG", 900, 0, false)).vehicle.maxRpm), 0U);
        QCOMPARE(uint(driveToTheLight(feed, "XFG").vehicle.maxRpm), 7500U);
    }

    void aMillionCarsDontFillTheFile()
    {
        RevLimitStore store(path(), [this] { return now; });
        for (int car = 0; car < 2 * RevLimitStore::MostCars; ++car)
            store.keep(QString::number(car), {7000, 6500, 0});
        QCOMPARE(store.limitsOf(QStringLiteral("1")).highest, 7000U);
        QCOMPARE(store.limitsOf(QString::number(RevLimitStore::MostCars)).highest, 0U);
    }

    void aFieldThatNeverMovesIsUnavailable()
    {
        EgoFeed feed;
        const Packet parked =
            Packet(264).reals(28, 10).reals(184, 80).reals(252, 837.758, 151.8437, 5);
        QCOMPARE(send(feed, parked).vehicle.availabilityMask | 0, 0ULL);
        const auto moving = send(feed, Senders::ego()).vehicle.availabilityMask | 0;
        QVERIFY((moving & Available::Pedals) != 0);
        QVERIFY((moving & Available::TyrePressure) != 0);
        // Once it has moved, a 0 is a value.
        QCOMPARE(send(feed, parked).vehicle.availabilityMask | 0, moving);
        // Another car, and another game, begin anew.
        const Packet other = Packet(264).reals(28, 10).reals(184, 80).reals(252, 700, 90, 5);
        QCOMPARE(send(feed, other).vehicle.availabilityMask | 0, 0ULL);
        send(feed, Senders::ego());
        feed.restart();
        QCOMPARE(send(feed, parked).vehicle.availabilityMask | 0, 0ULL);
    }

    void whatShortEgoDatagramsDontTellIsLearntAnewInEachStage()
    {
        EgoFeed feed;
        float clock = 0;
        const auto drive = [&](float rpm, float gear) {
            const Packet packet = Senders::ego(38).reals(0, clock += 0.01F).reals(116, 1.0);
            return uint(send(feed, Packet(packet).reals(132, gear).reals(148, rpm * 0.10472F))
                            .vehicle.maxRpm);
        };
        const auto shiftUpTo = [&drive](float gear, float rpm) {
            for (int i = 0; i < 3; ++i)
                drive(rpm, gear - 1);
            return drive(rpm / 2, gear);
        };
        shiftUpTo(2, 7000);
        QCOMPARE(shiftUpTo(3, 7200), 0U);
        QCOMPARE(shiftUpTo(4, 7100), 7200U);
        QCOMPARE(drive(900, 1), 7200U);
        clock = 0;
        QCOMPARE(drive(900, 1), 0U);
        shiftUpTo(2, 5000);
        shiftUpTo(3, 5000);
        QCOMPARE(shiftUpTo(4, 5000), 5000U);
        QCOMPARE(uint(send(feed, Senders::ego()).vehicle.maxRpm), 8000U);
    }

    void fuelThatOutGaugeNeverTellsIsUnavailable()
    {
        OutGaugeFeed feed = outGauge();
        const auto hasFuel = [&](const Packet &packet) {
            return (send(feed, packet).vehicle.availabilityMask & Available::FuelLevel) != 0;
        };
        QVERIFY(!hasFuel(Senders::outGauge().reals(28, 0)));
        QVERIFY(hasFuel(Senders::outGauge()));
        // A tank may run dry.
        QVERIFY(hasFuel(Senders::outGauge().reals(28, 0)));
        QVERIFY(!hasFuel(Senders::outGauge("FBM").reals(28, 0)));
    }

    void roamingFreelyHasNoLaps()
    {
        DataOutFeed feed;
        Packet roaming = Senders::dataOut(324);
        roaming.reals(244 + 52, 0, 0, 0, 0).put<quint16>(244 + 68, 0).put<quint8>(244 + 70, 0);
        const auto mask = send(feed, roaming).vehicle.availabilityMask | 0;
        QCOMPARE(mask & (Available::CompletedLaps | Available::Position | Available::CurrentTime |
                         Available::LastTime | Available::BestTime),
                 0ULL);
        QVERIFY((mask & Available::Pedals) != 0);
        const auto racing =
            send(feed, roaming.put<quint8>(244 + 70, 3)).vehicle.availabilityMask | 0;
        QVERIFY((racing & Available::CompletedLaps) != 0);
    }

    void menusPauseWhatWasShown()
    {
        DataOutFeed feed;
        const QByteArray menu = Packet(311);
        QVERIFY(send(feed, menu).paused);
        QCOMPARE(send(feed, menu).vehicle.availabilityMask | 0, 0ULL);
        QVERIFY(!send(feed, Senders::dataOut()).paused);
        const auto paused = feed.decode(menu, now);
        QVERIFY(paused->sample.paused);
        QCOMPARE(+paused->sample.vehicle.fuelLevelPercent, 45);
        QCOMPARE(paused->vehicle, QStringLiteral("Data Out car 1234"));
        QVERIFY(!send(feed, Senders::dataOut()).paused);
    }
};

} // namespace

QTEST_GUILESS_MAIN(FeedStateTest)
#include "FeedStateTest.moc"
