#include "HostProgram.h"
#include "telemetry/recordings/OpenDrive.h"

#include <QtNetwork/QUdpSocket>
#include <QtTest/QtTest>

/// Records as a driver does, with the real program.
class RecordTest : public QObject
{
    Q_OBJECT

private:
    static constexpr quint16 Port = 9999; ///< A usual one.

    const HostProgram host;

    QStringList command(const QString &file, const QStringList &options = {}) const
    {
        return QStringList{"record"_q, file, "--listen"_q, ownAddress()} + options;
    }

    static std::vector<Datagram> read(const QString &file)
    {
        QString error;
        const auto reader = openDrive(file, error);
        std::vector<Datagram> datagrams;
        for (auto next = reader ? reader->next() : std::nullopt; next; next = reader->next())
            datagrams.push_back(*next);
        return datagrams;
    }

private Q_SLOTS:
    void whatComesInIsRecordedUntilTheEnd_data()
    {
        QTest::addColumn<bool>("killed");
        QTest::newRow("terminated") << false;
        QTest::newRow("killed") << true;
    }

    void whatComesInIsRecordedUntilTheEnd()
    {
#ifdef Q_OS_WIN
        QSKIP("Ends the program by a signal.");
#endif
        QFETCH(bool, killed);
        const QString file = host.path(QTest::currentDataTag());
        QProcess process;
        host.start(process, command(file));
        QByteArray errors;
        QTRY_VERIFY2((errors += process.readAllStandardError()).contains("Ctrl+C"), errors);
        QUdpSocket game;
        const auto send = [&game](const QByteArray &payload) {
            game.writeDatagram(payload, QHostAddress(ownAddress()), Port);
        };
        for (int i = 0; i < 10; ++i)
            send(QByteArray(5 * i, char(i)));
        QTRY_COMPARE(read(file).size(), std::size_t(10));
        send("tail");
        killed ? process.kill() : process.terminate();
        const Run run = HostProgram::finish(process);
        QCOMPARE(run.exitCode, killed ? -1 : 0);
        const std::vector<Datagram> datagrams = read(file);
        QVERIFY(datagrams.size() >= 10);
        for (int i = 0; i < 10; ++i) {
            const Datagram &datagram = datagrams[std::size_t(i)];
            QCOMPARE(datagram.payload, QByteArray(5 * i, char(i)));
            QCOMPARE(datagram.sender.address, QHostAddress(QHostAddress::LocalHost));
            QCOMPARE(datagram.sender.port, game.localPort());
            QCOMPARE(datagram.sender.toPort, Port);
        }
        if (!killed) {
            const auto summary = QStringLiteral("datagrams %1, ").arg(datagrams.size());
            QVERIFY2(run.output.startsWith(summary), qPrintable(run.output));
        }
        const Run again = host.run(command(file));
        QCOMPARE(again.exitCode, 1);
        QVERIFY2(again.errors.contains("--force"_q), qPrintable(again.errors));
        QCOMPARE(read(file).size(), datagrams.size());
    }

    void aRecordingOfNothingLeavesNoFile()
    {
        const QString file = host.path("nothing.pcap");
        const Run nothing = host.run(command(file, {"--duration"_q, "1"_q}));
        QCOMPARE(nothing.exitCode, 1);
        QVERIFY2(nothing.errors.contains("Nothing came in"_q), qPrintable(nothing.errors));
        QVERIFY(!QFileInfo::exists(file));

        writeFile(host.path("bad.json"), "{\"name\": 1}");
        const Run bad = host.run(command(file, {"--feed"_q, host.path("bad.json")}));
        QCOMPARE(bad.exitCode, 1);
        QVERIFY2(bad.errors.contains("bad.json: 'name' must be"_q), qPrintable(bad.errors));
        QVERIFY(!QFileInfo::exists(file));
    }
};

QTEST_GUILESS_MAIN(RecordTest)
#include "RecordTest.moc"
