#include "RecordingWriter.h"

#include "PacketEncoder.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

namespace {

constexpr std::chrono::milliseconds FlushPeriod(500);

} // namespace

RecordingWriter::RecordingWriter(const QString &path, Existing existing)
    : file(path)
    , shownPath(QDir::toNativeSeparators(path))
{
    if (!open(existing))
        return;
    thread.start([this] {
        while (thread.waitUntil(std::chrono::steady_clock::now() + FlushPeriod))
            writeOut();
    });
}

RecordingWriter::~RecordingWriter()
{
    thread.stop();
    writeOut();
    if (file.isOpen() && !wasThere && counts.datagrams == 0)
        file.remove();
}

bool RecordingWriter::open(Existing existing)
{
    const QFileInfo there(file.fileName());
    wasThere = existing == Existing::Overwrite && there.exists();
    // With `Keep` the file must be new. To look first would leave a moment in which it can appear.
    const QIODevice::OpenMode mode = existing == Existing::Keep
                                         ? QIODevice::WriteOnly | QIODevice::NewOnly
                                         : QIODevice::ReadWrite;
    if (file.open(mode | QIODevice::Unbuffered))
        return true;
    if (existing == Existing::Keep && there.exists() && !there.isDir()) {
        errorText = QStringLiteral("'%1' already exists; --force overwrites it.").arg(shownPath);
    } else {
        errorText = QStringLiteral("Could not create '%1': %2.")
                        .arg(shownPath,
                             there.isDir() ? QStringLiteral("it is a folder") : file.errorString());
    }
    return false;
}

void RecordingWriter::add(const Datagram &datagram)
{
    const std::lock_guard guard(mutex);
    const bool fits = datagram.payload.size() <= PacketEncoder::LargestPayload &&
                      backlog.size() + datagram.payload.size() <= LargestBacklog;
    if (!fits || !errorText.isEmpty()) {
        ++counts.dropped;
        return;
    }
    const int before = backlog.size();
    if (!sinceEpoch) {
        sinceEpoch = std::chrono::system_clock::now().time_since_epoch() - datagram.time;
        backlog = PacketEncoder::fileHeader();
    }
    PacketEncoder::append(backlog, datagram, *sinceEpoch + datagram.time);
    ++counts.datagrams;
    counts.bytes += backlog.size() - before;
}

void RecordingWriter::flush()
{
    writeOut();
}

RecordingWriter::Progress RecordingWriter::progress() const
{
    const std::lock_guard guard(mutex);
    return counts;
}

QString RecordingWriter::error() const
{
    const std::lock_guard guard(mutex);
    return errorText;
}

void RecordingWriter::writeOut()
{
    const std::lock_guard fileGuard(fileMutex);
    QByteArray bytes;
    {
        const std::lock_guard guard(mutex);
        if (!errorText.isEmpty())
            return;
        bytes.swap(backlog);
    }
    if (bytes.isEmpty())
        return;
    if (writtenBytes == 0)
        file.resize(0); // Fails for a device without a size, which the write then reports.
    const QString reason = writeAll(bytes);
    if (reason.isEmpty())
        return;
    const std::lock_guard guard(mutex);
    errorText = QStringLiteral("Could not write to '%1': %2. The part written so far can "
                               "still be played.")
                    .arg(shownPath, reason);
    counts.dropped += counts.datagrams - writtenDatagrams;
    counts.datagrams = writtenDatagrams;
    counts.bytes = writtenBytes;
}

/// Writes packets, the first ones behind the file's header. If they don't all fit, the result is
/// the reason, and the file ends with the last whole packet.
QString RecordingWriter::writeAll(const QByteArray &bytes)
{
    int taken = 0;
    while (taken < bytes.size()) {
        // Only a write that takes nothing has a reason.
        const qint64 more = file.write(bytes.constData() + taken, bytes.size() - taken);
        if (more <= 0)
            break;
        taken += static_cast<int>(more);
    }
    int at = writtenBytes == 0 ? PacketEncoder::fileHeader().size() : 0;
    while (at + PacketEncoder::PacketHeaderSize <= taken) {
        const int end = at + PacketEncoder::sizeOfPacket(bytes.constData() + at);
        if (end > taken)
            break;
        at = end;
        ++writtenDatagrams;
    }
    if (at <= taken)
        writtenBytes += at;
    if (taken == bytes.size())
        return {};
    QString reason = file.errorString();
    file.resize(writtenBytes);
    return reason;
}
