#include "SaveAsPng.h"

#include <QtCore/QBuffer>
#include <QtCore/QSaveFile>
#include <QtGui/QImage>
#include <QtGui/QImageWriter>

QString saveAsPng(const QImage &image, const QString &path)
{
    // Encoded in memory first: the image writer wouldn't say that the disk is full.
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, "png");
    if (!writer.write(image))
        return writer.errorString();
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(png) != png.size() || !file.commit())
        return file.errorString();
    return {};
}
