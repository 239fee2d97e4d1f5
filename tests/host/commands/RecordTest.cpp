#include "ProgramHome.h"
#include "support/SystemLimits.h"
#include "telemetry/recordings/OpenDrive.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryDir>
#include <QtNetwork/QUdpSocket>
#include <QtTest/QtTest>

#include <vector>

namespace {

constexpr int LongestRunMs = 60'000;

quint16 freePort()
{
    QUdpSocket socket;
    socket.bind(QHostAddress::LocalHost);
    return socket.localPort();
}

} // namespace

/// Runs the program as a driver does.
class RecordTest : public QObject
{
    Q_OBJECT

private:
    ProgramHome home;
    QTemporaryDir folder;
    const quint16 port = freePort();

    QString path(const char *name) const { return folder.filePath(QLatin1String(name)); }

    void start(QProcess &process, const QString &file, const QStringList &further = {}) const
    {
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.setProcessEnvironment(home.environment());
        process.start(QStringLiteral(GAUGE_HOST),
                      QStringList{QStringLiteral("record"), file, QStringLiteral("--port"),
                                  QString::number(port)} +
                          further);
    }

    static QString outputOf(QProcess &process)
    {
        process.waitForFinished(LongestRunMs);
        return QString::fromUtf8(process.readAll());
    }

    static std::vector<Datagram> read(const QString &file)
    {
        QString error;
        const auto reader = openDrive(file, error);
        std::vector<Datagram> datagrams;
        while (reader != nullptr) {
            const std::optional<Datagram> datagram = reader->next();
            if (!datagram)
                break;
            datagrams.push_back(*datagram);
        }
        return datagrams;
    }

private Q_SLOTS:
    void whatComesInIsRecordedUntilTheEnd_data()
    {
        QTest::addColumn<QString>("signal");
        QTest::newRow("asked for") << QStringLiteral("TERM");
        QTest::newRow("the terminal closes") << QStringLiteral("HUP");
        QTest::newRow("killed") << QStringLiteral("KILL");
    }

    void whatComesInIsRecordedUntilTheEnd()
    {
        NEEDS_POSIX();
        QFETCH(QString, signal);
        const QString file = path(QTest::currentDataTag());
        QProcess process;
        start(process, file);
        QByteArray output;
        QTRY_VERIFY2((output += process.readAll()).contains("Ctrl+C"), output.constData());
        QUdpSocket game;
        for (int i = 0; i < 10; ++i)
            game.writeDatagram(QByteArray(5 * i, char(i)), QHostAddress::LocalHost, port);
        QTRY_COMPARE(read(file).size(), std::size_t(10));
        game.writeDatagram("tail", QHostAddress::LocalHost, port);
        QProcess::execute(QStringLiteral("sh"),
                          {QStringLiteral("-c"),
                           QStringLiteral("kill -%1 %2").arg(signal).arg(process.processId())});
        const QString rest = outputOf(process);
        const std::vector<Datagram> datagrams = read(file);
        QVERIFY(datagrams.size() >= 10);
        for (int i = 0; i < 10; ++i) {
            const Datagram &datagram = datagrams[std::size_t(i)];
            QCOMPARE(datagram.payload, QByteArray(5 * i, char(i)));
            QCOMPARE(datagram.sender.address, QHostAddress(QHostAddress::LocalHost));
            QCOMPARE(datagram.sender.port, game.localPort());
            QCOMPARE(datagram.sender.toPort, port);
        }
        QCOMPARE(process.exitStatus() == QProcess::CrashExit, signal == QLatin1String("KILL"));
        if (process.exitStatus() == QProcess::CrashExit)
            return;
        QCOMPARE(process.exitCode(), 0);
        QVERIFY2(rest.contains(QStringLiteral("%1 datagrams").arg(datagrams.size())),
                 qPrintable(rest));

        // A second one may not destroy it.
        QProcess again;
        start(again, file);
        QVERIFY(outputOf(again).contains(QStringLiteral("--force")));
        QCOMPARE(again.exitCode(), 1);
        QCOMPARE(read(file).size(), datagrams.size());
    }

    void aRecordingOfNothingIsNone()
    {
        QProcess process;
        start(process, path("b.pcap"), {QStringLiteral("--duration"), QStringLiteral("1")});
        const QString output = outputOf(process);
        QVERIFY2(output.contains(QStringLiteral("Nothing came in")), qPrintable(output));
        QCOMPARE(process.exitCode(), 1);
        QVERIFY(!QFileInfo::exists(path("b.pcap")));
    }

    void aWrongDescriptionLeavesNothingBehind()
    {
        QFile description(path("bad.json"));
        QVERIFY(description.open(QIODevice::WriteOnly));
        description.write("{\"name\": 1}");
        description.close();
        QProcess process;
        start(process, path("c.pcap"), {QStringLiteral("--feed"), path("bad.json")});
        const QString output = outputOf(process);
        QVERIFY2(output.contains(QDir::toNativeSeparators(path("bad.json")) +
                                 QStringLiteral(": 'name' must be")),
                 qPrintable(output));
        QCOMPARE(process.exitCode(), 1);
        QVERIFY(!QFileInfo::exists(path("c.pcap")));
    }
};

QTEST_GUILESS_MAIN(RecordTest)
#include "RecordTest.moc"
