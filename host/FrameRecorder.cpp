#include "FrameRecorder.h"

#include <QtCore/QDir>
#include <QtCore/QSaveFile>
#include <QtGui/QImage>
#include <QtGui/QImageWriter>

#include <memory>
#include <utility>

namespace {

constexpr int MaximumWaiting = 8; ///< Frames in memory that wait for their encoding.

} // namespace

FrameRecorder::FrameRecorder(QString directory, int count, QSize size, bool upsideDown)
    : directory(std::move(directory))
    , count(count)
    , size(size)
    , upsideDown(upsideDown)
    , freePlaces(MaximumWaiting)
{
}

FrameRecorder::~FrameRecorder()
{
    flush();
}

void FrameRecorder::deliverFrame(Frame &buffer, int /*width*/)
{
    if (deliveredFrames == count)
        return;
    const int number = ++deliveredFrames;

    // The engine gets an empty vector back, so that it delivers its message picture again and
    // again.
    const auto pixels = std::make_shared<Frame>();
    pixels->swap(buffer);
    freePlaces.acquire();
    writers.start([this, pixels, number] {
        write(*pixels, number);
        freePlaces.release();
    });

    Q_EMIT frameDelivered(number);
    if (number == count)
        Q_EMIT finished();
}

void FrameRecorder::flush()
{
    writers.waitForDone();
}

QString FrameRecorder::error() const
{
    const QMutexLocker guard(&errorMutex);
    return errorText;
}

void FrameRecorder::write(const Frame &pixels, int number)
{
    constexpr std::size_t AlphaOfFirstPixel = 3;
    const std::size_t bytes = std::size_t(size.width()) * std::size_t(size.height()) * 4;
    // Dashboards are opaque; transparent black is how the engine says that it couldn't render.
    if (pixels.size() != bytes || pixels[AlphaOfFirstPixel] == 0) {
        fail(QStringLiteral("Frame %1 could not be rendered at %2x%3 pixels.")
                 .arg(number)
                 .arg(size.width())
                 .arg(size.height()));
        return;
    }
    const QImage image(pixels.data(), size.width(), size.height(), size.width() * 4,
                       QImage::Format_ARGB32_Premultiplied);
    QSaveFile file(QDir(directory).filePath(
        QStringLiteral("frame-%1.png").arg(number, 6, 10, QLatin1Char('0'))));
    QImageWriter writer(&file, "png");
    if (!file.open(QIODevice::WriteOnly) || !writer.write(image) || !file.commit()) {
        fail(QStringLiteral("Could not write '%1': %2")
                 .arg(QDir::toNativeSeparators(file.fileName()), file.errorString()));
        return;
    }
    ++writtenFrames;
}

void FrameRecorder::fail(const QString &text)
{
    const QMutexLocker guard(&errorMutex);
    if (errorText.isEmpty())
        errorText = text;
}
