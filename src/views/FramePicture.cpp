#include "views/FramePicture.h"

#include <cstring>
#include <utility>

namespace {

constexpr QImage::Format PixelFormat = QImage::Format_ARGB32_Premultiplied;

bool fits(const QImage &image, int width, int height)
{
    return image.width() == width && image.height() == height && image.format() == PixelFormat &&
           image.bytesPerLine() == width * BytesPerPixel;
}

} // namespace

void FramePicture::fill(const Frame &frame, int width, int height)
{
    if (width <= 0 || height <= 0 || frame.size() != frameBytes(width, height))
        return;

    if (!fits(image, width, height) || !image.isDetached()) {
        // The document usually still holds the last picture; writing to it would copy it first.
        QImage next = std::move(spare);
        spare = QImage();
        if (!fits(next, width, height) || !next.isDetached())
            next = QImage(width, height, PixelFormat);
        if (next.isNull())
            return;
        if (fits(image, width, height))
            spare = std::move(image);
        image = std::move(next);
    }
    std::memcpy(image.bits(), frame.data(), frame.size());
}
