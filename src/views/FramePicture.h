#pragma once

#include "plugin/Frame.h"

#include <QtGui/QImage>

/// The picture that an image provider hands out again and again, filled from frames at the cost of
/// one copy of their pixels. Null at first. One thread at a time.
class FramePicture
{
public:
    /// A shared copy, which later fills leave as it is.
    const QImage &picture() const { return image; }

    void replace(const QImage &picture) { image = picture; }

    /// Takes the pixels of `frame` if it is exactly `width` by `height` pixels, both above 0, and
    /// there is memory for them; otherwise the picture stays.
    void fill(const Frame &frame, int width, int height);

private:
    QImage image;
    QImage spare; ///< The picture before, until nobody holds it any more.
};
