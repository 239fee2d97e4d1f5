#include "telemetry/recordings/CaptureReader.h"

#include <QtCore/QString>

#include <cstdlib>

#include <sys/mman.h>
#include <unistd.h>

// Any file is read to its end, with libpcap and behind it.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    // libpcap opens files by name; this one lies in memory.
    static const int file = memfd_create("capture", 0);
    static const QString path = QStringLiteral("/proc/self/fd/%1").arg(file);
    if (ftruncate(file, 0) != 0 || pwrite(file, data, size, 0) != static_cast<ssize_t>(size))
        std::abort();
    QString error;
    const auto reader = CaptureReader::open(path, error);
    if ((reader == nullptr) == error.isEmpty())
        std::abort();
    if (reader == nullptr)
        return 0;
    while (const std::optional<Datagram> datagram = reader->next())
        if (datagram->payload.size() > 65'535)
            std::abort();
    reader->remarks();
    return 0;
}
