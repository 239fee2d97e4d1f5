#include "FrameWriter.h"

#include "SaveAsPng.h"

#include <QtCore/QDir>
#include <QtGui/QImage>

#include <algorithm>
#include <utility>

namespace {

constexpr qint64 MaximumBytes = 256'000'000; ///< Of frames in memory.

qint64 bytesOf(QSize size)
{
    return static_cast<qint64>(frameBytes(size.width(), size.height()));
}

/// Enough to keep every writer busy, within the limit of memory.
int unfinishedFrames(QSize size)
{
    constexpr qint64 Most = 8;
    return static_cast<int>(std::clamp(MaximumBytes / bytesOf(size), qint64{1}, Most));
}

} // namespace

FrameWriter::FrameWriter(QString directory, int count, QSize size, bool upsideDown)
    : directory(std::move(directory))
    , count(count)
    , size(size)
    , upsideDown(upsideDown)
    , maximumUnfinished(unfinishedFrames(size))
{
    const unsigned processors = std::max(std::thread::hardware_concurrency(), 1U);
    for (unsigned writer = 0; writer < processors; ++writer)
        writers.emplace_back([this] { work(); });
}

FrameWriter::~FrameWriter()
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

void FrameWriter::deliverFrame(Frame &buffer, int /*width*/)
{
    if (deliveredFrames == count)
        return;
    const int number = ++deliveredFrames;
    {
        std::unique_lock lock(mutex);
        jobDone.wait(lock, [this] { return unfinished < maximumUnfinished; });
        ++unfinished;
        // The engine gets an empty vector back, so that it delivers its message in every tick.
        jobs.push_back({std::exchange(buffer, Frame()), number});
    }
    jobCame.notify_one();

    Q_EMIT frameDelivered(number);
    if (number == count)
        Q_EMIT finished();
}

void FrameWriter::flush()
{
    std::unique_lock lock(mutex);
    jobDone.wait(lock, [this] { return unfinished == 0; });
}

int FrameWriter::written() const
{
    const std::lock_guard guard(mutex);
    return writtenFrames;
}

QString FrameWriter::error() const
{
    const std::lock_guard guard(mutex);
    return errorText;
}

void FrameWriter::work()
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
        const bool firstFailure = !failure.isEmpty() && errorText.isEmpty();
        if (failure.isEmpty())
            ++writtenFrames;
        else if (firstFailure)
            errorText = failure;
        --unfinished;
        jobDone.notify_all();
        if (firstFailure) {
            lock.unlock();
            Q_EMIT failed();
            lock.lock();
        }
    }
}

/// Returns what went wrong; empty if nothing did.
QString FrameWriter::write(const Frame &pixels, int number) const
{
    constexpr std::size_t AlphaOfFirstPixel = 3;
    // Dashboards are opaque; the engine delivers transparent black if it couldn't render.
    if (pixels.size() != std::size_t(bytesOf(size)) || pixels[AlphaOfFirstPixel] == 0) {
        return QStringLiteral("Frame %1 could not be rendered at %2x%3 pixels.")
            .arg(number)
            .arg(size.width())
            .arg(size.height());
    }
    const QImage image(pixels.data(), size.width(), size.height(), size.width() * BytesPerPixel,
                       QImage::Format_ARGB32_Premultiplied);
    const QString path = QDir(directory).filePath(
        QStringLiteral("frame-%1.png").arg(number, 6, 10, QLatin1Char('0')));
    const QString failure = saveAsPng(image, path);
    if (failure.isEmpty())
        return {};
    return QStringLiteral("Could not write '%1': %2").arg(QDir::toNativeSeparators(path), failure);
}
