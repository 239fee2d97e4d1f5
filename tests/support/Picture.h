#pragma once

#include "plugin/Frame.h"

#include <QtGui/QRgb>

#include <cstddef>
#include <cstdlib>

/// A frame with its size, read pixel by pixel without the help of QImage.
struct Picture
{
    Frame bytes;
    int width = 0;
    int height = 0;

    bool isWhole() const
    {
        return bytes.size() == std::size_t(width) * 4 * std::size_t(height) && !bytes.empty();
    }
    QRgb at(int x, int y) const
    {
        const unsigned char *pixel = &bytes.at((std::size_t(y) * std::size_t(width) + x) * 4);
        return qRgba(pixel[2], pixel[1], pixel[0], pixel[3]);
    }

    /// The number of pixels of exactly this colour within the rows from `top` up to `bottom`.
    int count(QRgb colour, int top, int bottom) const
    {
        int found = 0;
        for (int y = top; y < bottom; ++y) {
            for (int x = 0; x < width; ++x)
                found += at(x, y) == colour ? 1 : 0;
        }
        return found;
    }
    int count(QRgb colour) const { return count(colour, 0, height); }

    /// The same picture turned by 180 degrees.
    Picture turned() const
    {
        Picture result = *this;
        const std::size_t pixels = bytes.size() / 4;
        for (std::size_t pixel = 0; pixel < pixels; ++pixel) {
            for (std::size_t byte = 0; byte < 4; ++byte)
                result.bytes[pixel * 4 + byte] = bytes[(pixels - 1 - pixel) * 4 + byte];
        }
        return result;
    }

    bool operator==(const Picture &other) const
    {
        return width == other.width && height == other.height && bytes == other.bytes;
    }
};
