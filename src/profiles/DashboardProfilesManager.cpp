#include "profiles/DashboardProfilesManager.h"

#include "plugin/IDashboardEngine.h"
#include "plugin/IRecentVehicleNameProvider.h"
#include "profiles/DashboardFolders.h"
#include "profiles/RecentProfile.h"
#include "support/Logging.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>

#include <algorithm>
#include <tuple>

namespace {

constexpr std::int64_t AssignmentPeriodMs = 8000;

} // namespace

DashboardProfilesManager::DashboardProfilesManager(IDashboardEngine *engine,
                                                   IRecentVehicleNameProvider *vehicleProvider,
                                                   const platform::Counter &counter)
    : engine(engine)
    , vehicleProvider(vehicleProvider)
    , assignments(vehicleAssignmentsPath())
    , clock(counter)
{
    scanDashboards(builtInDashboardsPath(), true);
    scanDashboards(userDashboardsPath(), false);
    assignments.load(profiles);
    // Of two with one name the user's own comes first, for a name means that one.
    std::sort(profiles.begin(), profiles.end(), [](const auto &one, const auto &other) {
        return std::tie(one.name, one.builtIn) < std::tie(other.name, other.builtIn);
    });
    ++revisionCount;
    activateFirstProfile();
}

void DashboardProfilesManager::scanDashboards(const QString &root, bool builtIn)
{
    const QFileInfoList entries =
        QDir(root).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::NoSort);
    for (const QFileInfo &entry : entries)
        addProfile(entry.absoluteFilePath(), builtIn);
}

void DashboardProfilesManager::addProfile(const QString &directory, bool builtIn)
{
    if (!isDashboard(directory))
        return;

    DashboardProfile profile;
    profile.id = nextId++;
    profile.name = QFileInfo(directory).fileName();
    profile.previewPath = previewPath(directory);
    profile.builtIn = builtIn;
    profile.qmlPath = documentPath(directory);
    profile.directory = directory;
    profiles.push_back(std::move(profile));
}

void DashboardProfilesManager::activateFirstProfile()
{
    if (profiles.empty())
        return;
    const DashboardProfile *first = nullptr;
    const QStringList names = recentProfileNames();
    for (const auto sensitivity : {Qt::CaseSensitive, Qt::CaseInsensitive}) {
        for (const QString &name : names) {
            if (first == nullptr)
                first = findProfile(name, sensitivity);
        }
    }
    if (first == nullptr)
        first = &profiles.front();
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
    return {profiles.cbegin(), profiles.cend()};
}

std::unique_ptr<DashboardProfileHeader> DashboardProfilesManager::profileHeader(Id id) const
{
    const LockGuard guard(lock);
    const DashboardProfile *const found = findProfile(id);
    return found != nullptr ? std::make_unique<DashboardProfileHeader>(*found) : nullptr;
}

std::unique_ptr<DashboardProfile> DashboardProfilesManager::profile(Id id) const
{
    const LockGuard guard(lock);
    const DashboardProfile *const found = findProfile(id);
    return found != nullptr ? std::make_unique<DashboardProfile>(*found) : nullptr;
}

bool DashboardProfilesManager::profileNameExists(const QString &name) const
{
    const LockGuard guard(lock);
    return findProfile(name, Qt::CaseInsensitive) != nullptr;
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
        const DashboardProfile *const active = findProfile(activeId);
        if (active != nullptr && active->vehicles.contains(vehicleName))
            return;

        const bool staysHere = active != nullptr && isAssignmentPeriodOpen();
        const DashboardProfile *const home = staysHere ? nullptr : findProfileOf(vehicleName);
        if (home != nullptr) {
            activeId.exchange(home->id);
            publishDashboard(home->qmlPath);
            setRecentProfileName(home->name);
        } else {
            changed = assignVehicle(activeId, vehicleName);
        }
        keepAssignments(changed);
        after = activeId;
    }
    if (after != before)
        Q_EMIT newProfileActivated(after);
    for (const Id id : changed)
        Q_EMIT profileModified(id);
}

std::set<DashboardProfileHeader::Id>
DashboardProfilesManager::assignVehicle(Id id, const QString &vehicleName)
{
    std::set<Id> changed;
    if (vehicleName.isEmpty())
        return changed;
    for (DashboardProfile &profile : profiles) {
        if (profile.id == id) {
            if (profile.vehicles.contains(vehicleName))
                continue;
            logInfo(QStringLiteral("Dashboard: Assigned vehicle %1 to %2")
                        .arg(vehicleName, profile.name));
            profile.vehicles.insert(vehicleName);
            changed.insert(profile.id);
        } else if (profile.vehicles.remove(vehicleName)) {
            logInfo(QStringLiteral("Dashboard: Detached vehicle %1 from %2")
                        .arg(vehicleName, profile.name));
            changed.insert(profile.id);
        }
    }
    return changed;
}

void DashboardProfilesManager::keepAssignments(const std::set<Id> &changed)
{
    if (changed.empty())
        return;
    ++revisionCount;
    assignments.save(profiles);
}

bool DashboardProfilesManager::isAssignmentPeriodOpen() const
{
    return lastActivationMs != 0 && clock.elapsedMs() - lastActivationMs < AssignmentPeriodMs;
}

const DashboardProfile *DashboardProfilesManager::findProfile(Id id) const
{
    const auto found = std::find_if(profiles.cbegin(), profiles.cend(),
                                    [&](const auto &profile) { return profile.id == id; });
    return found != profiles.cend() ? &*found : nullptr;
}

DashboardProfile *DashboardProfilesManager::findProfile(Id id)
{
    const auto found = std::find_if(profiles.begin(), profiles.end(),
                                    [&](const auto &profile) { return profile.id == id; });
    return found != profiles.end() ? &*found : nullptr;
}

const DashboardProfile *DashboardProfilesManager::findProfile(const QString &name,
                                                              Qt::CaseSensitivity sensitivity) const
{
    const auto found = std::find_if(profiles.cbegin(), profiles.cend(), [&](const auto &profile) {
        return profile.name.compare(name, sensitivity) == 0;
    });
    return found != profiles.cend() ? &*found : nullptr;
}

const DashboardProfile *DashboardProfilesManager::findProfileOf(const QString &vehicleName) const
{
    const auto found = std::find_if(profiles.cbegin(), profiles.cend(), [&](const auto &profile) {
        return profile.vehicles.contains(vehicleName);
    });
    return found != profiles.cend() ? &*found : nullptr;
}

void DashboardProfilesManager::publishDashboard(const QString &path)
{
    const bool relative = QFileInfo(path).isRelative();
    const QDir application(QCoreApplication::applicationDirPath());
    engine->setDashboardFile(relative ? application.absoluteFilePath(path) : path);
}
