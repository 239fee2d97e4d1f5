#include "profiles/ProfileList.h"

#include "profiles/DashboardFolders.h"
#include "support/Logging.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

#include <algorithm>
#include <tuple>
#include <utility>

namespace {

template<typename Profiles, typename Predicate>
auto findIn(Profiles &profiles, Predicate predicate) -> decltype(profiles.data())
{
    const auto found = std::find_if(profiles.begin(), profiles.end(), predicate);
    return found != profiles.end() ? &*found : nullptr;
}

auto hasId(DashboardProfileHeader::Id id)
{
    return [id](const DashboardProfile &profile) { return profile.id == id; };
}

} // namespace

void ProfileList::scan(const QString &root, bool builtIn)
{
    const QFileInfoList entries =
        QDir(root).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::NoSort);
    for (const QFileInfo &entry : entries)
        add(entry.absoluteFilePath(), builtIn);
}

void ProfileList::add(const QString &directory, bool builtIn)
{
    if (!isDashboard(directory))
        return;

    DashboardProfile profile;
    profile.id = nextId++;
    profile.builtIn = builtIn;
    setDirectory(profile, directory);
    profiles.push_back(std::move(profile));
}

void ProfileList::setDirectory(DashboardProfile &profile, const QString &directory)
{
    profile.name = QFileInfo(directory).fileName();
    profile.previewPath = previewPath(directory);
    profile.qmlPath = documentPath(directory);
    profile.directory = directory;
}

void ProfileList::sort()
{
    std::sort(profiles.begin(), profiles.end(), [](const auto &one, const auto &other) {
        return std::tie(one.name, one.builtIn) < std::tie(other.name, other.builtIn);
    });
}

void ProfileList::remove(Id id)
{
    const auto found = std::find_if(profiles.cbegin(), profiles.cend(), hasId(id));
    if (found != profiles.cend())
        profiles.erase(found);
}

const DashboardProfile *ProfileList::find(Id id) const
{
    return findIn(profiles, hasId(id));
}

DashboardProfile *ProfileList::find(Id id)
{
    return findIn(profiles, hasId(id));
}

const DashboardProfile *ProfileList::find(const QString &name,
                                          Qt::CaseSensitivity sensitivity) const
{
    return findIn(profiles, [&](const DashboardProfile &profile) {
        return profile.name.compare(name, sensitivity) == 0;
    });
}

const DashboardProfile *ProfileList::findByVehicle(const QString &vehicle) const
{
    return findIn(profiles, [&](const DashboardProfile &profile) {
        return profile.vehicles.contains(vehicle);
    });
}

std::set<ProfileList::Id> ProfileList::assignVehicle(Id id, const QString &vehicle)
{
    std::set<Id> changed;
    if (vehicle.isEmpty())
        return changed;
    for (DashboardProfile &profile : profiles) {
        if (profile.id == id) {
            if (profile.vehicles.contains(vehicle))
                continue;
            logInfo(
                QStringLiteral("Dashboard: Assigned vehicle %1 to %2").arg(vehicle, profile.name));
            profile.vehicles.insert(vehicle);
            changed.insert(profile.id);
        } else if (profile.vehicles.remove(vehicle)) {
            logInfo(QStringLiteral("Dashboard: Detached vehicle %1 from %2")
                        .arg(vehicle, profile.name));
            changed.insert(profile.id);
        }
    }
    return changed;
}
