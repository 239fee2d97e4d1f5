#include "telemetry/feeds/GameSelector.h"
#include "FeedRig.h"
#include "support/LogCapture.h"

#include <QtTest/QtTest>

using namespace std::chrono_literals;
using Silence = GameSelector::Silence;

class GameSelectorTest : public QObject
{
    Q_OBJECT

private:
    const QByteArray rally = Senders::ego();
    const QByteArray race = Senders::dataOut();
    std::unique_ptr<GameSelector> selector;
    GameSelector::TimePoint now{1h};
    std::unique_ptr<LogCapture> log;

    bool send(const QByteArray &datagram, quint16 from, quint16 to = 20777)
    {
        return selector->offer(datagram, {QHostAddress(QHostAddress::LocalHost), from, to}, now);
    }
    bool hasTyrePressure()
    {
        const auto mask = selector->takeNewest()->sample.vehicle.availabilityMask | 0;
        return (mask & Available::TyrePressure) != 0;
    }
    int warnings() const { return log->lines.filter(QStringLiteral("other: ")).size(); }

private Q_SLOTS:
    void init()
    {
        selector = std::make_unique<GameSelector>(twoFeeds());
        log = std::make_unique<LogCapture>();
    }

    void cleanup() { log.reset(); }

    void theFirstGameCountsUntilItIsSilent()
    {
        QVERIFY(!selector->takeNewest());
        QVERIFY(send(rally, 1000));
        QVERIFY(send(race, 1000)); // A game may change its format.
        for (int i = 0; i < 100; ++i) {
            now += 10ms;
            QVERIFY2(!send(race, 3000), "the same game on two computers is two games");
            QVERIFY(!send(rally, 2000));
            QVERIFY(send(race, 1000));
        }
        QCOMPARE(selector->takeNewest()->vehicle, QStringLiteral("Data Out car 1234"));
        QVERIFY(!selector->takeNewest());
        QCOMPARE(warnings(), 1);
        now += 499ms;
        QVERIFY(!send(rally, 2000));
        now += 1ms;
        QVERIFY(send(rally, 2000));
        QVERIFY(!send(race, 1000));
        QCOMPARE(warnings(), 2);
    }

    void aPortForEachDatagramIsOneGame()
    {
        // The second and the third could be another game's.
        for (quint16 port = 1000; port < 1100; ++port) {
            QCOMPARE(send(race, port), port == 1000 || port > 1002);
            now += 16ms;
        }
        QCOMPARE(warnings(), 0);
        QVERIFY(!send(race, 2000, 4444)); // A game sends to one port,
        QVERIFY(!send(rally, 2000));      // and in one format.
    }

    void silencePausesAndThenLosesOnceEach()
    {
        QVERIFY(!selector->nextSilenceCheck());
        send(race, 1000);
        QCOMPARE(*selector->nextSilenceCheck(), now + 500ms);
        QCOMPARE(selector->checkSilence(now + 499ms), Silence::None);
        QCOMPARE(selector->checkSilence(now + 500ms), Silence::Paused);
        QCOMPARE(selector->checkSilence(now + 4999ms), Silence::None);
        QCOMPARE(selector->checkSilence(now + 5s), Silence::Lost);
        QCOMPARE(selector->checkSilence(now + 6s), Silence::None);
        QVERIFY(!selector->nextSilenceCheck());
        // Whoever looks late is told of the pause first.
        send(race, 1000);
        QCOMPARE(selector->checkSilence(now + 6s), Silence::Paused);
        QCOMPARE(*selector->nextSilenceCheck(), now + 5s);
        QCOMPARE(selector->checkSilence(now + 6s), Silence::Lost);
    }

    void aLongPauseIsNoNewGame()
    {
        const QByteArray parked = Packet(264).reals(28, 10).reals(252, 837.758, 151.8437, 5);
        send(rally, 1000);
        QVERIFY(hasTyrePressure());
        now += 10s;
        send(parked, 1001); // The game has opened its port anew.
        QVERIFY(hasTyrePressure());
        now += 1s;
        send(race, 3000);
        now += 1s;
        send(parked, 1001);
        QVERIFY(!hasTyrePressure());
    }

    void unknownFormatsAreToldOnceEachAndNotForEver()
    {
        for (int i = 0; i < 100; ++i)
            QVERIFY(!send(QByteArray(1289, 'x'), 1000));
        QCOMPARE(warnings(), 1);
        for (int length = 1000; length < 1200; ++length)
            send(QByteArray(length, 'x'), 1000);
        QVERIFY(warnings() > 2 && warnings() < 10);
    }
};

QTEST_GUILESS_MAIN(GameSelectorTest)
#include "GameSelectorTest.moc"
