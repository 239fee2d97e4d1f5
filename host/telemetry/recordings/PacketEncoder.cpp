#include "PacketEncoder.h"

#include <QtCore/QtEndian>

namespace {

constexpr int UdpHeaderSize = 8;
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

/// The checksum of IP and UDP, RFC 1071. An odd last byte counts as padded.
quint16 checksum(const QByteArray &bytes)
{
    quint32 sum = 0;
    for (int i = 0; i < bytes.size(); ++i)
        sum += quint32{static_cast<quint8>(bytes.at(i))} << (i % 2 == 0 ? 8 : 0);
    while (sum > 0xffff)
        sum = (sum & 0xffff) + (sum >> 16);
    return static_cast<quint16>(~sum);
}

/// Sender and unspecified receiver as in the header of IP.
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
    const int size = UdpHeaderSize + datagram.payload.size();
    QByteArray header;
    big16(header, datagram.sender.port);
    big16(header, datagram.sender.toPort);
    big16(header, size);
    QByteArray pseudoHeader = addresses;
    big16(pseudoHeader, Udp);
    big16(pseudoHeader, size);
    const quint16 sum = checksum(pseudoHeader + header + datagram.payload);
    big16(header, sum == 0 ? 0xffff : sum); // 0 would mean that there is none.
    return header + datagram.payload;
}

QByteArray ipv4(const QByteArray &addresses, const QByteArray &body)
{
    constexpr int HeaderSize = 20;
    QByteArray header = QByteArray::fromHex("4500");
    big16(header, HeaderSize + body.size());
    header += QByteArray(4, '\0'); // Not a fragment.
    header.append(HopLimit).append(Udp);
    QByteArray summed = header;
    big16(header, checksum(summed + addresses));
    return header + addresses + body;
}

QByteArray ipv6(const QByteArray &addresses, const QByteArray &body)
{
    QByteArray header = QByteArray::fromHex("60000000");
    big16(header, body.size());
    header.append(Udp).append(HopLimit);
    return header + addresses + body;
}

} // namespace

QByteArray PacketEncoder::fileHeader()
{
    constexpr quint32 Microseconds = 0xa1b2c3d4;
    constexpr quint32 LongestPacket = 262'144;
    constexpr quint32 RawIp = 101;
    QByteArray header;
    little(header, Microseconds);
    little(header, quint16{2}); // The version of the format, 2.4.
    little(header, quint16{4});
    header += QByteArray(8, '\0'); // UTC.
    little(header, LongestPacket);
    little(header, RawIp);
    return header;
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
    little(file, static_cast<quint32>(packet.size())); // Captured,
    little(file, static_cast<quint32>(packet.size())); // and sent.
    file += packet;
}

int PacketEncoder::sizeOfPacket(const char *begin)
{
    constexpr int KeptAt = 8;
    return PacketHeaderSize + static_cast<int>(qFromLittleEndian<quint32>(begin + KeptAt));
}
