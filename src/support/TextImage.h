#pragma once

#include <QtGui/QImage>

class QString;

/// How a text stands in its picture.
struct TextImageStyle
{
    int pixelSize = 10;      ///< Font height in pixels.
    int flags = 0;           ///< Alignment and text flags of `QPainter::drawText`.
    bool upsideDown = false; ///< Turns the text by 180 degrees about the picture's centre.
};

/// White text on black in the painter's default font, in the frame's pixel format. Null when the
/// size can't be had. Any thread on which a `QPainter` may work on a `QImage`.
QImage makeTextImage(QSize size, const QString &text, const TextImageStyle &style);
