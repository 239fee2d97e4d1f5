#include "telemetry/recordings/Playback.h"
#include "telemetry/recordings/RecordingReader.h"

#include <QtCore/QBuffer>

#include <cstdlib>

// Any file plays to its end: every byte is accounted for, and no place runs back.

namespace {

void check(bool holds)
{
    if (!holds)
        std::abort();
}

std::unique_ptr<RecordingReader> open(const QByteArray &bytes)
{
    auto buffer = std::make_unique<QBuffer>();
    buffer->setData(bytes);
    buffer->open(QIODevice::ReadOnly);
    QString error;
    auto reader = RecordingReader::open(std::move(buffer), error);
    check((reader == nullptr) != error.isEmpty());
    return reader;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    constexpr qint64 HeadSize = 24;
    constexpr qint64 RecordOverhead = 20;
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<int>(size));
    const auto reader = open(bytes);
    if (reader == nullptr)
        return 0;
    qint64 whole = 0;
    while (const std::optional<Datagram> datagram = reader->next())
        whole += RecordOverhead + datagram->payload.size();
    check(HeadSize + whole + reader->lostBytes() == bytes.size());

    Playback playback(open(bytes), {});
    std::chrono::nanoseconds last{0};
    while (const std::optional<Datagram> datagram = playback.take(std::chrono::hours(24 * 365))) {
        check(datagram->time >= last);
        last = datagram->time;
    }
    return 0;
}
