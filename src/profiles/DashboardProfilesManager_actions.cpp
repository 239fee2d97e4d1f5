#include "profiles/DashboardProfilesManager.h"

#include "plugin/IDashboardEngine.h"
#include "plugin/IRecentVehicleNameProvider.h"
#include "profiles/DashboardFolders.h"
#include "profiles/DashboardTransactions.h"
#include "profiles/RecentProfile.h"

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

    QString source;
    {
        const LockGuard guard(lock);
        const DashboardProfile *const profile = findProfile(id);
        if (profile != nullptr) {
            source = profile->directory;
            assignments.forget(newName, profiles);
        }
    }
    const QString root = userDashboardsPath();
    const QString target = root + QLatin1Char('/') + newName;
    switch (DashboardTransactions(root).copy(source, newName)) {
    case DashboardTransactions::Copied::Done:
        break;
    case DashboardTransactions::Copied::Taken:
        return failure(tr("Dashboard with given name already exists"));
    case DashboardTransactions::Copied::NotCreated:
        return failure(tr("Failed to create '%1'").arg(native(target)));
    case DashboardTransactions::Copied::NoSource:
        return failure(tr("Dashboard does not exist"));
    case DashboardTransactions::Copied::NotCopied:
        return failure(tr("Failed to copy '%1' to '%2'").arg(native(source), native(target)));
    case DashboardTransactions::Copied::NotValid:
        return failure(tr("'%1' is not a valid dashboard").arg(newName));
    }
    {
        const LockGuard guard(lock);
        addProfile(target, false);
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
        assignments.takeOver(profiles);
        assignments.forget(newName, profiles);
        QDir dir(profile->directory);
        const DashboardTransactions disk(QFileInfo(profile->directory).path());
        const QString failed =
            tr("Failed to rename '%1' to '%2'").arg(native(profile->directory), newName);
        if (!disk.canRename(profile->directory, newName) || !keepBothNames(*profile, newName))
            return failure(failed);
        if (!disk.rename(dir, newName)) {
            keepOldName(*profile);
            return failure(failed);
        }
        // What others have saved meanwhile stands under the old name.
        assignments.takeOver(profiles);
        profile->directory = dir.absolutePath();
        profile->qmlPath = documentPath(profile->directory);
        profile->previewPath = previewPath(profile->directory);
        profile->name = newName;
        if (id == activeId) {
            publishDashboard(profile->qmlPath);
            setRecentProfileName(newName);
        }
        ++revisionCount;
        assignments.save(profiles);
    }
    Q_EMIT profileListChanged();
    Q_EMIT profileModified(id);
    return success();
}

bool DashboardProfilesManager::keepBothNames(const DashboardProfile &profile,
                                             const QString &newName)
{
    if (!profile.vehicles.isEmpty()) {
        std::vector<DashboardProfile> both = profiles;
        both.push_back(profile);
        both.back().name = newName;
        if (!assignments.save(both))
            return false;
    }
    if (profile.id == activeId)
        setRecentProfileNames(profile.name, newName);
    return true;
}

void DashboardProfilesManager::keepOldName(const DashboardProfile &profile)
{
    if (!profile.vehicles.isEmpty())
        assignments.save(profiles);
    if (profile.id == activeId)
        setRecentProfileName(profile.name);
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
        const DashboardTransactions disk(QFileInfo(profile->directory).path());
        if (!disk.remove(profile->directory))
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
