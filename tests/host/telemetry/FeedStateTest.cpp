#include "RecordFields.h"
#include "Senders.h"

#include "telemetry/feeds/DataOutFeed.h"
#include "telemetry/feeds/EgoFeed.h"
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

    static TelemetrySample send(Feed &feed, const QByteArray &datagram)
    {
        return feed.decode(datagram)->sample;
    }

    /// The shift light comes on at 7000, and the engine goes on to 7500.
    static TelemetrySample driveToTheLight(Feed &feed, const QByteArray &car)
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
        OutGaugeFeed outGaugeFeed = outGauge();
        QCOMPARE(outGaugeFeed.decode(Senders::outGauge("XFG"))->vehicle,
                 QStringLiteral("OutGauge XFG"));
        QCOMPARE(outGaugeFeed.decode(Senders::outGauge("beam"))->vehicle,
                 QStringLiteral("OutGauge beam"));
        QCOMPARE(outGaugeFeed.decode(Senders::outGauge("\xa1/\n"))->vehicle,
                 QStringLiteral("OutGauge A12F0A"));
        QCOMPARE(outGaugeFeed.decode(Senders::outGauge(""))->vehicle, QString());

        DataOutFeed dataOut;
        QCOMPARE(dataOut.decode(Senders::dataOut())->vehicle, QStringLiteral("Data Out car 1234"));
        QCOMPARE(dataOut.decode(Senders::dataOut(311, 0))->vehicle, QString());

        EgoFeed ego;
        QCOMPARE(ego.decode(Senders::ego())->vehicle, QStringLiteral("EGO car 8000-900-6"));
        QCOMPARE(ego.decode(Senders::ego(38))->vehicle, QString());
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

    void limitsAreLearntFromShiftingAtFullThrottle()
    {
        OutGaugeFeed feed = outGauge();
        const auto shift = [&feed](int gear) {
            for (int i = 0; i < 3; ++i)
                send(feed, revving("TRUC", 2400, gear, false));
            return send(feed, revving("TRUC", 1900, gear + 1, false));
        };
        shift(1);
        QCOMPARE(uint(shift(2).vehicle.maxRpm), 0U);
        const TelemetrySample sample = shift(3);
        QCOMPARE(uint(sample.vehicle.maxRpm), 2400U);
        QCOMPARE(+sample.limits.rpmBlinkingThresholdPercent, 100);
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
        const Packet parked = Packet(264).reals(28, 10).reals(184, 80).reals(252, 800, 90, 6);
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
            return uint(
                send(feed, Packet(packet).reals(132, gear).reals(148, rpm / 10)).vehicle.maxRpm);
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
        const auto paused = feed.decode(menu);
        QVERIFY(paused->sample.paused);
        QCOMPARE(+paused->sample.vehicle.fuelLevelPercent, 45);
        QCOMPARE(paused->vehicle, QStringLiteral("Data Out car 1234"));
        QVERIFY(!send(feed, Senders::dataOut()).paused);
    }
};

} // namespace

QTEST_GUILESS_MAIN(FeedStateTest)
#include "FeedStateTest.moc"
