#include "profiles/VehicleAssignments.h"

#include "profiles/DashboardFolders.h"
#include "support/Files.h"
#include "support/IniFile.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QHash>
#include <QtCore/QLockFile>
#include <QtCore/QSet>
#include <QtCore/QVariant>

#include <utility>

namespace {

/// For each vehicle the names of its dashboards.
using Homes = QHash<QString, QSet<QString>>;
using Profiles = std::vector<DashboardProfile>;

/// All keys of the file begin with it.
constexpr char KeyBegin[] = "Vehicle";

QString countKey()
{
    return QStringLiteral("VehicleCount");
}

QString nameKey(int index)
{
    return QStringLiteral("Vehicle.%1.Name").arg(index);
}

/// Equal for names that differ only in case. Folds each character alone, as `QString::compare`
/// does; `QString::toCaseFolded` would turn one letter into two.
QString folded(const QString &name)
{
    QString result;
    result.reserve(name.size());
    const QVector<uint> characters = name.toUcs4();
    for (const uint character : characters) {
        const uint lower = QChar::toCaseFolded(character);
        if (QChar::requiresSurrogates(lower))
            result += QChar(QChar::highSurrogate(lower));
        result += QChar::requiresSurrogates(lower) ? QChar(QChar::lowSurrogate(lower))
                                                   : QChar(static_cast<ushort>(lower));
    }
    return result;
}

/// Finds the profile of a group in the file, in constant time.
class ProfileFinder
{
public:
    explicit ProfileFinder(const Profiles &profiles)
    {
        for (std::size_t i = 0; i < profiles.size(); ++i) {
            const DashboardProfile &profile = profiles[i];
            if (!profile.builtIn || !exact.contains(profile.name))
                exact.insert(profile.name, i);
            if (const QString name = folded(profile.name); !similar.contains(name))
                similar.insert(name, i);
        }
        none = profiles.size();
    }

    /// The profile's index in the list, or the list's size if there is none.
    std::size_t find(const QString &group) const
    {
        const auto found = exact.constFind(group);
        return found != exact.cend() ? *found : similar.value(folded(group), none);
    }

private:
    QHash<QString, std::size_t> exact;
    QHash<QString, std::size_t> similar;
    std::size_t none = 0;
};

/// A dashboard's group in the file.
struct Group
{
    QString name;
    int count = 0;
    std::vector<std::pair<int, QString>> names; ///< With their indices in the file, each once.

    /// Walks the names and not up to the count, which may be anything. An empty name stands for all
    /// that the count promises beyond them.
    void addVehicles(QSet<QString> &vehicles) const
    {
        int found = 0;
        for (const auto &[index, name] : names) {
            if (index >= count)
                continue;
            vehicles.insert(name);
            ++found;
        }
        if (found < count)
            vehicles.insert(QString());
    }
};

/// The index in a vehicle's key, -1 for any other key.
int indexOfKey(const QString &key)
{
    const QLatin1String head("Vehicle.");
    const QLatin1String tail(".Name");
    if (!key.startsWith(head) || !key.endsWith(tail))
        return -1;
    const QStringRef number = key.midRef(head.size()).chopped(tail.size());
    bool ok = false;
    const int index = number.toInt(&ok);
    return ok && index >= 0 && number == QString::number(index) ? index : -1;
}

std::vector<Group> groupsOf(const IniFile &file)
{
    std::vector<Group> groups;
    // Sorted, so the keys of a group are neighbours.
    const IniFile::Values &written = file.written();
    for (auto value = written.cbegin(); value != written.cend(); ++value) {
        const QString &key = value.key();
        const int slash = key.indexOf(QLatin1Char('/'));
        const QString name = key.mid(slash + 1);
        const int index = indexOfKey(name);
        if (slash <= 0 || (index < 0 && name != countKey()))
            continue;
        const auto text = file.textOf(*value);
        if (!text)
            continue;
        if (groups.empty() || groups.back().name != key.leftRef(slash))
            groups.push_back({key.left(slash), 0, {}});
        if (index >= 0)
            groups.back().names.emplace_back(index, *text);
        else
            groups.back().count = QVariant(*text).toInt();
    }
    return groups;
}

bool isOnDisk(const QString &name)
{
    if (!isValidProfileName(name))
        return false;
    const QString tail = QLatin1Char('/') + name;
    return QFileInfo::exists(documentPath(userDashboardsPath() + tail)) ||
           QFileInfo::exists(documentPath(builtInDashboardsPath() + tail));
}

Homes homesOf(const Profiles &profiles)
{
    Homes homes;
    for (const DashboardProfile &profile : profiles) {
        for (const QString &vehicle : profile.vehicles)
            homes[vehicle].insert(profile.name);
    }
    return homes;
}

/// What the file says, under the names that `profiles` have. Skips groups without a dashboard.
Homes homesOf(const IniFile &file, const Profiles &profiles)
{
    Homes homes;
    const ProfileFinder finder(profiles);
    const std::vector<Group> groups = groupsOf(file);
    for (const Group &group : groups) {
        const std::size_t found = finder.find(group.name);
        if (found == profiles.size() && !isOnDisk(group.name))
            continue;
        const QString name = found < profiles.size() ? profiles[found].name : group.name;
        QSet<QString> vehicles;
        group.addVehicles(vehicles);
        for (const QString &vehicle : qAsConst(vehicles))
            homes[vehicle].insert(name);
    }
    return homes;
}

/// Assigns the vehicle to the profiles of these names only.
void place(const QString &vehicle, const QSet<QString> &homes, Profiles &profiles,
           const ProfileFinder &finder)
{
    for (DashboardProfile &profile : profiles)
        profile.vehicles.remove(vehicle);
    for (const QString &home : homes) {
        const std::size_t found = finder.find(home);
        if (found < profiles.size())
            profiles[found].vehicles.insert(vehicle);
    }
}

/// What changed between `before` and `now` wins over `file`. What didn't change but is nowhere in
/// the file comes back: other processes move vehicles, they never just drop one.
Homes merge(const Homes &before, const Homes &now, Homes file)
{
    for (auto vehicle = now.cbegin(); vehicle != now.cend(); ++vehicle) {
        if (before.value(vehicle.key()) != *vehicle || !file.contains(vehicle.key()))
            file.insert(vehicle.key(), *vehicle);
    }
    for (auto vehicle = before.cbegin(); vehicle != before.cend(); ++vehicle) {
        if (!now.contains(vehicle.key()))
            file[vehicle.key()] -= *vehicle;
    }
    return file;
}

IniFile fileOf(const Homes &homes)
{
    IniFile file;
    QHash<QString, int> counts;
    for (auto vehicle = homes.cbegin(); vehicle != homes.cend(); ++vehicle) {
        for (const QString &home : *vehicle) {
            const QString group = home + QLatin1Char('/');
            const int index = counts[home]++;
            file.setText(group + nameKey(index), vehicle.key());
            file.setText(group + countKey(), QString::number(index + 1));
        }
    }
    return file;
}

bool replaceFile(const QString &path, const IniFile &content)
{
    const QString temporary = temporaryFileName();
    if (temporary.isEmpty())
        return false;
    const QByteArray bytes = content.toBytes();
    QFile file(temporary);
    // NewOnly: neither somebody else's file nor a link put there meanwhile.
    const bool written = file.open(QIODevice::WriteOnly | QIODevice::NewOnly) &&
                         file.write(bytes) == bytes.size() && file.flush();
    file.close();
    if (written && moveFile(temporary, path, true))
        return true;
    QFile::remove(temporary);
    return false;
}

} // namespace

VehicleAssignments::VehicleAssignments(QString path)
    : path(std::move(path))
{
}

void VehicleAssignments::load(std::vector<DashboardProfile> &profiles)
{
    const ProfileFinder finder(profiles);
    const std::vector<Group> groups = groupsOf(IniFile::read(path, KeyBegin).value_or(IniFile()));
    for (const Group &group : groups) {
        const std::size_t found = finder.find(group.name);
        if (found < profiles.size())
            group.addVehicles(profiles[found].vehicles);
    }
    known = profiles;
}

void VehicleAssignments::takeOver(std::vector<DashboardProfile> &profiles)
{
    const ProfileFinder finder(profiles);
    const ProfileFinder knownFinder(known);
    const Homes before = homesOf(known);
    const Homes now = homesOf(profiles);
    const Homes saved = homesOf(IniFile::read(path, KeyBegin).value_or(IniFile()), profiles);
    for (auto vehicle = saved.cbegin(); vehicle != saved.cend(); ++vehicle) {
        const QSet<QString> present = now.value(vehicle.key());
        if (present != before.value(vehicle.key()) || present == *vehicle)
            continue;
        place(vehicle.key(), *vehicle, profiles, finder);
        place(vehicle.key(), *vehicle, known, knownFinder);
    }
}

bool VehicleAssignments::save(const std::vector<DashboardProfile> &profiles)
{
    const auto lock = IniFile::lock(path);
    const std::optional<IniFile> file = IniFile::readToReplace(path, KeyBegin);
    if (!file || !replaceFile(path, fileOf(merge(homesOf(known), homesOf(profiles),
                                                 homesOf(*file, profiles)))))
        return false;
    known = profiles;
    return true;
}

bool VehicleAssignments::forget(const QString &name, const std::vector<DashboardProfile> &profiles)
{
    const auto lock = IniFile::lock(path);
    std::optional<IniFile> file = IniFile::read(path, KeyBegin);
    if (!file)
        return true;
    const ProfileFinder finder(profiles);
    bool found = false;
    const QStringList keys = file->written().keys();
    for (const QString &key : keys) {
        const QString group = key.section(QLatin1Char('/'), 0, 0);
        const bool isMeant = group.compare(name, Qt::CaseInsensitive) == 0 &&
                             finder.find(group) == profiles.size() && !isOnDisk(group);
        if (isMeant)
            file->remove(key);
        found = found || isMeant;
    }
    return !found || replaceFile(path, *file);
}
