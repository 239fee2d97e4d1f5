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

/// Writes a number of frames as PNG files: frame-000001.png and so on. Its own threads encode them,
/// so that the engine isn't slowed down; when they fall behind, the engine waits. Engine's thread,
/// except where noted.
class FrameWriter final : public QObject, public IDashboardConsumer
{
    Q_OBJECT

public:
    /// `directory` must exist, `count` be at least 1. `size` is in pixels.
    FrameWriter(QString directory, int count, QSize size, bool upsideDown);
    ~FrameWriter() override;

    int frameWidth() override { return size.width(); }
    int frameHeight() override { return size.height(); }
    bool isUpsideDown() override { return upsideDown; }
    quint64 lastActivity() override { return 0; }
    void deliverFrame(Frame &buffer, int width) override;

    /// Waits until all frames delivered so far are written.
    void flush();

    /// Frames delivered so far, whether they could be written or not.
    int delivered() const { return deliveredFrames; }

    /// Files written. Final only after `flush`. Any thread.
    int written() const;

    /// The first error; empty if there is none. Final only after `flush`. Any thread.
    QString error() const;

Q_SIGNALS:
    void frameDelivered(int delivered);
    /// The last frame was delivered; `flush` waits until it is written.
    void finished();

    /// A frame couldn't be written. Emitted once, on one of the writer's threads.
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
    const int maximumUnfinished; ///< Frames in memory; delivery of the next one waits.
    int deliveredFrames = 0;

    mutable std::mutex mutex;
    std::condition_variable jobCame;
    std::condition_variable jobDone;
    std::deque<Job> jobs; ///< Frames that wait to be encoded.
    int unfinished = 0;   ///< Frames that wait or are being encoded.
    int writtenFrames = 0;
    QString errorText;
    bool closing = false;
    std::vector<std::thread> writers;
};
