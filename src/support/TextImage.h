#pragma once

#include <QtGui/QImage>

class QString;

/// How a text is drawn into its picture.
struct TextImageStyle
{
    int pixelSize = 10;      ///< Font height in pixels.
    int flags = 0;           ///< Alignment and text flags of `QPainter::drawText`.
    bool upsideDown = false; ///< Rotates the text by 180 degrees about the picture's centre.
};

/// Width of a picture for each pixel of its font's height, where the font grows with the picture.
inline constexpr int WidthPerFontPixel = 25;

/// White text on black in the painter's default font, in the frame's pixel format. Null if a
/// picture of `size` pixels can't be made. Any thread on which a `QPainter` may draw on a `QImage`.
QImage makeTextImage(QSize size, const QString &text, const TextImageStyle &style);

/// The picture of a message in place of a dashboard: centred and wrapped, in a font of 1/25 of the
/// width, but at least 10 pixels high. Otherwise like `makeTextImage`.
QImage makeMessageImage(QSize size, const QString &message, bool upsideDown = false);
