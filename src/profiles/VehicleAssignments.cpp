#include "profiles/VehicleAssignments.h"

#include "plugin/DashboardProfile.h"
#include "profiles/IniScreening.h"
#include "support/Files.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QHash>
#include <QtCore/QSettings>

#include <algorithm>

namespace {

QString countKey()
{
    return QStringLiteral("VehicleCount");
}

QString nameKey(int index)
{
    return QStringLiteral("Vehicle.%1.Name").arg(index);
}

/// Equal for names that are equal ignoring case: folds character by character, as comparing does,
/// where `QString::toCaseFolded` would make two letters of one.
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

/// The index in a vehicle's key, -1 for any other key.
int indexOfKey(const QString &key)
{
    bool ok = false;
    const int index = key.section(QLatin1Char('.'), 1, 1).toInt(&ok);
    return ok && index >= 0 && key == nameKey(index) ? index : -1;
}

/// Reads the vehicles of the open group one by one.
void readVehicles(const QSettings &group, int count, QSet<QString> &vehicles)
{
    for (int index = 0; index < count; ++index)
        vehicles.insert(group.value(nameKey(index), QString()).toString());
}

/// Does the same for a count that can't be true: the work follows the keys that are there.
void readVehiclesByKey(const QSettings &group, int count, QSet<QString> &vehicles)
{
    int found = 0;
    const QStringList keys = group.childKeys();
    for (const QString &key : keys) {
        const int index = indexOfKey(key);
        if (index < 0 || index >= count)
            continue;
        vehicles.insert(group.value(key).toString());
        ++found;
    }
    if (found < count)
        vehicles.insert(QString());
}

} // namespace

void loadVehicleAssignments(const QString &path, std::vector<DashboardProfile> &profiles)
{
    if (!isHarmlessIni(path))
        return;
    QSettings file(path, QSettings::IniFormat);
    const QStringList groups = file.childGroups();
    if (groups.isEmpty())
        return;

    QHash<QString, DashboardProfile *> byName;
    byName.reserve(static_cast<int>(profiles.size()));
    for (DashboardProfile &profile : profiles) {
        DashboardProfile *&first = byName[folded(profile.name)];
        if (first == nullptr)
            first = &profile;
    }
    // No entry is shorter; what the counts promise beyond that isn't there.
    qint64 possible = QFileInfo(path).size() / nameKey(0).size();
    for (const QString &group : groups) {
        DashboardProfile *const profile = byName.value(folded(group));
        if (profile == nullptr)
            continue;
        file.beginGroup(group);
        const int count = file.value(countKey(), 0).toInt();
        if (count <= possible)
            readVehicles(file, count, profile->vehicles);
        else
            readVehiclesByKey(file, count, profile->vehicles);
        possible -= std::max(0, count);
        file.endGroup();
    }
}

bool saveVehicleAssignments(const QString &path, const std::vector<DashboardProfile> &profiles)
{
    const QString temporary = temporaryFileName();
    if (temporary.isEmpty())
        return false;
    QFile::remove(temporary);
    const bool anyVehicle =
        std::any_of(profiles.cbegin(), profiles.cend(),
                    [](const auto &profile) { return !profile.vehicles.isEmpty(); });
    if (!anyVehicle) {
        // QSettings makes no file when it has nothing to write, and the old one would stand.
        QFile empty(temporary);
        if (!empty.open(QIODevice::WriteOnly))
            return false;
    } else {
        QSettings file(temporary, QSettings::IniFormat);
        for (const DashboardProfile &profile : profiles) {
            if (profile.vehicles.isEmpty())
                continue;
            file.beginGroup(profile.name);
            file.setValue(countKey(), profile.vehicles.size());
            int index = 0;
            for (const QString &vehicle : profile.vehicles)
                file.setValue(nameKey(index++), vehicle);
            file.endGroup();
        }
    }
    const bool moved = moveFile(temporary, path, true);
    if (!moved)
        QFile::remove(temporary);
    return moved;
}
