#include "profiles/DashboardProfilesManager.h"

#include "plugin/IDashboardEngine.h"
#include "plugin/IRecentVehicleNameProvider.h"
#include "profiles/DashboardFolders.h"
#include "profiles/DashboardTransactions.h"
#include "profiles/RecentProfile.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>

#include <utility>

namespace {

constexpr std::int64_t AssignmentPeriodMs = 8000;

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

DashboardProfilesManager::DashboardProfilesManager(IDashboardEngine *engine,
                                                   IRecentVehicleNameProvider *vehicleProvider,
                                                   const platform::Counter &counter)
    : engine(engine)
    , vehicleProvider(vehicleProvider)
    , assignments(vehicleAssignmentsPath())
    , clock(counter)
{
    profiles.scan(builtInDashboardsPath(), true);
    profiles.scan(userDashboardsPath(), false);
    assignments.load(profiles.all());
    profiles.sort();
    ++revisionCount;
    activateFirstProfile();
}

void DashboardProfilesManager::activateFirstProfile()
{
    if (profiles.all().empty())
        return;
    const DashboardProfile *first = nullptr;
    const QStringList names = recentProfileNames();
    for (const auto sensitivity : {Qt::CaseSensitive, Qt::CaseInsensitive}) {
        for (const QString &name : names) {
            if (first == nullptr)
                first = profiles.find(name, sensitivity);
        }
    }
    if (first == nullptr)
        first = &profiles.all().front();
    activeId = first->id;
    publishDashboard(first->qmlPath);
}

qint32 DashboardProfilesManager::revision() const
{
    return revisionCount;
}

DashboardProfileHeader::Id DashboardProfilesManager::activeProfileId() const
{
    return activeId;
}

std::vector<DashboardProfileHeader> DashboardProfilesManager::profileHeaders() const
{
    const LockGuard guard(lock);
    return {profiles.all().cbegin(), profiles.all().cend()};
}

std::unique_ptr<DashboardProfileHeader> DashboardProfilesManager::profileHeader(Id id) const
{
    const LockGuard guard(lock);
    const DashboardProfile *const found = profiles.find(id);
    return found != nullptr ? std::make_unique<DashboardProfileHeader>(*found) : nullptr;
}

std::unique_ptr<DashboardProfile> DashboardProfilesManager::profile(Id id) const
{
    const LockGuard guard(lock);
    const DashboardProfile *const found = profiles.find(id);
    return found != nullptr ? std::make_unique<DashboardProfile>(*found) : nullptr;
}

bool DashboardProfilesManager::profileNameExists(const QString &name) const
{
    const LockGuard guard(lock);
    return profiles.find(name, Qt::CaseInsensitive) != nullptr;
}

DashboardActionResult DashboardProfilesManager::performAction(Id id, int action,
                                                              const QVariant &parameter)
{
    switch (action) {
    case DashboardProfileAction::Activate:
        return activateProfile(id);
    case DashboardProfileAction::Copy:
    case DashboardProfileAction::Rename: {
        const QString newName = parameter.toString();
        if (newName.isEmpty())
            return failure(tr("Name cannot be empty"));
        if (!isValidProfileName(newName))
            return failure(tr("Name is not correct"));
        return action == DashboardProfileAction::Copy ? copyProfile(id, newName)
                                                      : renameProfile(id, newName);
    }
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
        const DashboardProfile *const profile = profiles.find(id);
        if (profile == nullptr)
            return failure(tr("Profile not found"));
        setRecentProfileName(profile->name);
        activeId.exchange(id);
        publishDashboard(profile->qmlPath);
        lastActivationMs = clock.elapsedMs();
        changed = profiles.assignVehicle(activeId, vehicleProvider->recentVehicleName());
        saveAssignments(changed);
    }
    Q_EMIT newProfileActivated(id);
    for (const Id modified : changed)
        Q_EMIT profileModified(modified);
    return success();
}

DashboardActionResult DashboardProfilesManager::copyProfile(Id id, const QString &newName)
{
    QString source;
    {
        const LockGuard guard(lock);
        const DashboardProfile *const profile = profiles.find(id);
        if (profile != nullptr) {
            source = profile->directory;
            assignments.forget(newName, profiles.all());
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
        profiles.add(target, false);
        ++revisionCount;
    }
    Q_EMIT profileListChanged();
    return success();
}

DashboardActionResult DashboardProfilesManager::renameProfile(Id id, const QString &newName)
{
    {
        const LockGuard guard(lock);
        DashboardProfile *const profile = profiles.find(id);
        if (profile == nullptr)
            return failure(tr("Dashboard does not exist"));
        if (profile->builtIn)
            return failure(tr("Built-in profile cannot be renamed"));
        assignments.takeOver(profiles.all());
        assignments.forget(newName, profiles.all());
        QDir dir(profile->directory);
        const DashboardTransactions disk(QFileInfo(profile->directory).path());
        const QString failed =
            tr("Failed to rename '%1' to '%2'").arg(native(profile->directory), newName);
        if (!disk.canRename(profile->directory, newName) || !saveBothNames(*profile, newName))
            return failure(failed);
        if (!disk.rename(dir, newName)) {
            saveOldName(*profile);
            return failure(failed);
        }
        // Others may have saved meanwhile, under the old name.
        assignments.takeOver(profiles.all());
        ProfileList::setDirectory(*profile, dir.absolutePath());
        if (id == activeId) {
            publishDashboard(profile->qmlPath);
            setRecentProfileName(newName);
        }
        ++revisionCount;
        assignments.save(profiles.all());
    }
    Q_EMIT profileListChanged();
    Q_EMIT profileModified(id);
    return success();
}

bool DashboardProfilesManager::saveBothNames(const DashboardProfile &profile,
                                             const QString &newName)
{
    if (!profile.vehicles.isEmpty()) {
        std::vector<DashboardProfile> both = profiles.all();
        both.push_back(profile);
        both.back().name = newName;
        if (!assignments.save(both))
            return false;
    }
    if (profile.id == activeId)
        setRecentProfileNames(profile.name, newName);
    return true;
}

void DashboardProfilesManager::saveOldName(const DashboardProfile &profile)
{
    if (!profile.vehicles.isEmpty())
        assignments.save(profiles.all());
    if (profile.id == activeId)
        setRecentProfileName(profile.name);
}

DashboardActionResult DashboardProfilesManager::removeProfile(Id id)
{
    bool wasActive = false;
    {
        const LockGuard guard(lock);
        const DashboardProfile *const profile = profiles.find(id);
        if (profile == nullptr)
            return failure(tr("Dashboard does not exist"));
        if (profile->builtIn)
            return failure(tr("Built-in profile cannot be removed"));
        const DashboardTransactions disk(QFileInfo(profile->directory).path());
        if (!disk.remove(profile->directory))
            return failure(tr("Failed to remove '%1'").arg(native(profile->directory)));
        profiles.remove(id);
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
    if (profiles.all().empty()) {
        activeId.exchange(DashboardProfileHeader::NoId);
        engine->setDashboardFile(QString());
        clearRecentProfileName();
        return;
    }
    const DashboardProfile &first = profiles.all().front();
    activeId.exchange(first.id);
    publishDashboard(first.qmlPath);
    setRecentProfileName(first.name);
}

void DashboardProfilesManager::activateRecentProfileForVehicle(QString vehicleName)
{
    if (vehicleName.isEmpty())
        return;
    const Id before = activeId;
    Id after = DashboardProfileHeader::NoId;
    std::set<Id> changed;
    {
        const LockGuard guard(lock);
        const DashboardProfile *const active = profiles.find(activeId);
        if (active != nullptr && active->vehicles.contains(vehicleName))
            return;

        const bool staysHere = active != nullptr && isAssignmentPeriodOpen();
        const DashboardProfile *const home =
            staysHere ? nullptr : profiles.findByVehicle(vehicleName);
        if (home != nullptr) {
            activeId.exchange(home->id);
            publishDashboard(home->qmlPath);
            setRecentProfileName(home->name);
        } else {
            changed = profiles.assignVehicle(activeId, vehicleName);
        }
        saveAssignments(changed);
        after = activeId;
    }
    if (after != before)
        Q_EMIT newProfileActivated(after);
    for (const Id id : changed)
        Q_EMIT profileModified(id);
}

void DashboardProfilesManager::saveAssignments(const std::set<Id> &changed)
{
    if (changed.empty())
        return;
    ++revisionCount;
    assignments.save(profiles.all());
}

bool DashboardProfilesManager::isAssignmentPeriodOpen() const
{
    return lastActivationMs != 0 && clock.elapsedMs() - lastActivationMs < AssignmentPeriodMs;
}

void DashboardProfilesManager::publishDashboard(const QString &path)
{
    const bool relative = QFileInfo(path).isRelative();
    const QDir application(QCoreApplication::applicationDirPath());
    engine->setDashboardFile(relative ? application.absoluteFilePath(path) : path);
}
