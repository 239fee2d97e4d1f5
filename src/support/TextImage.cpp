#include "support/TextImage.h"

#include <QtGui/QFont>
#include <QtGui/QPainter>

#include <algorithm>

QImage makeTextImage(QSize size, const QString &text, const TextImageStyle &style)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return image;
    image.fill(Qt::black);

    QPainter painter(&image);
    if (style.upsideDown) {
        const QPointF centre(size.width() * 0.5, size.height() * 0.5);
        painter.translate(centre);
        painter.rotate(180.0);
        painter.translate(-centre);
    }
    painter.setPen(Qt::white);
    QFont font = painter.font();
    font.setPixelSize(style.pixelSize);
    painter.setFont(font);
    painter.drawText(image.rect(), style.flags, text);
    return image;
}

QImage makeMessageImage(QSize size, const QString &message, bool upsideDown)
{
    constexpr int SmallestFont = 10;
    return makeTextImage(size, message,
                         {std::max(size.width() / WidthPerFontPixel, SmallestFont),
                          Qt::AlignHCenter | Qt::AlignVCenter | Qt::TextWordWrap, upsideDown});
}
