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
    // Opening a pipe waits for its writer.
    if (!info.isFile() && !info.isDir())
        return {{}, QStringLiteral("Not a regular file")};

    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {{}, file.errorString()};
    if (file.size() > DocumentSource::MaximumBytes)
        return {{}, QStringLiteral("File is larger than 64 MiB")};
    // Of a file that grows or shrinks meanwhile a part will do: it changes, so it is loaded again.
    QByteArray bytes = file.read(file.size());
    if (file.error() != QFileDevice::NoError)
        return {{}, file.errorString()};
    // QML takes a zero for the end of the text. It has to be the fault in it that it is.
    bytes.replace('\0', "\xEF\xBF\xBD");
    return {bytes, {}};
}

} // namespace OVX
