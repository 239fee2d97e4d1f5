#pragma once

#include "telemetry/feeds/Datagram.h"

#include <QtCore/QByteArray>

/// How the packets of a capture are wrapped: what comes before the IP header.
enum class LinkLayer {
    Ethernet,
    RawIp,          ///< Nothing.
    Loopback,       ///< Four bytes that name the protocol, as BSD and macOS capture it.
    LinuxCooked,    ///< What Linux captures on "any" device.
    LinuxCookedTwo, ///< The same in its second version.
};

/// What a captured packet holds.
struct CapturedPacket
{
    enum class Kind {
        Udp,       ///< A whole datagram.
        Other,     ///< Another protocol, or nonsense.
        Fragment,  ///< A piece of an IP packet.
        Truncated, ///< UDP that the capture cut off.
    };

    Kind kind = Kind::Other;
    Datagram::Sender sender; ///< `Udp` only, like the payload.
    QByteArray payload;
};

/// Extracts the datagram of a captured packet: UDP over IPv4 or IPv6, behind VLAN tags and
/// extension headers. Any bytes are safe.
CapturedPacket decodePacket(LinkLayer link, const QByteArray &packet);
