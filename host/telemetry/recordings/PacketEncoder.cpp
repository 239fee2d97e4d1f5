#include "PacketEncoder.h"

#include <QtCore/QtEndian>

namespace {

constexpr int UdpHeadSize = 8;
constexpr char Udp = 17;
constexpr char HopLimit = 64;

template<typename Number> void little(QByteArray &bytes, Number number)
{
    number = qToLittleEndian(number);
    bytes.append(reinterpret_cast<const char *>(&number), sizeof number);
}

void big16(QByteArray &bytes, int number)
{
    bytes.append(static_cast<char>(number >> 8)).append(static_cast<char>(number));
}

/// The sum of IP and UDP, RFC 1071, over bytes of which an odd last one counts as padded.
quint16 checksum(const QByteArray &bytes)
{
    quint32 sum = 0;
    for (int i = 0; i < bytes.size(); ++i)
        sum += quint32{static_cast<quint8>(bytes.at(i))} << (i % 2 == 0 ? 8 : 0);
    while (sum > 0xffff)
        sum = (sum & 0xffff) + (sum >> 16);
    return static_cast<quint16>(~sum);
}

/// Sender and unspecified receiver, as they stand in the head of IP.
QByteArray addresses(const QHostAddress &sender, bool isIpv4)
{
    QByteArray bytes;
    if (isIpv4) {
        const quint32 address = qToBigEndian(sender.toIPv4Address());
        bytes.append(reinterpret_cast<const char *>(&address), sizeof address);
    } else {
        const Q_IPV6ADDR address = sender.toIPv6Address();
        bytes.append(reinterpret_cast<const char *>(address.c), sizeof address.c);
    }
    return bytes + QByteArray(bytes.size(), '\0');
}

QByteArray udp(const Datagram &datagram, const QByteArray &addresses)
{
    const int size = UdpHeadSize + datagram.payload.size();
    QByteArray head;
    big16(head, datagram.sender.port);
    big16(head, datagram.sender.toPort);
    big16(head, size);
    QByteArray pseudoHead = addresses;
    big16(pseudoHead, Udp);
    big16(pseudoHead, size);
    const quint16 sum = checksum(pseudoHead + head + datagram.payload);
    big16(head, sum == 0 ? 0xffff : sum); // 0 would say that there is none.
    return head + datagram.payload;
}

QByteArray ipv4(const QByteArray &addresses, const QByteArray &body)
{
    constexpr int HeadSize = 20;
    QByteArray head = QByteArray::fromHex("4500");
    big16(head, HeadSize + body.size());
    head += QByteArray(4, '\0'); // Not a fragment.
    head.append(HopLimit).append(Udp);
    QByteArray summed = head;
    big16(head, checksum(summed + addresses));
    return head + addresses + body;
}

QByteArray ipv6(const QByteArray &addresses, const QByteArray &body)
{
    QByteArray head = QByteArray::fromHex("60000000");
    big16(head, body.size());
    head.append(Udp).append(HopLimit);
    return head + addresses + body;
}

} // namespace

QByteArray PacketEncoder::fileHead()
{
    constexpr quint32 Microseconds = 0xa1b2c3d4;
    constexpr quint32 LongestPacket = 262'144;
    constexpr quint32 RawIp = 101;
    QByteArray head;
    little(head, Microseconds);
    little(head, quint16{2}); // The version of the format, 2.4.
    little(head, quint16{4});
    head += QByteArray(8, '\0'); // UTC.
    little(head, LongestPacket);
    little(head, RawIp);
    return head;
}

void PacketEncoder::append(QByteArray &file, const Datagram &datagram,
                           std::chrono::nanoseconds time)
{
    bool isIpv4 = false;
    datagram.sender.address.toIPv4Address(&isIpv4);
    const QByteArray between = addresses(datagram.sender.address, isIpv4);
    const QByteArray body = udp(datagram, between);
    const QByteArray packet = isIpv4 ? ipv4(between, body) : ipv6(between, body);
    const auto microseconds = std::chrono::duration_cast<std::chrono::microseconds>(time).count();
    little(file, static_cast<quint32>(microseconds / 1'000'000));
    little(file, static_cast<quint32>(microseconds % 1'000'000));
    little(file, static_cast<quint32>(packet.size())); // What is kept of it,
    little(file, static_cast<quint32>(packet.size())); // and how long it was.
    file += packet;
}

int PacketEncoder::sizeOfPacket(const char *begin)
{
    constexpr int KeptAt = 8;
    return PacketHeadSize + static_cast<int>(qFromLittleEndian<quint32>(begin + KeptAt));
}
