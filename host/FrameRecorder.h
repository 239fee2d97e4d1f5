#pragma once

#include "IDashboardConsumer.h"

#include <QtCore/QMutex>
#include <QtCore/QObject>
#include <QtCore/QSemaphore>
#include <QtCore/QSize>
#include <QtCore/QString>
#include <QtCore/QThreadPool>

#include <atomic>

/// Writes a number of frames as PNG files: frame-000001.png and so on. Encoding runs on threads of
/// its own, so that it doesn't slow the engine down; when they fall behind, the engine waits.
class FrameRecorder final : public QObject, public IDashboardConsumer
{
    Q_OBJECT

public:
    /// `directory` must exist. `size` is in pixels.
    FrameRecorder(QString directory, int count, QSize size, bool upsideDown);
    ~FrameRecorder() override;

    int frameWidth() override { return size.width(); }
    int frameHeight() override { return size.height(); }
    bool isUpsideDown() override { return upsideDown; }
    quint64 lastActivity() override { return 0; }
    void deliverFrame(Frame &buffer, int width) override;

    /// Waits until all frames taken so far are on the disk.
    void flush();

    /// Frames delivered so far, pictures or not.
    int delivered() const { return deliveredFrames; }

    /// Pictures on the disk. Whole only after `flush`.
    int written() const { return writtenFrames; }

    /// What went wrong first; empty if nothing did. Whole only after `flush`.
    QString error() const;

Q_SIGNALS:
    void frameDelivered(int delivered);
    void finished();

private:
    void write(const Frame &pixels, int number);
    void fail(const QString &text);

    const QString directory;
    const int count;
    const QSize size;
    const bool upsideDown;
    int deliveredFrames = 0;
    std::atomic<int> writtenFrames{0};
    mutable QMutex errorMutex;
    QString errorText;
    QSemaphore freePlaces;
    QThreadPool writers;
};
