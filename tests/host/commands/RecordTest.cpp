#include "HostProgram.h"
#include "telemetry/recordings/OpenDrive.h"

#include <QtNetwork/QUdpSocket>
#include <QtTest/QtTest>

/// Records as a driver does, with the real program.
class RecordTest : public QObject
{
    Q_OBJECT

private:
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
        QTest::addColumn<int>("exitCode");
        QTest::newRow("terminated") << 0;
        QTest::newRow("killed") << -1;
    }

    void whatComesInIsRecordedUntilTheEnd()
    {
#ifdef Q_OS_WIN
        QSKIP("Ends the program by a signal.");
#endif
        QFETCH(int, exitCode);
        const HostProgram host;
        const QString file = host.path("drive.pcap");
        QProcess process;
        host.start(process, "record", {file, "--listen"_q, ownAddress()});
        QByteArray errors;
        QTRY_VERIFY2((errors += process.readAllStandardError()).contains("Ctrl+C"), errors);
        QUdpSocket game;
        constexpr quint16 Port = 9999; // A usual one.
        for (int i = 0; i < 10; ++i)
            game.writeDatagram(QByteArray(5 * i, char(i)), QHostAddress(ownAddress()), Port);
        QTRY_COMPARE(read(file).size(), std::size_t(10));
        exitCode == 0 ? process.terminate() : process.kill();
        const Run run = HostProgram::finish(process);
        QCOMPARE(run.exitCode, exitCode);
        QVERIFY2(exitCode != 0 || run.output.startsWith("datagrams 10, "_q),
                 qPrintable(run.output));
        const Run again = host.run("record", {file, "--listen"_q, ownAddress()});
        QCOMPARE(again.exitCode, 1);
        QVERIFY2(again.errors.contains("--force"_q), qPrintable(again.errors));
        const std::vector<Datagram> datagrams = read(file);
        QCOMPARE(datagrams.size(), std::size_t(10));
        const Datagram &last = datagrams.back();
        QCOMPARE(last.payload, QByteArray(45, char(9)));
        QCOMPARE(last.sender.address, QHostAddress(QHostAddress::LocalHost));
        QCOMPARE(last.sender.port, game.localPort());
        QCOMPARE(last.sender.toPort, Port);
    }

    void aRecordingOfNothingLeavesNoFile()
    {
        const HostProgram host;
        const QStringList command{host.path("drive.pcap"), "--listen"_q, ownAddress()};
        const Run nothing = host.run("record --duration 1", command);
        QCOMPARE(nothing.exitCode, 1);
        QVERIFY2(nothing.errors.contains("Nothing came in"_q), qPrintable(nothing.errors));
        writeFile(host.path("bad.json"), "{\"name\": 1}");
        const Run bad = host.run("record --feed", QStringList{host.path("bad.json")} + command);
        QCOMPARE(bad.exitCode, 1);
        QVERIFY2(bad.errors.contains("bad.json: 'name' must be"_q), qPrintable(bad.errors));
        QVERIFY(!QFileInfo::exists(host.path("drive.pcap")));
    }
};

QTEST_GUILESS_MAIN(RecordTest)
#include "RecordTest.moc"
