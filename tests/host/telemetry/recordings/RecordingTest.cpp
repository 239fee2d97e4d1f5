#include "FeedRig.h"
#include "support/SystemLimits.h"
#include "telemetry/recordings/RecordingWriter.h"

#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

#include <cerrno>

using namespace std::chrono_literals;
using Existing = RecordingWriter::Existing;

class RecordingTest : public QObject
{
    Q_OBJECT

private:
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.pcap"));
    const Datagram::Sender game{QHostAddress(QStringLiteral("192.168.1.7")), 50001, 4444};
    const Datagram::Sender other{QHostAddress(QStringLiteral("2001:db8::8")), 65535, 20777};

private Q_SLOTS:
    void cleanup() { QFile::remove(path); }

    void aDriveReadsAsItWasTaken()
    {
        const std::vector<Datagram> sent{
            {5s, game, "odd"},
            {5s + 16ms + 1us, other, {}},
            {4s, other, QByteArray(65'507, 'x')},
            {5s, {QHostAddress(QStringLiteral("::ffff:10.0.0.1")), 1, 1}, QByteArray(65'507, 'y')},
        };
        const auto begin = std::chrono::system_clock::now().time_since_epoch();
        {
            RecordingWriter writer(path);
            for (const Datagram &datagram : sent)
                writer.add(datagram);
            writer.add({6s, game, QByteArray(65'508, 'z')});
            QCOMPARE(writer.progress().dropped, 1);
        }
        const ReadDrive drive(path);
        QCOMPARE(drive.datagrams.size(), sent.size());
        QVERIFY(drive.datagrams[0].time >= begin - 1ms);
        for (std::size_t i = 0; i < sent.size(); ++i) {
            const auto &[time, sender, payload] = drive.datagrams[i];
            QCOMPARE(time - drive.datagrams[0].time, sent[i].time - sent[0].time);
            QVERIFY(sender.address.isEqual(sent[i].sender.address));
            QVERIFY(sender.port == sent[i].sender.port && sender.toPort == sent[i].sender.toPort);
            QCOMPARE(payload, sent[i].payload);
        }
    }

    void aFileThatIsThereIsOverwrittenOnlyBySomethingBetter()
    {
        RecordingWriter(path).flush();
        QVERIFY2(!QFile::exists(path), "a recording of nothing");
        RecordingWriter(path).add({0s, game, QByteArray(1000, 'x')});
        RecordingWriter(path, Existing::Overwrite).flush();
        QCOMPARE(ReadDrive(path).datagrams.size(), std::size_t(1));
        QVERIFY(RecordingWriter(path).error().contains(QStringLiteral("--force")));
        RecordingWriter(path, Existing::Overwrite).add({0s, game, "new"});
        QCOMPARE(ReadDrive(path).datagrams.at(0).payload, QByteArray("new"));
        QCOMPARE(ReadDrive(path).remarks, QStringList());
        const QString bad = folder.filePath(QStringLiteral("no/a.pcap"));
        QVERIFY(RecordingWriter(bad).error().contains(QDir::toNativeSeparators(bad)));
    }

    void aFullDiskIsToldAndWhatStandsStaysReadable()
    {
#ifdef Q_OS_WIN
        QSKIP("Windows has no limit on the size of files for one process", );
#endif
        constexpr int HeadSize = 24;
        constexpr int PacketSize = 16 + 20 + 8 + 100;
        const FullDisk disk(HeadSize + 10 * PacketSize + 50);
        RecordingWriter writer(path);
        for (int i = 0; i < 24; ++i) {
            writer.add({std::chrono::milliseconds(i), game, QByteArray(100, 'z')});
            if (i == 4)
                writer.flush();
        }
        writer.flush();
        for (const QString &part : {path, qt_error_string(EFBIG)})
            QVERIFY2(writer.error().contains(part), qPrintable(writer.error()));
        writer.add({1s, game, "late"});
        QCOMPARE(writer.progress().datagrams, 10);
        QCOMPARE(writer.progress().dropped, 15);
        QCOMPARE(writer.progress().bytes, HeadSize + 10 * PacketSize);
        const ReadDrive drive(path);
        QCOMPARE(drive.datagrams.size(), std::size_t(10));
        QCOMPARE(drive.remarks, QStringList());
    }
};

QTEST_GUILESS_MAIN(RecordingTest)
#include "RecordingTest.moc"
