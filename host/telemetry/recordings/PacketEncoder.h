#pragma once

#include "telemetry/feeds/Datagram.h"

/// Wraps datagrams into the bytes of a pcap file, as a capture of raw IP.
namespace PacketEncoder {

inline constexpr int LargestPayload = 65'507; ///< Of UDP over IPv4.
inline constexpr int PacketHeadSize = 16;     ///< In front of each packet in the file.

QByteArray fileHead();

/// Adds a packet with IP and UDP in front of the payload, of `LargestPayload` at most. The address
/// that it went to is the unspecified one, since nobody noted it. `time` counts from 1970 and keeps
/// its microseconds.
void append(QByteArray &file, const Datagram &datagram, std::chrono::nanoseconds time);

/// How long the packet that begins here is in the file, head included.
int sizeOfPacket(const char *begin);

} // namespace PacketEncoder
