#include "FrameRecorder.h"

#include <QtCore/QDir>
#include <QtCore/QSaveFile>
#include <QtGui/QImage>
#include <QtGui/QImageWriter>

#include <algorithm>
#include <utility>

namespace {

constexpr int MaximumUnfinished = 8; ///< Frames in memory; the next one waits for its place.

} // namespace

FrameRecorder::FrameRecorder(QString directory, int count, QSize size, bool upsideDown)
    : directory(std::move(directory))
    , count(count)
    , size(size)
    , upsideDown(upsideDown)
{
    const unsigned processors = std::max(std::thread::hardware_concurrency(), 1U);
    for (unsigned writer = 0; writer < processors; ++writer)
        writers.emplace_back([this] { work(); });
}

FrameRecorder::~FrameRecorder()
{
    flush();
    {
        const std::lock_guard guard(mutex);
        closing = true;
    }
    jobCame.notify_all();
    for (std::thread &writer : writers)
        writer.join();
}

void FrameRecorder::deliverFrame(Frame &buffer, int /*width*/)
{
    if (deliveredFrames == count)
        return;
    const int number = ++deliveredFrames;
    {
        std::unique_lock lock(mutex);
        jobDone.wait(lock, [this] { return unfinished < MaximumUnfinished; });
        ++unfinished;
        // The engine gets an empty vector back, so that it delivers its message picture again and
        // again.
        jobs.push_back({std::exchange(buffer, Frame()), number});
    }
    jobCame.notify_one();

    Q_EMIT frameDelivered(number);
    if (number == count)
        Q_EMIT finished();
}

void FrameRecorder::flush()
{
    std::unique_lock lock(mutex);
    jobDone.wait(lock, [this] { return unfinished == 0; });
}

int FrameRecorder::written() const
{
    const std::lock_guard guard(mutex);
    return writtenFrames;
}

QString FrameRecorder::error() const
{
    const std::lock_guard guard(mutex);
    return errorText;
}

void FrameRecorder::work()
{
    std::unique_lock lock(mutex);
    while (true) {
        jobCame.wait(lock, [this] { return closing || !jobs.empty(); });
        if (jobs.empty())
            return;
        const Job job = std::move(jobs.front());
        jobs.pop_front();
        lock.unlock();
        const QString failure = write(job.pixels, job.number);
        lock.lock();
        if (failure.isEmpty())
            ++writtenFrames;
        else if (errorText.isEmpty())
            errorText = failure;
        --unfinished;
        jobDone.notify_all();
    }
}

/// What went wrong; empty if nothing did.
QString FrameRecorder::write(const Frame &pixels, int number) const
{
    constexpr std::size_t AlphaOfFirstPixel = 3;
    const std::size_t bytes = std::size_t(size.width()) * std::size_t(size.height()) * 4;
    // Dashboards are opaque; transparent black is how the engine says that it couldn't render.
    if (pixels.size() != bytes || pixels[AlphaOfFirstPixel] == 0) {
        return QStringLiteral("Frame %1 could not be rendered at %2x%3 pixels.")
            .arg(number)
            .arg(size.width())
            .arg(size.height());
    }
    const QImage image(pixels.data(), size.width(), size.height(), size.width() * 4,
                       QImage::Format_ARGB32_Premultiplied);
    QSaveFile file(QDir(directory).filePath(
        QStringLiteral("frame-%1.png").arg(number, 6, 10, QLatin1Char('0'))));
    QImageWriter writer(&file, "png");
    if (!file.open(QIODevice::WriteOnly) || !writer.write(image) || !file.commit()) {
        return QStringLiteral("Could not write '%1': %2")
            .arg(QDir::toNativeSeparators(file.fileName()), file.errorString());
    }
    return {};
}
