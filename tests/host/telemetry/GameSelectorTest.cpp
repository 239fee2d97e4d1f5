#include "Senders.h"

#include "support/LogCapture.h"
#include "telemetry/contracts/SilenceLimits.h"
#include "telemetry/feeds/DataOutFeed.h"
#include "telemetry/feeds/EgoFeed.h"
#include "telemetry/feeds/GameSelector.h"

#include <QtTest/QtTest>

using namespace std::chrono_literals;
using Silence = GameSelector::Silence;

namespace {

/// Two games in two formats.
const Packet Rally = Senders::ego();
const Packet Race = Senders::dataOut();

/// A switch between two formats, with a clock that stands still unless it is moved.
struct Bench
{
    GameSelector games{[] {
        std::vector<std::unique_ptr<Feed>> feeds;
        feeds.push_back(std::make_unique<DataOutFeed>());
        feeds.push_back(std::make_unique<EgoFeed>());
        return feeds;
    }()};
    GameSelector::TimePoint now{1h};
    LogCapture log;

    bool send(const QByteArray &datagram, quint16 from, quint16 to = 20777)
    {
        return games.offer(datagram, {QHostAddress(QHostAddress::LocalHost), from, to}, now);
    }

    /// What the log says to drivers who didn't ask for progress.
    int warnings() const { return log.lines.filter(QStringLiteral("other: ")).size(); }
};

} // namespace

class GameSelectorTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theNewestDatagramCountsOnce()
    {
        Bench bench;
        QVERIFY(!bench.games.takeNewest());
        QVERIFY(bench.send(Senders::dataOut(311, 1), 1000));
        QVERIFY(bench.send(Senders::dataOut(311, 2), 1000));
        QCOMPARE(bench.games.takeNewest()->vehicle, QStringLiteral("Data Out car 2"));
        QVERIFY(!bench.games.takeNewest());
    }

    void whoBeganKeepsTheWheel()
    {
        Bench bench;
        bench.send(Race, 1000);
        for (int i = 0; i < 100; ++i) {
            bench.now += 10ms;
            QVERIFY2(!bench.send(Race, 3000), "the same game twice is two games");
            QVERIFY(!bench.send(Race, 3000));
            QVERIFY(!bench.send(Rally, 2000));
            QVERIFY(bench.send(Race, 1000));
        }
        QCOMPARE(bench.warnings(), 1);

        bench.now += SilenceLimits::Paused - 1ms;
        QVERIFY(!bench.send(Rally, 2000));
        bench.now += 1ms;
        QVERIFY(bench.send(Rally, 2000));
        QVERIFY(!bench.send(Race, 1000));
        QCOMPARE(bench.games.takeNewest()->vehicle, QStringLiteral("EGO car 8000-1450-5"));
        QCOMPARE(bench.warnings(), 2);
    }

    void aSenderThatChangesItsFormatIsFollowed()
    {
        Bench bench;
        bench.send(Race, 1000);
        bench.send(Race, 1000);
        QVERIFY(bench.send(Rally, 1000));
        QCOMPARE(bench.games.takeNewest()->vehicle, QStringLiteral("EGO car 8000-1450-5"));
        QVERIFY(bench.send(Senders::dataOut(331), 1000));
        QCOMPARE(bench.games.takeNewest()->vehicle, QStringLiteral("Data Out car 1234"));
        QCOMPARE(bench.warnings(), 0);
    }

    void aPortForEachDatagramIsOneGame()
    {
        Bench bench;
        // The second and the third could be another game's.
        for (quint16 port = 1000; port < 1100; ++port) {
            QCOMPARE(bench.send(Race, port), port == 1000 || port > 1002);
            bench.now += 16ms;
        }
        QCOMPARE(bench.warnings(), 0);
        QVERIFY2(!bench.send(Race, 2000, 4444), "to another port goes another game");
        QVERIFY2(!bench.send(Rally, 2000), "in another format sends another game");
    }

    void silencePausesAndThenLosesOnceEach()
    {
        Bench bench;
        QVERIFY(!bench.games.nextSilenceCheck());
        QCOMPARE(bench.games.checkSilence(bench.now), Silence::None);
        const GameSelector::TimePoint start = bench.now;
        for (int round = 0; round < 2; ++round) {
            bench.send(Race, 1000);
            const GameSelector::TimePoint heard = bench.now;
            QCOMPARE(*bench.games.nextSilenceCheck(), heard + 500ms);
            QCOMPARE(bench.games.checkSilence(heard + 499ms), Silence::None);
            QCOMPARE(bench.games.checkSilence(heard + 500ms), Silence::Paused);
            QCOMPARE(bench.games.checkSilence(heard + 501ms), Silence::None);
            QCOMPARE(*bench.games.nextSilenceCheck(), heard + 5s);
            QCOMPARE(bench.games.checkSilence(heard + 5s), Silence::Lost);
            QCOMPARE(bench.games.checkSilence(heard + 6s), Silence::None);
            QVERIFY(!bench.games.nextSilenceCheck());
            bench.now = start + 10s;
        }
        // A datagram between two checks is live again.
        bench.send(Race, 1000);
        QCOMPARE(bench.games.checkSilence(bench.now + 500ms), Silence::Paused);
        bench.now += 600ms;
        QVERIFY(bench.send(Race, 1000));
        QCOMPARE(bench.games.checkSilence(bench.now + 499ms), Silence::None);
        QCOMPARE(bench.games.checkSilence(bench.now + 500ms), Silence::Paused);
    }

    void aLongPauseIsNoNewGame()
    {
        Bench bench;
        QByteArray parked = Packet(264).reals(28, 10).reals(252, 837.758, 151.8437, 5);
        bench.send(Rally, 1000);
        const auto mask = bench.games.takeNewest()->sample.vehicle.availabilityMask | 0;
        bench.now += 10s;
        bench.games.checkSilence(bench.now);
        bench.games.checkSilence(bench.now);
        bench.send(parked, 1001); // The game has opened its port anew.
        QVERIFY((bench.games.takeNewest()->sample.vehicle.availabilityMask &
                 Available::TyrePressure) != 0);
        QVERIFY((mask & Available::TyrePressure) != 0);

        // In between, somebody else drove.
        bench.now += 1s;
        bench.send(Race, 3000);
        bench.now += 1s;
        bench.send(parked, 1001);
        QCOMPARE(bench.games.takeNewest()->sample.vehicle.availabilityMask | 0, 0ULL);
    }

    void unknownFormatsAreToldOnceEachAndNotForEver()
    {
        Bench bench;
        for (int i = 0; i < 100; ++i)
            QVERIFY(!bench.send(QByteArray(1289, 'x'), 1000));
        QCOMPARE(bench.warnings(), 1);
        QVERIFY(bench.log.lines.last().contains(QStringLiteral("1289")));
        QVERIFY(bench.log.lines.last().contains(QStringLiteral("20777")));
        bench.send(QByteArray(1000, 'x'), 1000);
        QCOMPARE(bench.warnings(), 2);
        for (int length = 1001; length < 1200; ++length)
            bench.send(QByteArray(length, 'x'), 1000);
        QVERIFY(bench.warnings() < 10);
        QVERIFY(bench.send(Race, 1000));
        QVERIFY(bench.games.takeNewest().has_value());
    }
};

QTEST_GUILESS_MAIN(GameSelectorTest)
#include "GameSelectorTest.moc"
