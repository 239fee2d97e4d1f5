#pragma once

#include "telemetry/feeds/Datagram.h"

/// Wraps datagrams into the bytes of a pcap file, as a capture of raw IP.
namespace PacketEncoder {

inline constexpr int LargestPayload = 65'507; ///< Of UDP over IPv4.
inline constexpr int PacketHeaderSize = 16;   ///< Before each packet in the file.

QByteArray fileHeader();

/// Appends a packet: the payload, `LargestPayload` bytes at most, behind headers of IP and UDP. The
/// destination is the unspecified address, since nobody noted it. `time` is since 1970, cut to
/// microseconds.
void append(QByteArray &file, const Datagram &datagram, std::chrono::nanoseconds time);

/// Size in the file of the packet that begins here, with its header.
int sizeOfPacket(const char *begin);

} // namespace PacketEncoder
