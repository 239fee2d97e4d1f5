#include "FeedRig.h"
#include "support/SystemLimits.h"
#include "telemetry/recordings/RecordingWriter.h"

#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTemporaryFile>
#include <QtTest/QtTest>

#include <cerrno>

using namespace std::chrono_literals;
using Existing = RecordingWriter::Existing;

namespace {

/// A packet, and what stands in for a part of it from `at` on.
QByteArray with(QByteArray packet, int at, const QByteArray &bytes)
{
    return packet.replace(at, bytes.size(), bytes);
}

QByteArray hex(const char *digits)
{
    return QByteArray::fromHex(digits);
}

template<typename... Numbers> QByteArray little(Numbers... numbers)
{
    Packet packet(4 * sizeof...(numbers));
    int at = 0;
    (packet.put(4 * at++, static_cast<quint32>(numbers)), ...);
    return packet;
}

QByteArray ipv4()
{
    return hex("4500002500070000401100000101010101010101 15b3115c00110000") + "telemetry";
}

QByteArray ipv6()
{
    return hex("6000000000111140") + QByteArray(32, '\2') + hex("15b3115c00110000") + "telemetry";
}

/// A file of packets, without the last bytes of each, 1 s and 0, 1 and more nanoseconds after 1970.
QByteArray pcap(int linkType, const std::vector<QByteArray> &packets, int cut = 0)
{
    QByteArray file = little(0xa1b23c4d, 0x40002, 0, 0, 65535, linkType);
    int nanoseconds = 0;
    for (const QByteArray &packet : packets) {
        file += little(1, nanoseconds++, packet.size() - cut, packet.size());
        file += packet.left(packet.size() - cut);
    }
    return file;
}

QByteArray block(quint32 type, QByteArray body)
{
    body.append(QByteArray((4 - body.size() % 4) % 4, '\0'));
    return little(type, 12 + body.size()) + body + little(12 + body.size());
}

QByteArray device(int linkType, const QByteArray &options = {})
{
    return block(1, little(linkType, 65535) + options);
}

QByteArray packetOf(int device, int ticks, const QByteArray &packet)
{
    return block(6, little(device, 0, ticks, packet.size(), packet.size()) + packet);
}

QByteArray pcapng(const QByteArray &blocks)
{
    return block(0x0a0d0d0a, little(0x1a2b3c4d, 1, -1, -1)) + blocks;
}

ReadDrive read(const QByteArray &bytes)
{
    QTemporaryFile file;
    if (!file.open() || file.write(bytes) != bytes.size())
        qFatal("no temporary file");
    file.close();
    return ReadDrive(file.fileName());
}

} // namespace

class DriveFileTest : public QObject
{
    Q_OBJECT

private:
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.pcap"));
    const Datagram::Sender game{QHostAddress(QStringLiteral("192.168.1.7")), 50001, 4444};
    const Datagram::Sender other{QHostAddress(QStringLiteral("2001:db8::8")), 65535, 20777};

private Q_SLOTS:
    void cleanup() { QFile::remove(path); }

    void everyWrappingGivesTheDatagram()
    {
        // Hop by hop of 16 bytes, routing, destination options, authentication of 12 bytes, and the
        // sole piece of a fragmented packet.
        const QByteArray extensions = hex("2b01") + QByteArray(14, '\0') + hex("3c00000000000000") +
                                      hex("3300000000000000") + hex("2c01") + QByteArray(10, '\0') +
                                      hex("1100000000000000");
        const QByteArray ethernet(12, '\6');
        const QByteArray section = pcapng(device(101) + packetOf(0, 0, ipv4()));
        const QByteArray files[] = {
            pcap(1, {ethernet + hex("0800") + ipv4() + "padding"}),
            pcap(1, {ethernet + hex("88a80005 81000006 86dd") + ipv6()}), // Two VLAN tags.
            pcap(101, {with(ipv4(), 0, hex("46")).insert(20, "opti")}),
            pcap(101, {with(ipv6(), 6, hex("00")).insert(40, extensions)}), pcap(228, {ipv4()}),
            pcap(229, {ipv6()}), pcap(0, {little(2) + ipv4()}),
            pcap(108, {hex("00000018") + ipv6()}),
            pcap(113, {QByteArray(14, '\0') + hex("0800") + ipv4()}),
            pcap(276, {hex("86dd") + QByteArray(18, '\0') + ipv6()}),
            // Written by a big-endian computer.
            hex("a1b23c4d 00020004 00000000 00000000 0000ffff 00000065 00000001 00000000 00000025 "
                "00000025") +
                ipv4(),
            section, pcapng(device(0)) + section,
            pcapng(device(101) + block(3, little(ipv6().size()) + ipv6())), // Without a time.
        };
        for (const QByteArray &file : files) {
            const ReadDrive drive = read(file);
            QVERIFY2(drive.datagrams.size() == 1, file.toHex());
            QCOMPARE(drive.datagrams[0].sender.port, quint16(5555));
            QCOMPARE(drive.datagrams[0].sender.toPort, quint16(4444));
            QCOMPARE(drive.datagrams[0].payload, QByteArray("telemetry"));
            QCOMPARE(drive.remarks, QStringList());
        }
    }

    void timesKeepTheirNanoseconds()
    {
        const ReadDrive drive = read(pcap(101, {ipv4(), ipv4()}));
        QCOMPARE(drive.datagrams.at(1).time.count(), 1'000'000'001);
        for (const auto &[options, nanoseconds] :
             {std::pair{QByteArray(), 3'000'001'000},
              {little(0x10009, 9), 3'000'001},
              {little(0x10009, 0x80 + 20), 2'861'023'903}, // 2^-20 s.
              {little(0x8000e, 7, 0), 10'000'001'000},
              {little(0x10009, 9, 0x8000e, 7, 0), 7'003'000'001}}) {
            const QByteArray packet = packetOf(0, 3'000'001, ipv4());
            QCOMPARE(read(pcapng(device(101, options) + packet)).datagrams.at(0).time.count(),
                     nanoseconds);
        }
    }

    void whatIsPassedOverIsToldOnce()
    {
        const QByteArray file =
            pcapng(device(101) + device(0) + device(105) + packetOf(0, 1, ipv4()) +
                   packetOf(2, 2, "wireless") + packetOf(1, 3, little(2) + ipv4()));
        const ReadDrive blocks = read(file);
        QCOMPARE(blocks.datagrams.size(), std::size_t(2));
        QVERIFY(
            blocks.remarks.join(u'|').endsWith(QStringLiteral("802.11, which are skipped: 1.")));
        for (int size = 4; size < file.size(); ++size)
            QVERIFY(read(file.left(size)).datagrams.size() < 2);

        const ReadDrive pieces = read(pcap(
            101, {with(ipv4(), 6, hex("2000")), with(ipv4(), 6, hex("0003")),
                  with(ipv6(), 6, hex("2c")).insert(40, hex("1100000100000000")),
                  with(ipv4(), 9, hex("06")), with(ipv6(), 6, hex("06")), "", "E", "?!", ipv4()}));
        QCOMPARE(pieces.datagrams.size(), std::size_t(1));
        QVERIFY(pieces.remarks.join(u'|').endsWith(QStringLiteral(" 3.")));
        for (int cut = 1; cut <= ipv4().size() - 20; ++cut) {
            const ReadDrive drive = read(pcap(101, {ipv4(), ipv4()}, cut));
            QVERIFY(drive.datagrams.empty());
            QVERIFY(drive.remarks.join(u'|').endsWith(QStringLiteral(" 2.")));
        }
    }

    void aFileThatWasCutOffGivesItsWholePackets()
    {
        const QByteArray file = pcap(101, {ipv4(), ipv4()});
        const int first = file.size() - ipv4().size() - 16;
        for (int size = 0; size < file.size(); ++size) {
            const ReadDrive drive = read(file.left(size));
            QCOMPARE(drive.error.isEmpty(), size >= 24);
            QCOMPARE(drive.datagrams.size(), std::size_t(size >= first ? 1 : 0));
            QCOMPARE(drive.remarks.isEmpty(), size <= 24 || size == first);
        }
    }

    void whatIsNoCaptureIsRefusedWithAReason()
    {
        for (const auto &[file, reason] : {std::pair{pcap(105, {"wireless"}), "802.11"},
                                           {QByteArray(), "empty"},
                                           {QByteArray("Lap one\n"), "neither"},
                                           {hex("8b445249560d0a1a01"), "earlier version"}})
            QVERIFY2(read(file).error.contains(QLatin1String(reason)), reason);
    }

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

QTEST_GUILESS_MAIN(DriveFileTest)
#include "DriveFileTest.moc"
