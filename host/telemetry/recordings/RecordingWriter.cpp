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
    thread.start("recording", [this] {
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
    // With `Keep`, to look first whether the file is there would leave a moment in which it can
    // come up.
    const QIODevice::OpenMode mode = existing == Existing::Keep
                                         ? QIODevice::WriteOnly | QIODevice::NewOnly
                                         : QIODevice::ReadWrite;
    if (file.open(mode | QIODevice::Unbuffered))
        return true;
    if (existing == Existing::Keep && there.exists() && !there.isDir()) {
        errorText = QStringLiteral("'%1' is already there; --force overwrites it.").arg(shownPath);
    } else {
        errorText = QStringLiteral("Could not make '%1': %2.")
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
        backlog = PacketEncoder::fileHead();
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
        file.resize(0); // A device may have no size; it tells when it is written to.
    const QString reason = writeAll(bytes);
    if (reason.isEmpty())
        return;
    const std::lock_guard guard(mutex);
    errorText = QStringLiteral("Could not write to '%1': %2. What was written before stays "
                               "readable.")
                    .arg(shownPath, reason);
    counts.dropped += counts.datagrams - writtenDatagrams;
    counts.datagrams = writtenDatagrams;
    counts.bytes = writtenBytes;
}

/// Writes packets, behind the head if they are the first ones. If not all of them go in the result
/// is the reason, and the file ends with the last whole one.
QString RecordingWriter::writeAll(const QByteArray &bytes)
{
    int taken = 0;
    while (taken < bytes.size()) {
        // Only a write that takes nothing tells its reason.
        const qint64 more = file.write(bytes.constData() + taken, bytes.size() - taken);
        if (more <= 0)
            break;
        taken += static_cast<int>(more);
    }
    int at = writtenBytes == 0 ? PacketEncoder::fileHead().size() : 0;
    while (at + PacketEncoder::PacketHeadSize <= taken) {
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
