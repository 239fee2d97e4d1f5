#include "FeedRig.h"
#include "telemetry/feeds/FormerVehicleNames.h"
#include "telemetry/feeds/OutGaugeFeed.h"
#include "telemetry/feeds/RevLimitStore.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

using namespace std::chrono_literals;

class FeedStateTest : public QObject
{
    Q_OBJECT

private:
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("cars.ini"));
    RevLimitStore::TimePoint now{1h};
    std::unique_ptr<OutGaugeFeed> outGauge;

    std::unique_ptr<RevLimitStore> openStore()
    {
        return std::make_unique<RevLimitStore>(path, [this] { return now; });
    }
    VehicleTelemetry send(Feed &feed, const QByteArray &datagram)
    {
        return feed.decode(datagram, now += 20ms)->sample.vehicle;
    }
    std::uint64_t maskOf(Feed &feed, const QByteArray &datagram)
    {
        return send(feed, datagram).availabilityMask;
    }

    /// Drives a car at full throttle, and gives the limit that is known then.
    uint rev(const char *car, float rpm, int gear, bool shiftLight = false, float speed = 50)
    {
        Packet packet = Senders::outGauge(car);
        packet.put<quint8>(10, quint8(gear + 1)).reals(12, speed, rpm);
        packet.put<quint32>(44, shiftLight ? 1 : 0).reals(48, gear > 0 ? 1 : 0);
        return send(*outGauge, packet).maxRpm;
    }
    /// The shift light comes on at 7000, and the engine goes on to 7500.
    uint revToTheLight(const char *car)
    {
        for (const float rpm : {3000.0F, 6750.0F, 7000.0F, 7500.0F, 7500.0F, 7500.0F})
            rev(car, rpm, 2, rpm >= 7000);
        return rev(car, 5000, 3);
    }
    uint upshift(const char *car, std::chrono::milliseconds pause, float rpm, float speed)
    {
        for (int gear = 1; gear < 5; ++gear) {
            for (int i = 0; i < 3; ++i)
                rev(car, 2400, gear, false, speed);
            rev(car, 2400, 0, false, speed);
            now += pause;
            rev(car, rpm, gear + 1, false, speed);
        }
        return rev(car, rpm, 5, false, speed);
    }

private Q_SLOTS:
    void init()
    {
        outGauge.reset();
        QFile::remove(path);
        outGauge = std::make_unique<OutGaugeFeed>(openStore());
    }

    void vehiclesHaveLastingNames()
    {
        const auto name = [this](Feed &feed, const QByteArray &datagram) {
            return feed.decode(datagram, now)->vehicle;
        };
        EgoFeed ego;
        DataOutFeed dataOut;
        QCOMPARE(name(*outGauge, Senders::outGauge("XFG")), QStringLiteral("OutGauge XFG"));
        QCOMPARE(name(*outGauge, Senders::outGauge({"\0\x12\x34", 3})),
                 QStringLiteral("OutGauge 341200"));
        QCOMPARE(name(*outGauge, Senders::outGauge("")), QString());
        QCOMPARE(name(dataOut, Senders::dataOut()), QStringLiteral("Data Out car 1234"));
        QCOMPARE(name(dataOut, Senders::dataOut(311, 0)), QString());
        QCOMPARE(name(ego, Senders::ego()), QStringLiteral("EGO car 8000-1450-5"));
        QCOMPARE(name(ego, Senders::ego(38)), QString());
        QCOMPARE(formerVehicleNames(QStringLiteral("OutGauge 563412")),
                 QStringList{QStringLiteral("OutGauge 123456")});
    }

    void limitsAreLearntFromTheShiftLight()
    {
        // Lights are tested at a standstill.
        QCOMPARE(rev("XFG", 0, 0), 0U);
        QCOMPARE(rev("XFG", 0, 0, true), 0U);
        QCOMPARE(revToTheLight("XFG"), 7500U);
        rev("XFG", 1500, 0, true);
        const DisplayLimits limits = outGauge->decode(Senders::outGauge(), now)->sample.limits;
        QCOMPARE(+limits.rpmBlinkingThresholdPercent, 93);
        QVERIFY(limits.rpmYellowThresholdPercent < limits.rpmRedThresholdPercent);
        // Two wild numbers are none.
        rev("XFG", 29'000, 3);
        rev("XFG", 29'000, 3);
        QCOMPARE(rev("XFG", 6000, 3), 7500U);
        QCOMPARE(rev("FZ5", 5000, 3), 0U);
        QCOMPARE(rev("XFG", 5000, 3), 7500U);
    }

    void limitsAreLearntOnlyFromUpshiftsAtFullThrottle()
    {
        QCOMPARE(upshift("UP1", 400ms, 1900, 20), 2400U);
        QCOMPARE(upshift("UP2", 3s, 1900, 20), 0U);
        QCOMPARE(upshift("UP3", 400ms, 2400, 20), 0U);
        QCOMPARE(upshift("UP4", 400ms, 1900, 0), 0U);
    }

    void aRealDriverWhoLiftsAndUsesTheClutchTeachesTheLimit()
    {
        EgoFeed feed;
        int count = 0;
        const std::vector<Datagram> stage = realDrive("ego-dirt-rally-2.pcap");
        for (const auto &[time, sender, payload] : stage) {
            // Shortened to extradata 1, which doesn't tell that the engine turns to 8000.
            const auto maximum = feed.decode(payload.left(152), now + time)->sample.vehicle.maxRpm;
            ++count;
            if (count == 310) // After two upshifts and four downshifts,
                QCOMPARE(maximum | 0, 0U);
            if (count == 350) // and after the third upshift.
                QVERIFY(maximum > 7600 && maximum < 8100);
        }
        // Another stage may be driven in another car.
        QCOMPARE(send(feed, stage[0].payload.left(152)).maxRpm | 0, 0U);
    }

    void limitsLastFromSessionToSession()
    {
        revToTheLight("XFG");
        revToTheLight("beam"); // Which BeamNG.drive calls each of its cars.
        QVERIFY2(!QFile::exists(path), "written with each datagram");
        now += RevLimitStore::WritingPause;
        revToTheLight("FZ5");
        QVERIFY(QFile::exists(path));
        rev("XFG", 8000, 2, true); // Not written before the end.
        outGauge.reset();
        outGauge = std::make_unique<OutGaugeFeed>(openStore());
        QVERIFY(rev("XFG", 900, 0) == 8000 && rev("FZ5", 900, 0) == 7500);
        QCOMPARE(rev("beam", 900, 0), 0U);
    }

    void aSpoiltFileAndManyCarsCostOnlyTheLearning()
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("[RevLimits]\nXFG\\highest=4000000000\nXFG\\shiftLight=-7\n\xff\xfe\x00garbage");
        file.close();
        const auto store = openStore();
        QCOMPARE(store->limitsOf(QStringLiteral("XFG")).highest, 0U);
        for (int car = 0; car <= RevLimitStore::MostCars; ++car)
            store->keep(QString::number(car), {7000, 6500, 0});
        QCOMPARE(store->limitsOf(QStringLiteral("0")).highest, 7000U);
        QCOMPARE(store->limitsOf(QString::number(RevLimitStore::MostCars)).highest, 0U);
    }

    void aFieldThatNeverMovesIsUnavailable()
    {
        EgoFeed feed;
        const Packet parked =
            Packet(264).reals(28, 10).reals(184, 80).reals(252, 837.758, 151.8437, 5);
        QCOMPARE(maskOf(feed, parked), 0ULL);
        const std::uint64_t moving = maskOf(feed, Senders::ego());
        QVERIFY((moving & Available::Pedals) != 0 && (moving & Available::TyrePressure) != 0);
        QCOMPARE(maskOf(feed, parked), moving);
        QCOMPARE(maskOf(feed, Packet(parked).reals(252, 700, 90)), 0ULL); // Another car.
        maskOf(feed, Senders::ego());
        feed.restart();
        QCOMPARE(maskOf(feed, parked), 0ULL);

        const Packet dry = Senders::outGauge().reals(28, 0);
        const std::uint64_t withoutFuel = maskOf(*outGauge, dry);
        QCOMPARE(maskOf(*outGauge, Senders::outGauge()), withoutFuel | Available::FuelLevel);
        QCOMPARE(maskOf(*outGauge, dry), withoutFuel | Available::FuelLevel);
    }

    void menusPauseWhatWasShownAndRoamingFreelyHasNoLaps()
    {
        DataOutFeed feed;
        const QByteArray menu = Packet(311);
        QCOMPARE(maskOf(feed, menu), 0ULL);
        send(feed, Senders::dataOut());
        const auto paused = feed.decode(menu, now);
        QVERIFY(paused->sample.paused);
        QCOMPARE(+paused->sample.vehicle.fuelLevelPercent, 45);
        QCOMPARE(paused->vehicle, QStringLiteral("Data Out car 1234"));

        Packet roaming = Senders::dataOut(324, 99);
        roaming.reals(244 + 52, 0, 0, 0, 0).put<quint16>(244 + 68, 0).put<quint8>(244 + 70, 0);
        const std::uint64_t mask = maskOf(feed, roaming);
        constexpr auto Race = Available::CompletedLaps | Available::Position;
        constexpr auto Times = Available::CurrentTime | Available::LastTime | Available::BestTime;
        QCOMPARE(mask & (Race | Times), 0ULL);
        QCOMPARE(maskOf(feed, roaming.put<quint8>(244 + 70, 3)), mask | Race);
    }
};

QTEST_GUILESS_MAIN(FeedStateTest)
#include "FeedStateTest.moc"
