#pragma once

#include "plugin/Frame.h"

#include <QtGui/QImage>
#include <QtGui/QPainter>

/// What a picture of a text must look like, painted independently of the code under test.
inline QImage paintedText(int width, int height, const QString &text, int pixelSize, int flags,
                          bool upsideDown = false)
{
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::black);
    QPainter painter(&image);
    if (upsideDown)
        painter.setTransform(QTransform(-1, 0, 0, -1, width, height));
    painter.setPen(Qt::white);
    QFont font = painter.font();
    font.setPixelSize(pixelSize);
    painter.setFont(font);
    painter.drawText(0, 0, width, height, flags, text);
    painter.end();
    return image;
}

/// A frame as a picture; null where the frame is empty or has another size.
inline QImage frameImage(const Frame &frame, int width, int height)
{
    if (frame.empty() || frame.size() != std::size_t(width) * std::size_t(height) * 4)
        return {};
    return QImage(frame.data(), width, height, QImage::Format_ARGB32_Premultiplied).copy();
}
