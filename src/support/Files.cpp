#include "support/Files.h"

#include "support/platform/FileSystem.h"

#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryFile>

namespace {

bool copyWithParents(const QString &source, const QString &destination)
{
    const QString parent = QFileInfo(destination).absolutePath();
    return makeDirectory(parent).exists() && platform::copyFile(source, destination);
}

} // namespace

bool copyDirectory(const QString &source, const QString &target)
{
    const QDir sourceDirectory(source);
    if (!sourceDirectory.exists())
        return false;

    QDirIterator files(source, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString file = files.next();
        const QString relative = sourceDirectory.relativeFilePath(file);
        if (!copyWithParents(file, target + QLatin1Char('/') + relative))
            return false;
    }
    return true;
}

QDir makeDirectory(const QString &path)
{
    QDir directory{QString()};
    directory.mkpath(path);
    directory.setPath(path);
    return directory;
}

bool moveFile(const QString &source, const QString &target, bool replaceExisting)
{
    return platform::moveFile(source, target, replaceExisting);
}

bool removeTree(const QString &path)
{
    // QDir would empty the directory behind the link and then fail on the link itself.
    const QFileInfo info(path);
    if (info.isSymLink() || info.isJunction())
        return platform::removeLink(path);
    return QDir(path).removeRecursively();
}

QString temporaryFileName()
{
    QTemporaryFile file;
    file.open();
    return file.fileName();
}
