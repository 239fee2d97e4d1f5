#include "support/SystemLimits.h"
#include "telemetry/recordings/OpenDrive.h"
#include "telemetry/recordings/RecordingWriter.h"

#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

#include <cerrno>
#include <vector>

using namespace std::chrono_literals;

namespace {

Datagram::Sender game()
{
    return {QHostAddress(QStringLiteral("192.168.1.7")), 50001, 4444};
}

Datagram::Sender other()
{
    return {QHostAddress(QStringLiteral("2001:db8::8")), 65535, 20777};
}

struct Reading
{
    QString error;
    std::vector<Datagram> datagrams;
    QStringList remarks;
};

Reading read(const QString &path)
{
    Reading reading;
    const auto reader = openDrive(path, reading.error);
    if (reader == nullptr)
        return reading;
    while (const std::optional<Datagram> datagram = reader->next())
        reading.datagrams.push_back(*datagram);
    reading.remarks = reader->remarks();
    return reading;
}

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class RecordingTest : public QObject
{
    Q_OBJECT

private:
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.pcap"));

private Q_SLOTS:
    void cleanup() { QFile::remove(path); }

    void aDriveReadsAsItWasTaken()
    {
        const std::vector<Datagram> sent{
            {5s, game(), "odd"},
            {5s + 16ms + 1us, other(), {}},
            {4s, other(), QByteArray(65'507, 'x')},
            {5s, {QHostAddress(QStringLiteral("::ffff:10.0.0.1")), 1, 1}, QByteArray(65'507, 'y')},
        };
        const auto begin = std::chrono::system_clock::now().time_since_epoch();
        {
            RecordingWriter writer(path);
            for (const Datagram &datagram : sent)
                writer.add(datagram);
            writer.add({6s, game(), QByteArray(65'508, 'z')});
            QCOMPARE(writer.progress().dropped, 1);
        }
        const Reading reading = read(path);
        QCOMPARE(reading.error, QString());
        QCOMPARE(reading.remarks, QStringList());
        QCOMPARE(reading.datagrams.size(), sent.size());
        for (std::size_t i = 0; i < sent.size(); ++i) {
            const Datagram &datagram = reading.datagrams[i];
            QCOMPARE(datagram.time - reading.datagrams[0].time, sent[i].time - sent[0].time);
            QVERIFY(datagram.sender.address.isEqual(sent[i].sender.address));
            QCOMPARE(datagram.sender.port, sent[i].sender.port);
            QCOMPARE(datagram.sender.toPort, sent[i].sender.toPort);
            QCOMPARE(datagram.payload, sent[i].payload);
        }
        QVERIFY(reading.datagrams[0].time - begin < 1min);
        QVERIFY(reading.datagrams[0].time - begin > -1ms);
    }

    void aFileThatIsThereIsOverwrittenOnlyBySomethingBetter()
    {
        RecordingWriter(path).add({0s, game(), "precious"});
        const QByteArray before = contents(path);
        RecordingWriter(path, RecordingWriter::Existing::Overwrite).flush();
        QCOMPARE(contents(path), before);
        RecordingWriter(path, RecordingWriter::Existing::Overwrite).add({0s, game(), "new"});
        QCOMPARE(read(path).datagrams.size(), std::size_t(1));

        for (const QString &bad : {folder.path(), folder.filePath(QStringLiteral("no/a.pcap"))}) {
            const RecordingWriter writer(bad, RecordingWriter::Existing::Overwrite);
            QVERIFY2(writer.error().contains(QDir::toNativeSeparators(bad)),
                     qPrintable(writer.error()));
        }
    }

    void aFullDiskIsToldAndWhatStandsStaysReadable()
    {
        NEEDS_POSIX();
        constexpr int HeadSize = 24;
        constexpr int PacketSize = 16 + 20 + 8 + 100;
        const FullDisk disk(HeadSize + 10 * PacketSize + 50);
        RecordingWriter writer(path);
        for (int i = 0; i < 24; ++i) {
            writer.add({std::chrono::milliseconds(i), game(), QByteArray(100, 'z')});
            if (i == 4)
                writer.flush();
        }
        QCOMPARE(writer.error(), QString());
        writer.flush();
        QVERIFY2(writer.error().contains(path) && writer.error().contains(qt_error_string(EFBIG)),
                 qPrintable(writer.error()));
        writer.add({1s, game(), "late"});
        QCOMPARE(writer.progress().datagrams, 10);
        QCOMPARE(writer.progress().dropped, 15);
        QCOMPARE(writer.progress().bytes, HeadSize + 10 * PacketSize);
        const Reading reading = read(path);
        QCOMPARE(reading.datagrams.size(), std::size_t(10));
        QCOMPARE(reading.remarks, QStringList());
    }
};

QTEST_GUILESS_MAIN(RecordingTest)
#include "RecordingTest.moc"
