#include "RecordingWriter.h"

#include "RecordingFormat.h"

#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QtEndian>

#include <limits>

namespace {

using namespace RecordingFormat;

constexpr std::chrono::milliseconds FlushPeriod(500);

template<typename Number> void append(QByteArray &bytes, Number number)
{
    const Number little = qToLittleEndian(number);
    bytes.append(reinterpret_cast<const char *>(&little), sizeof little);
}

QByteArray head()
{
    QByteArray bytes(Magic, sizeof Magic);
    append(bytes, Version);
    append(bytes, qint64{QDateTime::currentMSecsSinceEpoch()});
    append(bytes, checksum(bytes.constData(), bytes.size()));
    return bytes;
}

void appendRecord(QByteArray &bytes, const Datagram &datagram, std::chrono::nanoseconds time)
{
    const int start = bytes.size();
    bytes.append(Marker, sizeof Marker);
    append(bytes, static_cast<quint16>(datagram.payload.size()));
    append(bytes, datagram.port);
    append(bytes, qint64{time.count()});
    bytes.append(datagram.payload);
    append(bytes, checksum(bytes.constData() + start, bytes.size() - start));
}

} // namespace

RecordingWriter::RecordingWriter(const QString &path, Existing existing)
    : file(path)
    , shownPath(QDir::toNativeSeparators(path))
{
    if (open(existing))
        thread = std::thread([this] { run(); });
}

RecordingWriter::~RecordingWriter()
{
    {
        const std::lock_guard guard(mutex);
        closing = true;
    }
    wake.notify_all();
    if (thread.joinable())
        thread.join();
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
    counts.bytes = head().size();
    if (file.open(mode | QIODevice::Unbuffered)) {
        errorText = wasThere ? QString() : writeHead();
        return errorText.isEmpty();
    }
    if (existing == Existing::Keep && there.exists() && !there.isDir()) {
        errorText = QStringLiteral("'%1' is already there; --force overwrites it.").arg(shownPath);
    } else {
        errorText = QStringLiteral("Could not make '%1': %2.")
                        .arg(shownPath,
                             there.isDir() ? QStringLiteral("it is a folder") : file.errorString());
    }
    return false;
}

QString RecordingWriter::writeHead()
{
    headIsWritten = true;
    return writeAll(head());
}

void RecordingWriter::add(const Datagram &datagram)
{
    const std::lock_guard guard(mutex);
    const bool fits = datagram.payload.size() <= std::numeric_limits<quint16>::max() &&
                      backlog.size() + datagram.payload.size() <= LargestBacklog;
    if (!fits || !errorText.isEmpty()) {
        ++counts.dropped;
        return;
    }
    if (!firstTime)
        firstTime = datagram.time;
    const int before = backlog.size();
    appendRecord(backlog, datagram, datagram.time - *firstTime);
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

void RecordingWriter::run()
{
    std::unique_lock lock(mutex);
    while (!closing) {
        wake.wait_for(lock, FlushPeriod, [this] { return closing; });
        lock.unlock();
        writeOut();
        lock.lock();
    }
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
    QString failure;
    if (!headIsWritten) {
        file.resize(0); // A device may have no size; it tells when it is written to.
        failure = writeHead();
    }
    if (failure.isEmpty())
        failure = writeAll(bytes);
    if (failure.isEmpty())
        return;
    const std::lock_guard guard(mutex);
    errorText = failure;
    counts.bytes = written;
}

QString RecordingWriter::writeAll(const QByteArray &bytes)
{
    const qint64 taken = file.write(bytes);
    if (taken == bytes.size()) {
        written += taken;
        return {};
    }
    // The part that did go in stays: its whole records are as good as any, and a reader passes
    // over the last one's beginning.
    written = file.pos();
    return QStringLiteral("Could not write to '%1': %2. What was written before stays readable.")
        .arg(shownPath, file.errorString());
}
