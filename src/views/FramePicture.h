#pragma once

#include "plugin/Frame.h"

#include <QtGui/QImage>

/// The picture that an image provider gives out. Filling it copies a frame's pixels once and reuses
/// memory. Null at first. One thread at a time.
class FramePicture
{
public:
    /// A shared copy; later fills don't change it.
    const QImage &picture() const { return image; }

    void replace(const QImage &picture) { image = picture; }

    /// Copies `frame` if it has exactly `width` by `height` pixels, both above 0, and memory
    /// suffices; otherwise the picture stays as it is.
    void fill(const Frame &frame, int width, int height);

private:
    QImage image;
    QImage spare; ///< The picture before, reused when nobody else holds it.
};
