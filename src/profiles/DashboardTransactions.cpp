#include "profiles/DashboardTransactions.h"

#include "profiles/DashboardFolders.h"
#include "profiles/StagingDirectory.h"
#include "support/Files.h"
#include "support/platform/FileSystem.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QStorageInfo>

#include <utility>

namespace {

using Copied = DashboardTransactions::Copied;

/// Reserves a name with an empty directory.
class Reservation
{
public:
    explicit Reservation(QString path)
        : path(std::move(path))
        , creation(platform::createDirectory(this->path))
    {
    }
    ~Reservation()
    {
        // Removes only an empty directory, so never the copy that has replaced it.
        if (creation == platform::Creation::Made)
            QDir().rmdir(path);
    }
    Reservation(const Reservation &) = delete;
    Reservation &operator=(const Reservation &) = delete;

    platform::Creation result() const { return creation; }

private:
    QString path;
    platform::Creation creation;
};

/// Whether a scan would list a dashboard under exactly this name.
bool canBeListed(const QString &name)
{
    return platform::canHoldFileName(name) && !platform::isHiddenName(name);
}

/// Whether only a full disk keeps a directory from being made in `folder`.
bool lacksOnlyRoom(const QString &folder)
{
    constexpr qint64 OneMegabyte = 1 << 20;
    return QFileInfo(folder).isWritable() && QStorageInfo(folder).bytesAvailable() < OneMegabyte;
}

} // namespace

DashboardTransactions::DashboardTransactions(QString root)
    : root(std::move(root))
{
    StagingDirectory::removeAbandoned(this->root);
}

Copied DashboardTransactions::copy(const QString &source, const QString &newName) const
{
    // First, for the disk may turn such a name into another one, which exists.
    if (!canBeListed(newName))
        return Copied::NotCreated;
    const QString target = root + QLatin1Char('/') + newName;
    if (QFileInfo::exists(target))
        return Copied::Taken;

    makeDirectory(root);
    // Staged before the name is reserved, so that the clean-up after a killed process finds the
    // reservation by its staged namesake.
    const auto staging = StagingDirectory::make(root, newName);
    if (!staging || !makeDirectory(staging->path()).exists())
        return Copied::NotCreated;
    const Reservation reservation(target);
    if (reservation.result() != platform::Creation::Made) {
        const bool exists = reservation.result() == platform::Creation::Exists;
        return exists ? Copied::Taken : Copied::NotCreated;
    }
    if (source.isEmpty())
        return Copied::NoSource;
    if (!copyDirectory(source, staging->path()))
        return Copied::NotCopied;
    if (!isDashboard(staging->path()))
        return Copied::NotValid;
    switch (platform::placeDirectory(staging->path(), target)) {
    case platform::Placement::Placed:
        return Copied::Done;
    case platform::Placement::Taken:
        return Copied::Taken;
    case platform::Placement::Failed:
        break;
    }
    return Copied::NotCopied;
}

bool DashboardTransactions::canRename(const QString &directory, const QString &newName) const
{
    if (!canBeListed(newName))
        return false;
    const QFileInfo present(directory);
    const QFileInfo target(root + QLatin1Char('/') + newName);
    if (!target.exists())
        return true;
    // Where case doesn't count, a name that differs only in case is the directory itself.
    return newName != present.fileName() && target == present;
}

bool DashboardTransactions::rename(QDir &dir, const QString &newName) const
{
    const QString oldPath = QDir::cleanPath(dir.filePath(QStringLiteral(".")));
    const QString newPath = root + QLatin1Char('/') + newName;
    if (!QFile::rename(oldPath, newPath))
        return false;
    dir.setPath(newPath);
    return true;
}

bool DashboardTransactions::remove(const QString &directory) const
{
    const QFileInfo info(directory);
    if (!info.isDir() || info.isSymLink() || info.isJunction())
        return removeTree(directory);

    // Moved away first: a removal cut short must not leave half a dashboard in the list.
    const auto staging = StagingDirectory::make(root, info.fileName());
    if (!staging) {
        // A full disk has no room for another directory, yet removing must work there.
        return lacksOnlyRoom(root) && removeTree(directory);
    }
    if (platform::placeDirectory(directory, staging->path()) != platform::Placement::Placed)
        return false;
    if (removeTree(staging->path()))
        return true;
    platform::placeDirectory(staging->path(), directory);
    return false;
}
