#include "RecordingFormat.h"

#include <zlib.h>

std::uint32_t RecordingFormat::checksum(const char *bytes, int size)
{
    return static_cast<std::uint32_t>(
        crc32(0, reinterpret_cast<const Bytef *>(bytes), static_cast<uInt>(size)));
}
