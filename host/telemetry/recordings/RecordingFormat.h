#pragma once

#include <QtCore/QByteArray>

#include <cstdint>

/// The layout of a recording; docs/recordings.md tells it to others.
namespace RecordingFormat {

/// As in PNG, the first byte and the line ends give away a file that went through a text transfer.
inline constexpr char Magic[8] = {'\x8b', 'D', 'R', 'I', 'V', '\r', '\n', '\x1a'};
inline constexpr char Marker[4] = {'D', 'G', 'R', 'M'}; ///< In front of each record.
inline constexpr std::uint32_t Version = 1;

inline constexpr int HeadSize = 24;       ///< Magic, version, date, checksum.
inline constexpr int RecordHeadSize = 16; ///< Marker, length, port, time.
inline constexpr int ChecksumSize = 4;    ///< Behind the payload, over head and payload.
inline constexpr int RecordOverhead = RecordHeadSize + ChecksumSize;

/// CRC-32 as in zlib and PNG.
std::uint32_t checksum(const char *bytes, int size);

} // namespace RecordingFormat
