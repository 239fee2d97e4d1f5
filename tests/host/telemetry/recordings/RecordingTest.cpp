#include "support/SystemLimits.h"
#include "telemetry/recordings/DriveFile.h"
#include "telemetry/recordings/RecordingFormat.h"
#include "telemetry/recordings/RecordingReader.h"
#include "telemetry/recordings/RecordingWriter.h"

#include <QtCore/QBuffer>
#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>
#include <QtTest/QtTest>

#include <atomic>
#include <thread>
#include <vector>

using namespace std::chrono_literals;

namespace {

constexpr int HeadSize = 24;
constexpr int RecordOverhead = 20;

std::vector<Datagram> someDatagrams()
{
    return {
        {5s, 4444, QByteArray("first")},
        {5s + 16ms, 65535, QByteArray()},
        // What looks like the beginning of a record must not mislead.
        {5s + 33ms, 4444, QByteArray("DGRM\x05\0\0\0DGRM", 12)},
        {4s, 1, QByteArray(300, 'x')},
    };
}

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray recordingOf(const std::vector<Datagram> &datagrams)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.drive"));
    {
        RecordingWriter writer(path);
        for (const Datagram &datagram : datagrams)
            writer.add(datagram);
    }
    return contents(path);
}

QByteArray headOfRecording()
{
    return recordingOf({{0s, 1, {}}}).left(HeadSize);
}

struct Reading
{
    QString error;
    std::vector<Datagram> datagrams;
    qint64 lost = 0;
    QStringList remarks;
};

Reading read(const QByteArray &bytes)
{
    auto buffer = std::make_unique<QBuffer>();
    buffer->setData(bytes);
    buffer->open(QIODevice::ReadOnly);
    Reading reading;
    const auto reader = RecordingReader::open(std::move(buffer), reading.error);
    if (reader == nullptr)
        return reading;
    while (const std::optional<Datagram> datagram = reader->next())
        reading.datagrams.push_back(*datagram);
    reading.lost = reader->lostBytes();
    reading.remarks = reader->remarks();
    return reading;
}

bool same(const Datagram &recorded, const Datagram &sent, std::chrono::nanoseconds start)
{
    return recorded.time == sent.time - start && recorded.port == sent.port &&
           recorded.payload == sent.payload;
}

} // namespace

class RecordingTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aDriveReadsAsItWasTaken()
    {
        const std::vector<Datagram> sent = someDatagrams();
        const Reading reading = read(recordingOf(sent));
        QCOMPARE(reading.error, QString());
        QCOMPARE(reading.datagrams.size(), sent.size());
        for (std::size_t i = 0; i < sent.size(); ++i)
            QVERIFY2(same(reading.datagrams[i], sent[i], 5s), qPrintable(QString::number(i)));
        QCOMPARE(reading.lost, 0);
        QVERIFY(reading.remarks.isEmpty());
    }

    void theLayoutIsTheDocumentedOne()
    {
        const QByteArray bytes = recordingOf({{7s, 0x1234, "ab"}, {7s + 1us, 0x1234, "c"}});
        QCOMPARE(bytes.size(), HeadSize + 2 * RecordOverhead + 3);
        QCOMPARE(bytes.left(12), QByteArray("\x8b"
                                            "DRIV\r\n\x1a\1\0\0\0",
                                            12));
        QCOMPARE(bytes.mid(24, 18), QByteArray("DGRM\2\0\x34\x12\0\0\0\0\0\0\0\0"
                                               "ab",
                                               18));
        // The checksums are those of any zlib: python3 -c 'import zlib; zlib.crc32(...)'.
        QCOMPARE(bytes.mid(42, 4).toHex(), QByteArray("ac7b670d"));
        QCOMPARE(bytes.mid(46, 17), QByteArray("DGRM\1\0\x34\x12\xe8\3\0\0\0\0\0\0"
                                               "c",
                                               17));
    }

    void whereverItIsCutOffAllWholeRecordsRead()
    {
        const std::vector<Datagram> sent = someDatagrams();
        const QByteArray whole = recordingOf(sent);
        for (int size = 0; size < whole.size(); ++size) {
            const Reading reading = read(whole.left(size));
            QCOMPARE(reading.error.isEmpty(), size >= HeadSize);
            if (size < HeadSize)
                continue;
            std::size_t expected = 0;
            int end = HeadSize;
            while (end + RecordOverhead + sent[expected].payload.size() <= size)
                end += RecordOverhead + sent[expected++].payload.size();
            QCOMPARE(reading.datagrams.size(), expected);
            QCOMPARE(reading.lost, size - end);
            QCOMPARE(reading.remarks.isEmpty(), size == end);
        }
    }

    void aFlippedBitCostsNoMoreThanItsRecord()
    {
        const std::vector<Datagram> sent = someDatagrams();
        const QByteArray whole = recordingOf(sent);
        for (int bit = 0; bit < whole.size() * 8; ++bit) {
            QByteArray damaged = whole;
            damaged[bit / 8] = static_cast<char>(damaged[bit / 8] ^ (1 << bit % 8));
            const Reading reading = read(damaged);
            if (bit / 8 < HeadSize) {
                QCOMPARE(reading.datagrams.size(), bit / 8 < 8 ? 0 : sent.size());
                continue;
            }
            QCOMPARE(reading.datagrams.size(), sent.size() - 1);
            std::size_t gone = 0;
            while (gone < reading.datagrams.size() && same(reading.datagrams[gone], sent[gone], 5s))
                ++gone;
            QCOMPARE(reading.lost, RecordOverhead + sent[gone].payload.size());
            for (std::size_t i = gone; i < reading.datagrams.size(); ++i)
                QVERIFY(same(reading.datagrams[i], sent[i + 1], 5s));
        }
    }

    void foreignFilesAreRefusedWithAReason_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("mention");
        QByteArray newer = headOfRecording();
        newer[8] = 2;
        const quint32 sum = qToLittleEndian(RecordingFormat::checksum(newer.constData(), 20));
        newer.replace(20, 4, reinterpret_cast<const char *>(&sum), 4);
        QTest::newRow("nothing") << QByteArray() << "empty";
        QTest::newRow("text") << QByteArray("Lap one\n") << "neither";
        QTest::newRow("newer") << newer << "version 2";
        QTest::newRow("only the magic") << headOfRecording().left(8) << "head";
    }

    void foreignFilesAreRefusedWithAReason()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, mention);
        QTemporaryFile file;
        QVERIFY(file.open());
        file.write(bytes);
        file.close();
        QString error;
        QVERIFY(openDrive(file.fileName(), error) == nullptr);
        QVERIFY2(error.contains(mention), qPrintable(error));
        QVERIFY(error.contains(QDir::toNativeSeparators(file.fileName())));
    }

    void hostileBytesEndSoon()
    {
        // Markers in a row, each of which asks for the checksum of 64 KiB.
        QByteArray hostile = headOfRecording();
        while (hostile.size() < 4'000'000)
            hostile += QByteArray("DGRM\xff\xff", 6);
        QElapsedTimer timer;
        timer.start();
        const Reading reading = read(hostile);
        QVERIFY(reading.datagrams.empty());
        QCOMPARE(reading.lost, hostile.size() - HeadSize);
        QVERIFY(timer.elapsed() < 20'000);
    }

    void aFileThatIsThereIsKeptUnlessForced()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("a.drive"));
        {
            RecordingWriter first(path);
            first.add({0s, 1, "precious"});
        }
        const QByteArray before = contents(path);
        {
            RecordingWriter second(path);
            QVERIFY2(second.error().contains(QStringLiteral("--force")),
                     qPrintable(second.error()));
            second.add({0s, 1, "other"});
            QCOMPARE(second.progress().dropped, 1);
        }
        QCOMPARE(contents(path), before);
        // Even when forced, only by something better.
        RecordingWriter(path, RecordingWriter::Existing::Overwrite).flush();
        QCOMPARE(contents(path), before);
        RecordingWriter(path, RecordingWriter::Existing::Overwrite).add({0s, 1, "new"});
        QCOMPARE(read(contents(path)).datagrams.size(), std::size_t(1));
        QCOMPARE(contents(path).size(), HeadSize + RecordOverhead + 3);
        const QString unused = folder.filePath(QStringLiteral("unused.drive"));
        RecordingWriter(unused).flush();
        QVERIFY(!QFileInfo::exists(unused));

        for (const QString &bad : {folder.path(), folder.filePath(QStringLiteral("no/a.drive"))}) {
            const RecordingWriter writer(bad, RecordingWriter::Existing::Overwrite);
            QVERIFY2(writer.error().contains(QDir::toNativeSeparators(bad)),
                     qPrintable(writer.error()));
        }
    }

    void whatWasTakenReachesTheFileWithoutBeingAsked()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("a.drive"));
        RecordingWriter writer(path);
        std::vector<std::thread> threads;
        constexpr int PerThread = 500;
        for (quint16 port = 1; port <= 4; ++port) {
            threads.emplace_back([&writer, port] {
                for (int i = 0; i < PerThread; ++i)
                    writer.add({std::chrono::milliseconds(i), port, QByteArray(i % 50, 'y')});
            });
        }
        for (std::thread &thread : threads)
            thread.join();
        QCOMPARE(writer.progress().datagrams, 4 * PerThread);
        QTRY_COMPARE(QFileInfo(path).size(), writer.progress().bytes);
        QCOMPARE(read(contents(path)).datagrams.size(), std::size_t(4 * PerThread));
    }

    void aFullDiskIsToldAndWhatStandsStaysReadable()
    {
        NEEDS_POSIX();
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("a.drive"));
        {
            const FullDisk disk(HeadSize + 10 * (RecordOverhead + 100) + 50);
            RecordingWriter writer(path);
            for (int i = 0; i < 4; ++i)
                writer.add({std::chrono::milliseconds(i), 1, QByteArray(100, 'z')});
            writer.flush();
            QCOMPARE(writer.error(), QString());
            for (int i = 0; i < 20; ++i)
                writer.add({std::chrono::milliseconds(i), 1, QByteArray(100, 'z')});
            writer.flush();
            QVERIFY2(writer.error().contains(path), qPrintable(writer.error()));
            writer.add({0s, 1, "late"});
            QCOMPARE(writer.progress().dropped, 1);
        }
        const Reading reading = read(contents(path));
        QCOMPARE(reading.datagrams.size(), std::size_t(10));
        QCOMPARE(reading.lost, 50);

        if (QFileInfo::exists(QStringLiteral("/dev/full"))) {
            RecordingWriter full(QStringLiteral("/dev/full"), RecordingWriter::Existing::Overwrite);
            full.add({0s, 1, "lost"});
            full.flush();
            QVERIFY(!full.error().isEmpty());
        }
    }
};

QTEST_GUILESS_MAIN(RecordingTest)
#include "RecordingTest.moc"
