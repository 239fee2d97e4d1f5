#include "PacketDecoder.h"

#include <QtCore/QtEndian>

namespace {

using Kind = CapturedPacket::Kind;

constexpr int UdpHeaderSize = 8;
constexpr int Ipv6HeaderSize = 40;

enum EtherType : quint16 { Ipv4 = 0x0800, Ipv6 = 0x86dd, Vlan = 0x8100, ProviderVlan = 0x88a8 };

enum IpProtocol : quint8 {
    HopByHop = 0,
    Udp = 17,
    Routing = 43,
    FragmentHeader = 44,
    Authentication = 51,
    DestinationOptions = 60,
};

/// The bytes of a packet that haven't been read yet.
class Rest
{
public:
    explicit Rest(const QByteArray &packet)
        : bytes(packet)
    {
    }

    bool has(int count) const { return bytes.size() - at >= count; }
    int size() const { return bytes.size() - at; }
    quint8 byte(int offset) const { return static_cast<quint8>(bytes.at(at + offset)); }
    quint16 word(int offset) const
    {
        return qFromBigEndian<quint16>(bytes.constData() + at + offset);
    }
    void pass(int count) { at += count; }
    const char *data() const { return bytes.constData() + at; }
    QByteArray mid(int offset, int length) const { return bytes.mid(at + offset, length); }

private:
    const QByteArray &bytes;
    int at = 0;
};

CapturedPacket udp(const Rest &rest, const QHostAddress &from)
{
    if (!rest.has(UdpHeaderSize))
        return {Kind::Truncated, {}, {}};
    const int length = rest.word(4);
    if (length < UdpHeaderSize)
        return {};
    if (!rest.has(length))
        return {Kind::Truncated, {}, {}};
    return {Kind::Udp,
            {from, rest.word(0), rest.word(2)},
            rest.mid(UdpHeaderSize, length - UdpHeaderSize)};
}

CapturedPacket ipv4(Rest rest)
{
    constexpr int LeastHeader = 20;
    constexpr quint16 MoreFragments = 0x2000;
    constexpr quint16 FragmentOffset = 0x1fff;
    if (!rest.has(LeastHeader) || rest.byte(0) >> 4 != 4)
        return {};
    const int header = (rest.byte(0) & 0x0f) * 4;
    if (header < LeastHeader || rest.byte(9) != Udp)
        return {};
    if ((rest.word(6) & (MoreFragments | FragmentOffset)) != 0)
        return {Kind::Fragment, {}, {}};
    if (!rest.has(header))
        return {Kind::Truncated, {}, {}};
    const QHostAddress from(qFromBigEndian<quint32>(rest.data() + 12));
    rest.pass(header);
    return udp(rest, from);
}

CapturedPacket ipv6(Rest rest)
{
    constexpr quint16 OffsetAndMore = 0xfff9;
    if (!rest.has(Ipv6HeaderSize) || rest.byte(0) >> 4 != 6)
        return {};
    quint8 next = rest.byte(6);
    const QHostAddress from(reinterpret_cast<const quint8 *>(rest.data() + 8));
    rest.pass(Ipv6HeaderSize);
    while (next != Udp) {
        if (!rest.has(8))
            return {};
        int length = 8;
        switch (next) {
        case HopByHop:
        case Routing:
        case DestinationOptions:
            length = (rest.byte(1) + 1) * 8;
            break;
        case Authentication:
            length = (rest.byte(1) + 2) * 4;
            break;
        case FragmentHeader:
            if ((rest.word(2) & OffsetAndMore) != 0)
                return {rest.byte(0) == Udp ? Kind::Fragment : Kind::Other, {}, {}};
            break;
        default:
            return {};
        }
        if (!rest.has(length))
            return {};
        next = rest.byte(0);
        rest.pass(length);
    }
    return udp(rest, from);
}

CapturedPacket ip(const Rest &rest)
{
    if (!rest.has(1))
        return {};
    return rest.byte(0) >> 4 == 6 ? ipv6(rest) : ipv4(rest);
}

/// A packet behind a link header of `size` bytes, which names the protocol at `typeAt`.
CapturedPacket behindEtherType(Rest rest, int size, int typeAt)
{
    constexpr int TagSize = 4;
    if (!rest.has(size))
        return {};
    quint16 type = rest.word(typeAt);
    rest.pass(size);
    while (type == Vlan || type == ProviderVlan) {
        if (!rest.has(TagSize))
            return {};
        type = rest.word(2);
        rest.pass(TagSize);
    }
    if (type == Ipv4)
        return ipv4(rest);
    return type == Ipv6 ? ipv6(rest) : CapturedPacket{};
}

} // namespace

CapturedPacket decodePacket(LinkLayer link, const QByteArray &packet)
{
    constexpr int FamilySize = 4;
    Rest rest(packet);
    switch (link) {
    case LinkLayer::Ethernet:
        return behindEtherType(rest, 14, 12);
    case LinkLayer::LinuxCooked:
        return behindEtherType(rest, 16, 14);
    case LinkLayer::LinuxCookedTwo:
        return behindEtherType(rest, 20, 0);
    case LinkLayer::RawIp:
        return ip(rest);
    case LinkLayer::Loopback:
        // Systems number protocols differently, but the IP header holds its own version.
        if (!rest.has(FamilySize))
            return {};
        rest.pass(FamilySize);
        return ip(rest);
    }
    Q_UNREACHABLE();
}
