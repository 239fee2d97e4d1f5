#include "telemetry/feeds/UdpListener.h"
#include "FeedRig.h"

#include <QtCore/QSemaphore>
#include <QtCore/QThread>
#include <QtNetwork/QNetworkInterface>
#include <QtNetwork/QUdpSocket>
#include <QtTest/QtTest>

namespace {

constexpr auto Local = QHostAddress::LocalHost;
constexpr auto Local6 = QHostAddress::LocalHostIPv6;

QByteArray turning(int rpm)
{
    return Senders::dataOut().reals(16, rpm);
}

/// A listener with a sink, and a game that sends to it.
struct Listening
{
    FakeSink sink;
    QUdpSocket game;
    std::unique_ptr<UdpListener> listener;
    quint16 port = 0; ///< The first one that is open.

    explicit Listening(const std::vector<QHostAddress> &addresses = {Local},
                       const std::vector<quint16> &ports = {0}, UdpListener::Tap tap = {})
        : listener(std::make_unique<UdpListener>(
              twoFeeds(), UdpListener::Settings{addresses, ports, std::move(tap)}))
    {
        listener->start(sink);
        port = listener->isListening() ? listener->ports()[0] : 0;
    }
    void send(const QByteArray &datagram)
    {
        QCOMPARE(game.writeDatagram(datagram, Local, port), qint64(datagram.size()));
    }
};

} // namespace

class UdpListenerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void gamesAreHeardOnBothLoopbacksOneAfterTheOther()
    {
        Listening it({Local, Local6});
        QCOMPARE(it.listener->errors(), QStringList());
        for (int round = 1; round <= 2; ++round) {
            it.send(turning(round));
            // Well before the loss of the first round would be noticed.
            QTRY_COMPARE_WITH_TIMEOUT(it.sink.silences.load(), round, 4000);
        }
        if (it.listener->ports().size() < 2)
            QSKIP("this computer has no IPv6", );
        QUdpSocket other;
        other.writeDatagram(turning(3), Local6, it.listener->ports()[1]);
        QTRY_COMPARE(it.sink.rpm.load(), 3);
        it.listener.reset();
        QCOMPARE(it.sink.told, (std::vector<int>{1, -1, 2, -1, 3}));
    }

    void whatPilesUpIsSkippedForTheNewestButNotForLong()
    {
        std::vector<Datagram> tapped;
        QSemaphore sent;
        Listening it({Local}, {0}, [&](const Datagram &datagram) {
            if (tapped.empty())
                sent.acquire();
            if (tapped.size() >= 50)
                QThread::msleep(6); // Longer than the listener reads before it hands something on.
            tapped.push_back(datagram);
        });
        std::vector<QByteArray> all{"one", {}, QByteArray(65'507, 'x')};
        for (int rpm = 3; rpm < 52; ++rpm)
            all.push_back(turning(rpm));
        for (const QByteArray &datagram : all)
            it.send(datagram);
        sent.release();
        QTRY_COMPARE(it.sink.rpm.load(), 51);
        it.listener.reset();
        QVERIFY(it.sink.told.size() < 49);
        QCOMPARE(it.sink.told.at(it.sink.told.size() - 2), 50);
        QCOMPARE(tapped.size(), all.size());
        for (std::size_t i = 0; i < all.size(); ++i) {
            QCOMPARE(tapped[i].payload, all[i]);
            QCOMPARE(tapped[i].sender.toPort, it.port);
            QVERIFY(tapped[i].time >= tapped[i > 0 ? i - 1 : 0].time);
        }
    }

    void nothingFollowsTheEndInTheMiddleOfAFlood()
    {
        auto it = std::make_unique<Listening>();
        std::atomic<bool> stop{false};
        const std::unique_ptr<QThread> flood(QThread::create([&stop, port = it->port] {
            QUdpSocket game;
            while (!stop)
                game.writeDatagram(turning(7), Local, port);
        }));
        flood->start();
        QTRY_VERIFY(it->sink.updates > 100);
        it.reset();
        stop = true;
        QVERIFY(flood->wait());
    }

    void aMulticastGroupIsJoined()
    {
        const QHostAddress group(QStringLiteral("ff01::64")); // Never leaves the computer.
        Listening it({group});
        if (it.port == 0)
            QSKIP("this computer is in no network that carries groups", );
        it.game.bind(QHostAddress::AnyIPv6);
        const QList<QNetworkInterface> all = QNetworkInterface::allInterfaces();
        for (const QNetworkInterface &each : all) {
            it.game.setMulticastInterface(each);
            it.game.writeDatagram(turning(7), group, it.port);
        }
        QTRY_COMPARE(it.sink.rpm.load(), 7);
    }

    void whatCanNotBeOpenedIsToldInOneSentence()
    {
        QUdpSocket other;
        QVERIFY(other.bind(Local, 0, QAbstractSocket::DontShareAddress));
        // Where one loopback is free, that one alone counts as heard.
        const Listening half({Local, Local6}, {other.localPort()});
        if (half.port == 0)
            QSKIP("this computer has no IPv6", );
        QCOMPARE(half.listener->addresses(), std::vector<QHostAddress>{Local6});
        const Listening none({Local, Local6}, {half.port});
        QVERIFY(!none.listener->isListening());
        QCOMPARE(none.listener->errors().size(), 1);
        QVERIFY(none.listener->errors()[0].contains(QStringLiteral("of 127.0.0.1, ::1:")));
#ifndef Q_OS_WIN // Wine binds to any address.
        const Listening elsewhere({QHostAddress(QStringLiteral("192.0.2.1"))}, {0, 0});
        QVERIFY(!elsewhere.listener->isListening());
        QCOMPARE(elsewhere.listener->errors().size(), 1);
#endif
    }
};

QTEST_GUILESS_MAIN(UdpListenerTest)
#include "UdpListenerTest.moc"
