#pragma once

#include "system/StoppableThread.h"
#include "telemetry/feeds/Datagram.h"

#include <QtCore/QByteArray>
#include <QtCore/QFile>
#include <QtCore/QString>

#include <mutex>
#include <optional>

/// Writes a drive's datagrams to a pcap file. `add` only puts them into memory; the writer's own
/// thread writes them twice a second, so that a slow disk never holds up the listener. Any thread.
class RecordingWriter
{
public:
    enum class Existing { Keep, Overwrite };

    struct Progress
    {
        qint64 datagrams = 0; ///< In the file or in memory.
        qint64 bytes = 0;     ///< Of the file, with what is still in memory.
        qint64 dropped = 0;   ///< Lost because the disk was too slow or failed.
    };

    /// Creates the file; `error` tells at once if that fails. An existing file is an error with
    /// `Existing::Keep`; with `Existing::Overwrite` it stays as it is until the first datagrams are
    /// written.
    explicit RecordingWriter(const QString &path, Existing existing = Existing::Keep);

    /// Writes what is left and closes the file. A new file without datagrams is removed.
    ~RecordingWriter();
    RecordingWriter(const RecordingWriter &) = delete;
    RecordingWriter &operator=(const RecordingWriter &) = delete;

    /// Takes a datagram; the time of the first one counts as now. Payloads over 65507 bytes, which
    /// UDP over IPv4 can't have, are dropped.
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

    std::mutex fileMutex;    ///< Locked before `mutex`, by whoever writes.
    qint64 writtenBytes = 0; ///< The file's header and whole packets.
    qint64 writtenDatagrams = 0;
    bool wasThere = false;

    mutable std::mutex mutex;
    QByteArray backlog; ///< Whole packets that aren't in the file yet.
    std::optional<std::chrono::nanoseconds> sinceEpoch; ///< Added to a datagram's time.
    Progress counts;
    QString errorText;
    StoppableThread thread;
};
