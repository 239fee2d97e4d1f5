#include "profiles/VehicleAssignments.h"

#include "plugin/DashboardProfile.h"
#include "support/Files.h"

#include <QtCore/QFile>
#include <QtCore/QHash>
#include <QtCore/QSettings>

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
    for (const uint character : name.toUcs4()) {
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

/// Reads the vehicles of the open group. The work follows the keys that are there, not the count.
void readVehicles(const QSettings &file, QSet<QString> &vehicles)
{
    const int count = file.value(countKey(), 0).toInt();
    if (count <= 0)
        return;

    int found = 0;
    const QStringList keys = file.childKeys();
    for (const QString &key : keys) {
        const int index = indexOfKey(key);
        if (index < 0 || index >= count)
            continue;
        vehicles.insert(file.value(key).toString());
        ++found;
    }
    if (found < count)
        vehicles.insert(QString());
}

} // namespace

void loadVehicleAssignments(const QString &path, std::vector<DashboardProfile> &profiles)
{
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
    for (const QString &group : groups) {
        DashboardProfile *const profile = byName.value(folded(group));
        if (profile == nullptr)
            continue;
        file.beginGroup(group);
        readVehicles(file, profile->vehicles);
        file.endGroup();
    }
}

void saveVehicleAssignments(const QString &path, const std::vector<DashboardProfile> &profiles)
{
    const QString temporary = temporaryFileName();
    QFile::remove(temporary);
    {
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
    if (!moveFile(temporary, path, true))
        QFile::remove(temporary);
}
