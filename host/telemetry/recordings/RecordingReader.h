#pragma once

#include "DatagramReader.h"

#include <QtCore/QByteArray>
#include <QtCore/QDateTime>
#include <QtCore/QIODevice>

#include <memory>

/// Reads the recordings that RecordingWriter makes. What is damaged is passed over, up to the next
/// whole record; memory stays at some hundred kilobytes whatever the file holds.
class RecordingReader final : public DatagramReader
{
public:
    /// Whether a file that begins with these bytes means to be a recording.
    static bool recognises(const QByteArray &beginning);

    /// `device` must be open for reading and able to seek. Nothing if it is no recording or one of
    /// a newer version; `error` then says so in one line that goes on after the file's name.
    static std::unique_ptr<RecordingReader> open(std::unique_ptr<QIODevice> device, QString &error);

    std::optional<Datagram> next() override;
    void rewind() override;
    QStringList remarks() const override;

    /// Bytes passed over so far, since they belong to no whole record.
    qint64 lostBytes() const { return lost; }

    /// When the recording began; not valid if the file's head is damaged.
    QDateTime startedAt() const { return started; }

private:
    explicit RecordingReader(std::unique_ptr<QIODevice> device);

    QString readHead();
    bool have(int size);
    void pass(int size);
    std::optional<Datagram> recordHere();
    void passToMarker();

    std::unique_ptr<QIODevice> device;
    QByteArray window; ///< Bytes of the file that have been read and not passed yet, from `at` on.
    int at = 0;
    QDateTime started;
    qint64 lost = 0;
    int failedRecords = 0; ///< Markers without a whole record behind them.
};
