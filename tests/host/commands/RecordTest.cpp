#include "HostProgram.h"
#include "telemetry/recordings/OpenDrive.h"

#include <QtNetwork/QUdpSocket>
#include <QtTest/QtTest>

/// Records as a driver does, with the real program.
class RecordTest : public QObject
{
    Q_OBJECT

private:
    static int datagramsIn(const QString &file)
    {
        QString error;
        const auto drive = openDrive(file, error);
        int count = 0;
        while (drive != nullptr && drive->next())
            ++count;
        return count;
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
        QTRY_COMPARE(datagramsIn(file), 10);
        exitCode == 0 ? process.terminate() : process.kill();
        const Run run = HostProgram::finish(process);
        QCOMPARE(run.exitCode, exitCode);
        QVERIFY2(exitCode != 0 || run.output.startsWith("datagrams 10, "_q),
                 qPrintable(run.output));
        const Run again = host.run("record", {file, "--listen"_q, ownAddress()});
        QCOMPARE(again.exitCode, 1);
        QVERIFY2(again.errors.contains("--force"_q), qPrintable(again.errors));
        QCOMPARE(datagramsIn(file), 10);
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
