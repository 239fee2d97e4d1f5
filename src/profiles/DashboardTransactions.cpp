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

/// Reserves a name with an empty directory, for as long as nothing is in it.
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
        // Takes an empty directory only, so never what stands there by now.
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

/// Whether a scan lists a dashboard under this name, letter for letter.
bool canBeListed(const QString &name)
{
    return platform::canHoldFileName(name) && !platform::isHiddenName(name);
}

/// Whether nothing but room keeps anything from being made in `folder`.
bool lacksOnlyRoom(const QString &folder)
{
    constexpr qint64 Hardly = 1 << 20;
    return QFileInfo(folder).isWritable() && QStorageInfo(folder).bytesAvailable() < Hardly;
}

} // namespace

DashboardTransactions::DashboardTransactions(QString root)
    : root(std::move(root))
{
    StagingDirectory::removeAbandoned(this->root);
}

Copied DashboardTransactions::copy(const QString &source, const QString &newName) const
{
    // Asked first: such a name may come out as another one, and that exists.
    if (!canBeListed(newName))
        return Copied::NotCreated;
    const QString target = root + QLatin1Char('/') + newName;
    if (QFileInfo::exists(target))
        return Copied::Taken;

    makeDirectory(root);
    // The staged directory stands before the name is reserved, so that a clean-up after a killed
    // process finds the reservation through it.
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
    // Where case doesn't count, a name that differs in nothing else is the directory itself.
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

    // Out of the list's sight first: a removal cut short must not leave half a dashboard there.
    const auto staging = StagingDirectory::make(root, info.fileName());
    if (!staging) {
        // A full disk has no room for it, and there a removal must work for all that.
        return lacksOnlyRoom(root) && removeTree(directory);
    }
    if (platform::placeDirectory(directory, staging->path()) != platform::Placement::Placed)
        return false;
    if (removeTree(staging->path()))
        return true;
    platform::placeDirectory(staging->path(), directory);
    return false;
}
