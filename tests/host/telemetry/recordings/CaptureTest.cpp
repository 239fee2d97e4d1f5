#include "telemetry/recordings/OpenDrive.h"

#include <QtCore/QTemporaryFile>
#include <QtCore/QtEndian>
#include <QtTest/QtTest>

#include <vector>

namespace {

constexpr quint16 Port = 20777;

QByteArray big16(int number)
{
    QByteArray bytes(2, '\0');
    qToBigEndian(static_cast<quint16>(number), bytes.data());
    return bytes;
}

QByteArray little32(quint32 number)
{
    QByteArray bytes(4, '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}

QByteArray udp(const QByteArray &payload)
{
    return big16(5555) + big16(Port) + big16(8 + payload.size()) + big16(0) + payload;
}

QByteArray ipv4(const QByteArray &body, int fragment = 0, int protocol = 17, int options = 0)
{
    return QByteArray(1, char(0x45 + options)) + '\0' + big16(20 + 4 * options + body.size()) +
           big16(7) + big16(fragment) + '\x40' + char(protocol) + big16(0) +
           QByteArray(8 + 4 * options, '\1') + body;
}

QByteArray ipv6(const QByteArray &body, int next = 17)
{
    return QByteArray::fromHex("60000000") + big16(body.size()) + char(next) + '\x40' +
           QByteArray(32, '\2') + body;
}

QByteArray ethernet(int type, const QByteArray &body)
{
    return QByteArray(12, '\6') + big16(type) + body;
}

QByteArray pcap(quint32 linkType, const std::vector<QByteArray> &packets, int cut = 0)
{
    QByteArray file = little32(0xa1b23c4d) + QByteArray("\2\0\4\0", 4) + QByteArray(8, '\0') +
                      little32(65535) + little32(linkType);
    quint32 nanoseconds = 0;
    for (const QByteArray &packet : packets) {
        const QByteArray kept = packet.left(packet.size() - cut);
        file += little32(1) + little32(nanoseconds++) + little32(quint32(kept.size())) +
                little32(quint32(packet.size())) + kept;
    }
    return file;
}

QByteArray pcapngBlock(quint32 type, QByteArray body)
{
    body.append(QByteArray((4 - body.size() % 4) % 4, '\0'));
    const QByteArray length = little32(quint32(12 + body.size()));
    return little32(type) + length + body + length;
}

QByteArray pcapngDevice(quint32 linkType, const QByteArray &options = {})
{
    return pcapngBlock(1, little32(linkType) + little32(65535) + options);
}

QByteArray pcapngPacket(quint32 device, quint32 ticks, const QByteArray &packet)
{
    const QByteArray size = little32(quint32(packet.size()));
    return pcapngBlock(6, little32(device) + little32(0) + little32(ticks) + size + size + packet);
}

QByteArray pcapng(const QByteArray &blocks)
{
    return pcapngBlock(0x0a0d0d0a,
                       little32(0x1a2b3c4d) + QByteArray("\1\0\0\0", 4) + QByteArray(8, '\xff')) +
           blocks;
}

struct Reading
{
    QString error;
    std::vector<Datagram> datagrams;
    QStringList remarks;
};

Reading read(const QByteArray &bytes)
{
    QTemporaryFile file;
    Reading reading;
    if (!file.open() || file.write(bytes) != bytes.size())
        return reading;
    file.close();
    const auto reader = openDrive(file.fileName(), reading.error);
    if (reader == nullptr)
        return reading;
    while (reader->next()) {}
    // What comes after a new start is what came at first.
    reader->rewind();
    while (const std::optional<Datagram> datagram = reader->next())
        reading.datagrams.push_back(*datagram);
    reading.remarks = reader->remarks();
    return reading;
}

} // namespace

class CaptureTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyWrappingGivesTheDatagram_data()
    {
        QTest::addColumn<QByteArray>("file");
        const QByteArray plain = ipv4(udp("telemetry"));
        const QByteArray six = ipv6(udp("telemetry"));
        const auto row = [](const char *name, quint32 linkType, const QByteArray &packet) {
            QTest::newRow(name) << pcap(linkType, {packet});
        };
        row("Ethernet", 1, ethernet(0x0800, plain));
        row("Ethernet, padded", 1, ethernet(0x0800, plain + QByteArray(20, '\0')));
        row("Ethernet, IPv6", 1, ethernet(0x86dd, six));
        row("VLAN", 1, ethernet(0x8100, big16(5) + big16(0x0800) + plain));
        row("VLAN in VLAN", 1,
            ethernet(0x88a8, big16(5) + big16(0x8100) + big16(6) + big16(0x86dd) + six));
        row("IP with options", 101, ipv4(udp("telemetry"), 0x4000, 17, 2));
        row("raw IPv6", 101, six);
        row("IPv4", 228, plain);
        row("IPv6", 229, six);
        row("loopback of BSD", 0, little32(2) + plain);
        row("loopback of macOS, IPv6", 0, little32(30) + six);
        row("loopback of OpenBSD", 108, QByteArray("\0\0\0\2", 4) + plain);
        row("Linux cooked", 113, QByteArray(14, '\0') + big16(0x0800) + plain);
        row("Linux cooked 2", 276, big16(0x86dd) + QByteArray(18, '\0') + six);
        row("IPv6 extensions", 101,
            ipv6(QByteArray("\x2b\1", 2) + QByteArray(14, '\0') +     // hop by hop, 16 bytes
                     QByteArray("\x3c\0", 2) + QByteArray(6, '\0') +  // routing
                     QByteArray("\x33\0", 2) + QByteArray(6, '\0') +  // destination options
                     QByteArray("\x2c\1", 2) + QByteArray(10, '\0') + // authentication, 12 bytes
                     QByteArray("\x11\0\0\0\0\0\0\0", 8) + udp("telemetry"), // a sole fragment
                 0));
        const QByteArray packet = pcapngPacket(0, 0, ethernet(0x0800, plain));
        QTest::newRow("pcapng") << pcapng(pcapngDevice(1) + packet);
        QTest::newRow("pcapng without a time")
            << pcapng(pcapngDevice(101) + pcapngBlock(3, little32(quint32(six.size())) + six));
    }

    void everyWrappingGivesTheDatagram()
    {
        QFETCH(QByteArray, file);
        const Reading reading = read(file);
        QCOMPARE(reading.error, QString());
        QCOMPARE(reading.datagrams.size(), std::size_t(1));
        QCOMPARE(reading.datagrams[0].sender.toPort, Port);
        QCOMPARE(reading.datagrams[0].payload, QByteArray("telemetry"));
        QVERIFY(reading.remarks.isEmpty());
    }

    void timesKeepTheirNanoseconds()
    {
        const QByteArray packet = ipv4(udp("t"));
        const Reading reading = read(pcap(101, {packet, packet}));
        QCOMPARE(reading.datagrams[0].time.count(), 1'000'000'000);
        QCOMPARE(reading.datagrams[1].time.count(), 1'000'000'001);
        const auto ticks = [&packet](const QByteArray &options) {
            return read(pcapng(pcapngDevice(101, options) + pcapngPacket(0, 3'000'001, packet)))
                .datagrams.at(0)
                .time.count();
        };
        QCOMPARE(ticks({}), 3'000'001'000);
        const QByteArray resolution("\x09\0\1\0", 4);
        QCOMPARE(ticks(resolution + little32(9)), 3'000'001);
        QCOMPARE(ticks(resolution + little32(0x80 + 20)), 2'861'023'903); // 2^-20 s.
        QCOMPARE(ticks(QByteArray("\x0e\0\x08\0", 4) + little32(7) + little32(0)), 10'000'001'000);
    }

    void eachInterfaceOfAPcapngHasItsOwnLinkType()
    {
        const QByteArray packet = ipv4(udp("t"));
        const QByteArray file =
            pcapng(pcapngDevice(1) + pcapngDevice(0) + pcapngDevice(105) +
                   pcapngPacket(0, 1, ethernet(0x0800, packet)) + pcapngPacket(2, 2, "wireless") +
                   pcapngPacket(1, 3, little32(2) + packet));
        const Reading reading = read(file);
        QCOMPARE(reading.datagrams.size(), std::size_t(2));
        QCOMPARE(reading.remarks.size(), 1);
        QCOMPARE(
            reading.remarks[0],
            QStringLiteral("1 packet of a kind that isn't read here was passed over: 802.11."));
        for (int size = 4; size < file.size(); ++size)
            QVERIFY(read(file.left(size)).datagrams.size() < 2);
    }

    void piecesAreToldOnceAndOthersPassedOver()
    {
        const QByteArray whole = ipv4(udp("whole"));
        const Reading reading =
            read(pcap(101, {ipv4(udp("a"), 0x2000), ipv4("b", 3),
                            ipv6(QByteArray("\x11\0\0\1\0\0\0\0", 8), 44), ipv4("tcp", 0, 6),
                            ipv6("tcp", 6), "", R"(E)", "nonsense", whole}));
        QCOMPARE(reading.datagrams.size(), std::size_t(1));
        QCOMPARE(reading.remarks.size(), 1);
        QVERIFY2(reading.remarks[0].startsWith(QStringLiteral("3 pieces")),
                 qPrintable(reading.remarks[0]));
    }

    void packetsThatWereCutOffAreToldOnce()
    {
        const QByteArray packet = ipv4(udp("telemetry"));
        for (int cut = 1; cut <= packet.size() - 20; ++cut) {
            const Reading reading = read(pcap(101, {packet, packet}, cut));
            QVERIFY(reading.datagrams.empty());
            QCOMPARE(reading.remarks.size(), 1);
            QVERIFY(reading.remarks[0].startsWith(QStringLiteral("2 packets are cut off")));
        }
    }

    void aFileThatWasCutOffGivesItsWholePackets()
    {
        const QByteArray packet = ipv4(udp("telemetry"));
        const QByteArray file = pcap(101, {packet, packet});
        const int first = file.size() - packet.size() - 16;
        for (int size = 0; size < file.size(); ++size) {
            const Reading reading = read(file.left(size));
            QCOMPARE(reading.error.isEmpty(), size >= 24);
            QCOMPARE(reading.datagrams.size(), std::size_t(size >= first ? 1 : 0));
            QCOMPARE(reading.remarks.isEmpty(), size <= 24 || size == first);
        }
    }

    void whatIsNoCaptureIsRefusedWithAReason()
    {
        QVERIFY(read(pcap(105, {"wireless"})).error.contains(QStringLiteral("802.11")));
        QVERIFY(read("").error.contains(QStringLiteral("empty")));
        QVERIFY(read("Lap one\n").error.contains(QStringLiteral("no capture")));
        QVERIFY(read("\x8b"
                     "DRIV\r\n\x1a\1")
                    .error.contains(QStringLiteral("earlier version")));
    }
};

QTEST_GUILESS_MAIN(CaptureTest)
#include "CaptureTest.moc"
