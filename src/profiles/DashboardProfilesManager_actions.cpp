#include "profiles/DashboardProfilesManager.h"

#include "plugin/IDashboardEngine.h"
#include "plugin/IRecentVehicleNameProvider.h"
#include "profiles/DashboardFolders.h"
#include "profiles/RecentProfile.h"
#include "profiles/StagingDirectory.h"
#include "profiles/VehicleAssignments.h"
#include "support/Files.h"
#include "support/platform/FileSystem.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

#include <utility>

namespace {

DashboardActionResult success()
{
    return {true, QString()};
}

DashboardActionResult failure(QString message)
{
    return {false, std::move(message)};
}

QString native(const QString &path)
{
    return QDir::toNativeSeparators(path);
}

/// Reserves a name in the user's folder with an empty directory, for as long as nothing is in it.
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

} // namespace

DashboardActionResult DashboardProfilesManager::performAction(Id id, int action,
                                                              const QVariant &parameter)
{
    switch (action) {
    case DashboardProfileAction::Activate:
        return activateProfile(id);
    case DashboardProfileAction::Copy:
        return copyProfile(id, parameter.toString());
    case DashboardProfileAction::Rename:
        return renameProfile(id, parameter.toString());
    case DashboardProfileAction::Remove:
        return removeProfile(id);
    default:
        return failure(tr("Unsupported action: %1").arg(action));
    }
}

DashboardActionResult DashboardProfilesManager::activateProfile(Id id)
{
    std::set<Id> changed;
    {
        const LockGuard guard(lock);
        if (id == activeId)
            return success();
        const DashboardProfile *const profile = findProfile(id);
        if (profile == nullptr)
            return failure(tr("Profile not found"));
        setRecentProfileName(profile->name);
        activeId.exchange(id);
        publishDashboard(profile->qmlPath);
        lastActivationMs = clock.elapsedMs();
        changed = assignVehicle(activeId, vehicleProvider->recentVehicleName());
        keepAssignments(changed);
    }
    Q_EMIT newProfileActivated(id);
    for (const Id modified : changed)
        Q_EMIT profileModified(modified);
    return success();
}

DashboardActionResult DashboardProfilesManager::copyProfile(Id id, const QString &newName)
{
    if (newName.isEmpty())
        return failure(tr("Name cannot be empty"));
    if (!isValidProfileName(newName))
        return failure(tr("Name is not correct"));

    const QString root = userDashboardsPath();
    const QString target = root + QLatin1Char('/') + newName;
    StagingDirectory::removeAbandoned(root);
    const QString taken = tr("Dashboard with given name already exists");
    const QString notCreated = tr("Failed to create '%1'").arg(native(target));
    // Asked first: such a name may come out as another one, and that exists.
    if (!platform::canHoldFileName(newName))
        return failure(notCreated);
    if (QFileInfo::exists(target))
        return failure(taken);

    makeDirectory(root);
    // The staged directory stands before the name is reserved, so that a clean-up after a killed
    // process finds the reservation through it.
    const auto staging = StagingDirectory::make(root, newName);
    if (!staging || !makeDirectory(staging->path()).exists())
        return failure(notCreated);
    const Reservation reservation(target);
    if (reservation.result() != platform::Creation::Made)
        return failure(reservation.result() == platform::Creation::Exists ? taken : notCreated);

    QString source;
    {
        const LockGuard guard(lock);
        const DashboardProfile *const profile = findProfile(id);
        if (profile == nullptr)
            return failure(tr("Dashboard does not exist"));
        source = profile->directory;
    }
    const QString notCopied = tr("Failed to copy '%1' to '%2'").arg(native(source), native(target));
    if (!copyDirectory(source, staging->path()))
        return failure(notCopied);
    switch (platform::placeDirectory(staging->path(), target)) {
    case platform::Placement::Placed:
        return listCopy(target, newName);
    case platform::Placement::Taken:
        return failure(taken);
    case platform::Placement::Failed:
        break;
    }
    return failure(notCopied);
}

DashboardActionResult DashboardProfilesManager::listCopy(const QString &directory,
                                                         const QString &newName)
{
    {
        const LockGuard guard(lock);
        const std::size_t before = profiles.size();
        addProfile(directory, false);
        if (profiles.size() == before) {
            QDir(directory).removeRecursively();
            return failure(tr("'%1' is not a valid dashboard").arg(newName));
        }
        ++revisionCount;
    }
    Q_EMIT profileListChanged();
    return success();
}

DashboardActionResult DashboardProfilesManager::renameProfile(Id id, const QString &newName)
{
    if (newName.isEmpty())
        return failure(tr("Name cannot be empty"));
    if (!isValidProfileName(newName))
        return failure(tr("Name is not correct"));
    {
        const LockGuard guard(lock);
        DashboardProfile *const profile = findProfile(id);
        if (profile == nullptr)
            return failure(tr("Dashboard does not exist"));
        if (profile->builtIn)
            return failure(tr("Built-in profile cannot be renamed"));
        QDir dir(profile->directory);
        // What a killed process left may stand in the new name's place.
        StagingDirectory::removeAbandoned(QFileInfo(profile->directory).path());
        if (!renameDirectory(dir, newName)) {
            return failure(
                tr("Failed to rename '%1' to '%2'").arg(native(profile->directory), newName));
        }
        profile->directory = dir.absolutePath();
        profile->qmlPath = documentPath(profile->directory);
        profile->previewPath = previewPath(profile->directory);
        profile->name = newName;
        if (id == activeId) {
            publishDashboard(profile->qmlPath);
            setRecentProfileName(newName);
        }
        ++revisionCount;
        saveVehicleAssignments(vehicleAssignmentsPath(), profiles);
    }
    Q_EMIT profileListChanged();
    Q_EMIT profileModified(id);
    return success();
}

DashboardActionResult DashboardProfilesManager::removeProfile(Id id)
{
    bool wasActive = false;
    {
        const LockGuard guard(lock);
        const DashboardProfile *const profile = findProfile(id);
        if (profile == nullptr)
            return failure(tr("Dashboard does not exist"));
        if (profile->builtIn)
            return failure(tr("Built-in profile cannot be removed"));
        StagingDirectory::removeAbandoned(QFileInfo(profile->directory).path());
        if (!removeDashboardDirectory(profile->directory))
            return failure(tr("Failed to remove '%1'").arg(native(profile->directory)));
        profiles.erase(profiles.begin() + (profile - profiles.data()));
        ++revisionCount;
        wasActive = id == activeId;
        if (wasActive)
            replaceActiveProfile();
    }
    Q_EMIT profileListChanged();
    Q_EMIT profileModified(id);
    if (wasActive)
        Q_EMIT newProfileActivated(activeId);
    return success();
}

void DashboardProfilesManager::replaceActiveProfile()
{
    if (profiles.empty()) {
        activeId.exchange(DashboardProfileHeader::NoId);
        engine->setDashboardFile(QString());
        clearRecentProfileName();
        return;
    }
    const DashboardProfile &first = profiles.front();
    activeId.exchange(first.id);
    publishDashboard(first.qmlPath);
    setRecentProfileName(first.name);
}
