#include "SaveAsPng.h"

#include <QtCore/QBuffer>
#include <QtCore/QSaveFile>
#include <QtGui/QImage>
#include <QtGui/QImageWriter>

QString saveAsPng(const QImage &image, const QString &path)
{
    // In memory first: only then is a full disk told by its name.
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
