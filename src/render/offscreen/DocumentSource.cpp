#include "render/offscreen/DocumentSource.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QUrl>
#include <QtQml/QQmlFile>

namespace OVX {

DocumentSource readDocument(const QUrl &url)
{
    if (url.isEmpty())
        return {{}, QStringLiteral("Invalid empty URL")};
    const QString path = QQmlFile::urlToLocalFileOrQrc(url);
    const QFileInfo info(path);
    if (!info.exists())
        return {{}, QStringLiteral("No such file or directory")};
    // Opening a pipe blocks until it has a writer.
    if (!info.isFile() && !info.isDir())
        return {{}, QStringLiteral("Not a regular file")};

    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {{}, file.errorString()};
    if (file.size() > DocumentSource::MaximumBytes)
        return {{}, QStringLiteral("File is larger than 64 MiB")};
    // Part of a file that changes meanwhile will do: the change loads it again.
    QByteArray bytes = file.read(file.size());
    if (file.error() != QFileDevice::NoError)
        return {{}, file.errorString()};
    // QML ends the text at a zero byte. A replacement character is a syntax error instead.
    bytes.replace('\0', "\xEF\xBF\xBD");
    return {bytes, {}};
}

} // namespace OVX
