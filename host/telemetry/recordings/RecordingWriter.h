#pragma once

#include "system/StoppableThread.h"
#include "telemetry/feeds/Datagram.h"

#include <QtCore/QByteArray>
#include <QtCore/QFile>
#include <QtCore/QString>

#include <mutex>
#include <optional>

/// Writes a drive's datagrams into a pcap file, whatever its name. `add` only puts them into
/// memory; a thread of the writer's own brings them to the disk twice a second, so that a slow disk
/// never holds up the listener. All operations: any thread.
class RecordingWriter
{
public:
    enum class Existing { Keep, Overwrite };

    struct Progress
    {
        qint64 datagrams = 0; ///< In the file or in memory.
        qint64 bytes = 0;     ///< Size of the file, with what is still in memory.
        qint64 dropped = 0;   ///< Lost, since the disk was too slow or failed.
    };

    /// Makes the file. With `Existing::Keep` a file that is already there is an error, with
    /// `Existing::Overwrite` it stays as it is until the first datagrams are written. `error` tells
    /// at once if the file can't be made or opened.
    explicit RecordingWriter(const QString &path, Existing existing = Existing::Keep);

    /// Writes what is left and closes the file. A file that was made for nothing is removed.
    ~RecordingWriter();
    RecordingWriter(const RecordingWriter &) = delete;
    RecordingWriter &operator=(const RecordingWriter &) = delete;

    /// Takes a datagram; the first one's time is now. Payloads beyond 65507 bytes, which UDP over
    /// IPv4 doesn't have, are dropped.
    void add(const Datagram &datagram);

    /// Waits until all that was taken so far is in the file.
    void flush();

    Progress progress() const;

    /// What went wrong, in one line for the user; empty if nothing did. After an error nothing more
    /// is written, and `progress` counts only what can be read back.
    QString error() const;

private:
    static constexpr int LargestBacklog = 32 * 1024 * 1024; ///< Bytes in memory.

    bool open(Existing existing);
    void writeOut();
    QString writeAll(const QByteArray &bytes);

    QFile file;
    const QString shownPath;

    std::mutex fileMutex;    ///< Taken before `mutex`, by whoever writes.
    qint64 writtenBytes = 0; ///< Of whole packets, with the file's head.
    qint64 writtenDatagrams = 0;
    bool wasThere = false;

    mutable std::mutex mutex;
    QByteArray backlog; ///< Whole packets that aren't in the file yet.
    std::optional<std::chrono::nanoseconds> sinceEpoch; ///< From a datagram's time to the clock's.
    Progress counts;
    QString errorText;
    StoppableThread thread;
};
