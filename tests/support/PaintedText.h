#pragma once

#include <QtGui/QFont>
#include <QtGui/QImage>
#include <QtGui/QPainter>

#include <vector>

/// The picture that a status image must equal, painted apart from the code under test.
inline QImage paintedText(int width, int height, const QString &text, int pixelSize, int flags,
                          bool upsideDown = false)
{
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::black);
    QPainter painter(&image);
    if (upsideDown) {
        painter.translate(width * 0.5, height * 0.5);
        painter.rotate(180.0);
        painter.translate(-width * 0.5, -height * 0.5);
    }
    painter.setPen(Qt::white);
    QFont font = painter.font();
    font.setPixelSize(pixelSize);
    painter.setFont(font);
    painter.drawText(0, 0, width, height, flags, text);
    painter.end();
    return image;
}

/// A frame as a picture of its own.
inline QImage frameImage(const std::vector<unsigned char> &frame, int width)
{
    if (frame.empty())
        return {};
    const int height = static_cast<int>(frame.size() / 4) / width;
    return QImage(frame.data(), width, height, QImage::Format_ARGB32_Premultiplied).copy();
}
