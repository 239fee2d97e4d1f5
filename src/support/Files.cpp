#include "support/Files.h"

#include "support/platform/FileSystem.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryFile>

namespace {

bool isLink(const QFileInfo &entry)
{
    return entry.isSymLink() || entry.isJunction();
}

QFileInfoList entriesOf(const QString &directory, QDir::Filters kinds)
{
    return QDir(directory).entryInfoList(kinds | QDir::Hidden | QDir::NoDotAndDotDot,
                                         QDir::DirsFirst);
}

bool copyWithParents(const QString &source, const QString &destination)
{
    const QString parent = QFileInfo(destination).absolutePath();
    return makeDirectory(parent).exists() && platform::copyFile(source, destination);
}

bool removeFile(const QString &path)
{
    if (QFile::remove(path))
        return true;
    // Windows doesn't delete a read-only file.
    const QFile::Permissions permissions = QFile::permissions(path);
    return !(permissions & QFile::WriteUser) &&
           QFile::setPermissions(path, permissions | QFile::WriteUser) && QFile::remove(path);
}

QString temporaryPrefix()
{
    return QDir::tempPath() + QLatin1String("/gauge64-temporary-");
}

/// A temporary file has its process's number in its name.
void removeAbandonedTemporaries()
{
    const QFileInfo prefix(temporaryPrefix());
    const QStringList names = QDir(prefix.path())
                                  .entryList({prefix.fileName() + QLatin1Char('*')},
                                             QDir::Files | QDir::Hidden, QDir::NoSort);
    for (const QString &name : names) {
        bool isProcess = false;
        const QString number = name.mid(prefix.fileName().size()).section(QLatin1Char('.'), 0, 0);
        const qint64 process = number.toLongLong(&isProcess, 16);
        if (isProcess && !platform::isRunning(process))
            QFile::remove(prefix.path() + QLatin1Char('/') + name);
    }
}

} // namespace

bool copyDirectory(const QString &source, const QString &target)
{
    // For Qt a directory that it can't read is empty.
    if (!platform::canReadDirectory(source))
        return false;

    const QFileInfoList entries = entriesOf(source, QDir::Files | QDir::Dirs);
    for (const QFileInfo &entry : entries) {
        const QString path = entry.filePath();
        const QString destination = target + QLatin1Char('/') + entry.fileName();
        if (entry.isDir() && isLink(entry))
            continue;
        if (!(entry.isDir() ? copyDirectory(path, destination)
                            : copyWithParents(path, destination)))
            return false;
    }
    platform::flushDirectory(target);
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
    // QDir::removeRecursively would empty the target of a junction, or of a link in `path`.
    const QFileInfo info(path);
    if (isLink(info))
        return platform::removeLink(path);
    if (!info.isDir())
        return true;

    const QFileInfoList entries = entriesOf(path, QDir::AllEntries | QDir::System);
    for (const QFileInfo &entry : entries) {
        const bool gone = isLink(entry) || entry.isDir() ? removeTree(entry.filePath())
                                                         : removeFile(entry.filePath());
        if (!gone)
            return false;
    }
    return QDir().rmdir(path);
}

QString temporaryFileName()
{
    removeAbandonedTemporaries();
    QTemporaryFile file(temporaryPrefix() +
                        QString::number(QCoreApplication::applicationPid(), 16) +
                        QLatin1String(".XXXXXX"));
    file.open();
    return file.fileName();
}
