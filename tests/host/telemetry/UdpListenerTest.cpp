#include "Senders.h"
#include "support/SystemLimits.h"

#include "telemetry/feeds/DataOutFeed.h"
#include "telemetry/feeds/EgoFeed.h"
#include "telemetry/feeds/UdpListener.h"

#include <QtCore/QMutex>
#include <QtCore/QSemaphore>
#include <QtCore/QThread>
#include <QtNetwork/QNetworkInterface>
#include <QtNetwork/QUdpSocket>
#include <QtTest/QtTest>

#include <atomic>

namespace {

constexpr QHostAddress::SpecialAddress Local = QHostAddress::LocalHost;

/// Counts, and may hold up whoever calls.
class Taker final : public TelemetrySink
{
public:
    std::atomic<int> updates{0};
    std::atomic<int> silences{0};
    std::atomic<int> lastCar{0};
    std::atomic<bool> holdUp{false};
    QSemaphore entered;
    QSemaphore released;

    void update(const TelemetrySample & /*sample*/, const QString &vehicle) override
    {
        if (holdUp.exchange(false)) {
            entered.release();
            released.acquire();
        }
        lastCar = vehicle.section(QLatin1Char(' '), -1).toInt();
        ++updates;
    }
    void fallSilent() override { ++silences; }
};

std::unique_ptr<UdpListener> listen(const std::vector<QHostAddress> &addresses, quint16 port = 0)
{
    std::vector<std::unique_ptr<Feed>> feeds;
    feeds.push_back(std::make_unique<DataOutFeed>());
    feeds.push_back(std::make_unique<EgoFeed>());
    return std::make_unique<UdpListener>(std::move(feeds),
                                         UdpListener::Settings{addresses, {port}, {}});
}

void send(QUdpSocket &socket, int car, quint16 port, const QHostAddress &to = Local)
{
    const QByteArray datagram = Senders::dataOut(311, car);
    QCOMPARE(socket.writeDatagram(datagram, to, port), qint64(datagram.size()));
}

} // namespace

class UdpListenerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void bothLoopbacksAreHeard()
    {
        const QHostAddress local6(QHostAddress::LocalHostIPv6);
        Taker taker;
        const auto listener = listen({Local, local6});
        QVERIFY2(listener->errors().isEmpty(), qPrintable(listener->errors().join(u' ')));
        listener->start(taker);
        QUdpSocket game;
        QTRY_VERIFY((send(game, 7, listener->ports()[0]), taker.lastCar == 7));
        if (listener->ports().size() < 2)
            QSKIP("this computer has no IPv6", );
        QUdpSocket other;
        // The first game has the wheel until it is silent.
        QTRY_VERIFY((send(other, 8, listener->ports()[1], local6), taker.lastCar == 8));
    }

    void silenceIsToldOnceAndEnds()
    {
        Taker taker;
        const auto listener = listen({Local});
        listener->start(taker);
        QUdpSocket game;
        for (int round = 1; round <= 2; ++round) {
            send(game, round, listener->ports()[0]);
            QTRY_COMPARE(taker.lastCar.load(), round);
            QTRY_COMPARE(taker.silences.load(), round);
        }
        QCOMPARE(taker.updates.load(), 2);
    }

    void whatPilesUpIsSkippedForTheNewest()
    {
        Taker taker;
        const auto listener = listen({Local});
        listener->start(taker);
        QUdpSocket game;
        taker.holdUp = true;
        send(game, 1, listener->ports()[0]);
        QVERIFY(taker.entered.tryAcquire(1, 5000));
        for (int car = 2; car <= 100; ++car)
            send(game, car, listener->ports()[0]);
        taker.released.release();
        QTRY_COMPARE(taker.lastCar.load(), 100);
        // On a slow machine the listener hands on some of them rather than none for long.
        QVERIFY2(taker.updates < 50, QByteArray::number(taker.updates));
    }

    void anyLengthIsTaken()
    {
        Taker taker;
        const auto listener = listen({Local});
        listener->start(taker);
        QUdpSocket game;
        for (const int length : {0, 1, 310, 312, 1500, 65'507})
            game.writeDatagram(QByteArray(length, '\x7f'), Local, listener->ports()[0]);
        send(game, 5, listener->ports()[0]);
        QTRY_COMPARE(taker.lastCar.load(), 5);
        QCOMPARE(taker.updates.load(), 1);
    }

    void theTapGetsAllThatComes()
    {
        std::vector<Datagram> tapped; // Of the other thread's until the listener is gone.
        std::vector<std::unique_ptr<Feed>> feeds;
        feeds.push_back(std::make_unique<DataOutFeed>());
        Taker taker;
        auto listener = std::make_unique<UdpListener>(
            std::move(feeds),
            UdpListener::Settings{
                {Local}, {0}, [&tapped](const Datagram &datagram) { tapped.push_back(datagram); }});
        const quint16 port = listener->ports()[0];
        listener->start(taker);
        QUdpSocket game;
        game.writeDatagram("one", Local, port);
        game.writeDatagram(QByteArray(), Local, port);
        send(game, 5, port);
        QTRY_COMPARE(taker.lastCar.load(), 5);
        listener.reset();
        QCOMPARE(int(tapped.size()), 3);
        QCOMPARE(tapped[0].payload, QByteArray("one"));
        QVERIFY(tapped[1].payload.isEmpty());
        QCOMPARE(tapped[2].payload, QByteArray(Senders::dataOut(311, 5)));
        QCOMPARE(tapped[2].sender.toPort, port);
        QVERIFY(tapped[0].time.count() > 0);
        QVERIFY(tapped[2].time >= tapped[0].time);
    }

    void nothingFollowsTheEndInTheMiddleOfAFlood()
    {
        auto taker = std::make_unique<Taker>();
        auto listener = listen({Local});
        const quint16 port = listener->ports()[0];
        std::atomic<bool> stop{false};
        const std::unique_ptr<QThread> flood(QThread::create([&stop, port] {
            QUdpSocket game;
            const QByteArray datagram = Senders::dataOut();
            while (!stop)
                game.writeDatagram(datagram, Local, port);
        }));
        flood->start();
        listener->start(*taker);
        QTRY_VERIFY(taker->updates > 100);
        listener.reset();
        taker.reset();
        stop = true;
        QVERIFY(flood->wait());
    }

    void aMulticastGroupIsJoined_data()
    {
        QTest::addColumn<QString>("group");
        QTest::newRow("IPv4") << QStringLiteral("239.255.0.64");
        QTest::newRow("IPv6") << QStringLiteral("ff01::64"); // Never leaves the computer.
    }

    void aMulticastGroupIsJoined()
    {
        QFETCH(QString, group);
        Taker taker;
        const auto listener = listen({QHostAddress(group)});
        if (!listener->isListening())
            QSKIP("this computer is in no network that carries groups", );
        listener->start(taker);
        QUdpSocket game;
        QVERIFY(game.bind(QHostAddress(group).protocol() == QAbstractSocket::IPv4Protocol
                              ? QHostAddress::AnyIPv4
                              : QHostAddress::AnyIPv6));
        const QList<QNetworkInterface> all = QNetworkInterface::allInterfaces();
        const QByteArray datagram = Senders::dataOut(311, 7);
        for (const QNetworkInterface &each : all) {
            game.setMulticastInterface(each);
            game.writeDatagram(datagram, QHostAddress(group), listener->ports()[0]);
        }
        QTRY_COMPARE(taker.lastCar, 7);
    }

    void aPortInUseIsTold()
    {
        QUdpSocket other;
        QVERIFY(other.bind(Local, 0, QAbstractSocket::DontShareAddress));
        const auto listener = listen({Local}, other.localPort());
        QVERIFY(!listener->isListening());
        QCOMPARE(listener->errors().size(), 1);
        const QString port = QString::number(other.localPort());
        QVERIFY2(listener->errors()[0].contains(QStringLiteral("ss -lunp sport = :") + port),
                 qPrintable(listener->errors()[0]));
    }

    void portsThatASecondHostFindsInUseAreToldInOneSentence()
    {
        const std::vector<QHostAddress> loopbacks{Local, QHostAddress(QHostAddress::LocalHostIPv6)};
        QUdpSocket four;
        QVERIFY(four.bind(Local, 0, QAbstractSocket::DontShareAddress));
        // Where one loopback is free, that one alone counts as heard.
        const auto half = listen(loopbacks, four.localPort());
        if (!half->isListening())
            QSKIP("this computer has no IPv6", );
        QCOMPARE(half->addresses(), std::vector<QHostAddress>{loopbacks[1]});
        QCOMPARE(half->errors().size(), 1);

        const auto listener = listen(loopbacks, four.localPort());
        QVERIFY(!listener->isListening());
        QCOMPARE(listener->errors().size(), 1);
        QVERIFY2(listener->errors()[0].contains(QStringLiteral("of 127.0.0.1, ::1 is in use")),
                 qPrintable(listener->errors()[0]));
    }

    void anAddressOfAnotherComputerIsTold()
    {
        NEEDS_POSIX();
        const auto listener = listen({QHostAddress(QStringLiteral("192.0.2.1"))});
        QVERIFY(!listener->isListening());
        QCOMPARE(listener->errors().size(), 1);
        QVERIFY(listener->errors()[0].contains(QStringLiteral("192.0.2.1 is no address")));
    }
};

QTEST_GUILESS_MAIN(UdpListenerTest)
#include "UdpListenerTest.moc"
