#include "RecordingReader.h"

#include "RecordingFormat.h"

#include <QtCore/QtEndian>

#include <algorithm>
#include <cstring>

namespace {

using namespace RecordingFormat;

constexpr int Chunk = 32 * 1024;

/// A record's checksum may cost 64 KiB of work for each marker, of which a hostile file has one in
/// four bytes. No real damage comes near this number.
constexpr int MostFailedRecords = 1000;

template<typename Number> Number numberAt(const char *bytes)
{
    return qFromLittleEndian<Number>(bytes);
}

} // namespace

bool RecordingReader::recognises(const QByteArray &beginning)
{
    return beginning.startsWith(QByteArray::fromRawData(Magic, sizeof Magic));
}

std::unique_ptr<RecordingReader> RecordingReader::open(std::unique_ptr<QIODevice> device,
                                                       QString &error)
{
    std::unique_ptr<RecordingReader> reader(new RecordingReader(std::move(device)));
    error = reader->readHead();
    if (!error.isEmpty())
        return nullptr;
    return reader;
}

RecordingReader::RecordingReader(std::unique_ptr<QIODevice> device)
    : device(std::move(device))
{
}

QString RecordingReader::readHead()
{
    if (!have(sizeof Magic) || !recognises(window))
        return QStringLiteral("is no recording of a drive.");
    if (!have(HeadSize))
        return QStringLiteral("ends within its head, before the first datagram.");
    const char *bytes = window.constData();
    // Each record has a checksum of its own, so a damaged head costs no more than what it tells.
    if (checksum(bytes, HeadSize - ChecksumSize) ==
        numberAt<quint32>(bytes + HeadSize - ChecksumSize)) {
        const auto version = numberAt<quint32>(bytes + 8);
        if (version != Version) {
            return QStringLiteral("is a recording of version %1; this program reads version %2.")
                .arg(version)
                .arg(Version);
        }
        started = QDateTime::fromMSecsSinceEpoch(numberAt<qint64>(bytes + 12));
    }
    pass(HeadSize);
    return {};
}

std::optional<Datagram> RecordingReader::next()
{
    while (failedRecords < MostFailedRecords && have(1)) {
        if (std::optional<Datagram> datagram = recordHere())
            return datagram;
        ++failedRecords;
        passToMarker();
    }
    while (have(1)) {
        const int rest = window.size() - at;
        pass(rest);
        lost += rest;
    }
    return std::nullopt;
}

void RecordingReader::rewind()
{
    device->seek(0);
    window.clear();
    at = 0;
    lost = 0;
    failedRecords = 0;
    readHead();
}

QStringList RecordingReader::remarks() const
{
    if (lost == 0)
        return {};
    return {QStringLiteral("%1 bytes are damaged or cut off and were passed over.").arg(lost)};
}

/// Brings `size` bytes, a chunk at most, into the window; false if the file has fewer left.
bool RecordingReader::have(int size)
{
    if (window.size() - at >= size)
        return true;
    window.remove(0, at);
    at = 0;
    while (window.size() < size) {
        const QByteArray more = device->read(Chunk);
        if (more.isEmpty())
            return false;
        window.append(more);
    }
    return true;
}

void RecordingReader::pass(int size)
{
    at += size;
}

std::optional<Datagram> RecordingReader::recordHere()
{
    if (!have(RecordOverhead) || std::memcmp(window.constData() + at, Marker, sizeof Marker) != 0)
        return std::nullopt;
    const int length = numberAt<quint16>(window.constData() + at + 4);
    const int covered = RecordHeadSize + length;
    if (!have(covered + ChecksumSize))
        return std::nullopt;
    const char *record = window.constData() + at;
    if (checksum(record, covered) != numberAt<quint32>(record + covered))
        return std::nullopt;
    Datagram datagram{std::chrono::nanoseconds(numberAt<qint64>(record + 8)),
                      numberAt<quint16>(record + 6), QByteArray(record + RecordHeadSize, length)};
    pass(covered + ChecksumSize);
    return datagram;
}

/// Passes at least one byte, up to the next marker or the end.
void RecordingReader::passToMarker()
{
    int from = 1;
    while (have(from + int(sizeof Marker))) {
        const int found = window.indexOf(QByteArray::fromRawData(Marker, sizeof Marker), at + from);
        // A marker may lie across the window's end.
        const int passed = found >= 0 ? found - at : window.size() - at - int(sizeof Marker) + 1;
        pass(passed);
        lost += passed;
        if (found >= 0)
            return;
        from = 0;
    }
    const int rest = window.size() - at;
    pass(rest);
    lost += rest;
}
