#include "PreviewImages.h"

#include <QtCore/QDateTime>
#include <QtCore/QFileInfo>
#include <QtGui/QImageReader>

namespace {

constexpr QSize LargestPicture(4096, 4096); ///< In pixels; 64 MB in memory.

/// Makes any path safe in a URL.
constexpr QByteArray::Base64Options Encoding =
    QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals;

/// Qt would log each null picture with an unreadable URL.
QImage noPicture()
{
    QImage image(1, 1, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

} // namespace

QString PreviewImages::address(const QString &path)
{
    const QFileInfo file(path);
    if (!file.isFile())
        return {};
    return QStringLiteral("image://%1/%2/%3-%4")
        .arg(QLatin1String(Name), QString::fromLatin1(path.toUtf8().toBase64(Encoding)))
        .arg(file.lastModified().toMSecsSinceEpoch())
        .arg(file.size());
}

QImage PreviewImages::requestImage(const QString &id, QSize *size, const QSize &requestedSize)
{
    const QByteArray encoded = id.section(QLatin1Char('/'), 0, 0).toLatin1();
    QImageReader reader(QString::fromUtf8(QByteArray::fromBase64(encoded, Encoding)));
    reader.setDecideFormatFromContent(true);
    const QSize whole = reader.size();
    if (!whole.isValid() || whole.boundedTo(LargestPicture) != whole)
        return noPicture();
    if (requestedSize.isValid() && !requestedSize.isEmpty()) {
        const QSize fitting = whole.scaled(requestedSize, Qt::KeepAspectRatio);
        if (fitting.width() < whole.width())
            reader.setScaledSize(fitting.expandedTo(QSize(1, 1)));
    }
    QImage image = reader.read();
    if (image.isNull())
        return noPicture();
    if (size != nullptr)
        *size = image.size();
    return image;
}
