#pragma once

#include "IDashboardConsumer.h"

#include <QtCore/QObject>
#include <QtCore/QSize>
#include <QtCore/QString>

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <vector>

/// Writes a number of frames as PNG files: frame-000001.png and so on. Encoding runs on threads of
/// its own, so that it doesn't slow the engine down; when they fall behind, the engine waits. The
/// first frame that can't be written is told at once.
class FrameWriter final : public QObject, public IDashboardConsumer
{
    Q_OBJECT

public:
    /// `directory` must exist. `size` is in pixels.
    FrameWriter(QString directory, int count, QSize size, bool upsideDown);
    ~FrameWriter() override;

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
    int written() const;

    /// What went wrong first; empty if nothing did. Whole only after `flush`.
    QString error() const;

Q_SIGNALS:
    void frameDelivered(int delivered);
    void finished();

    /// Emitted once, on a thread of the recorder's.
    void failed();

private:
    struct Job
    {
        Frame pixels;
        int number = 0;
    };

    void work();
    QString write(const Frame &pixels, int number) const;

    const QString directory;
    const int count;
    const QSize size;
    const bool upsideDown;
    const int maximumUnfinished; ///< Frames in memory; the next one waits for its place.
    int deliveredFrames = 0;

    mutable std::mutex mutex;
    std::condition_variable jobCame;
    std::condition_variable jobDone;
    std::deque<Job> jobs; ///< Frames that wait for their encoding.
    int unfinished = 0;   ///< Frames that wait or are being encoded.
    int writtenFrames = 0;
    QString errorText;
    bool closing = false;
    std::vector<std::thread> writers;
};
