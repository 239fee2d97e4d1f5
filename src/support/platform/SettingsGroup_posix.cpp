#include "support/SettingsGroup.h"

#include "support/IniFile.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QLockFile>
#include <QtCore/QMap>
#include <QtCore/QSaveFile>
#include <QtCore/QStandardPaths>
#include <QtCore/QVariant>

#include <optional>
#include <vector>

// Reads the files of QSettings without QSettings, which would unpack any object in them.

namespace {

/// The user's file, then those that QSettings falls back on: the user's for the whole organisation
/// and the system's.
QStringList settingsFiles()
{
    QStringList files;
    const QStringList folders =
        QStandardPaths::standardLocations(QStandardPaths::GenericConfigLocation);
    for (const QString &folder : folders) {
        files += folder + QStringLiteral("/Orvalentix/Halvorin.conf");
        files += folder + QStringLiteral("/Orvalentix.conf");
    }
    return files;
}

/// New texts by key; a key without one is removed.
using Changes = QMap<QString, std::optional<QString>>;

void write(const QString &path, const Changes &changes)
{
    QDir().mkpath(QFileInfo(path).path());
    const auto lock = IniFile::lock(path);
    std::optional<IniFile> content = IniFile::readToReplace(path);
    if (!content)
        return;
    for (auto change = changes.cbegin(); change != changes.cend(); ++change) {
        if (*change)
            content->setText(change.key(), **change);
        else
            content->remove(change.key());
    }
    const bool isNew = !QFileInfo::exists(path);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return;
    if (isNew)
        file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    file.write(content->toBytes());
    file.commit();
}

} // namespace

struct SettingsGroup::Store
{
    QString prefix;
    QString path;               ///< Of the user's file.
    std::vector<IniFile> files; ///< As they were when opened; the user's, the first, with changes.
    Changes changes;
};

SettingsGroup::SettingsGroup(const QString &group)
    : store(std::make_unique<Store>())
{
    if (!group.isEmpty())
        store->prefix = group + QLatin1Char('/');
    const QStringList paths = settingsFiles();
    store->path = paths.value(0);
    for (const QString &path : paths)
        store->files.push_back(IniFile::read(path).value_or(IniFile()));
}

SettingsGroup::~SettingsGroup()
{
    if (!store->changes.isEmpty())
        write(store->path, store->changes);
}

QVariant SettingsGroup::value(const QString &key, const QVariant &defaultValue) const
{
    const QString name = store->prefix + key;
    for (const IniFile &file : store->files) {
        if (const auto text = file.text(name))
            return *text;
    }
    return defaultValue;
}

void SettingsGroup::setValue(const QString &key, const QVariant &value)
{
    const QString name = store->prefix + key;
    store->files.front().setText(name, value.toString());
    store->changes.insert(name, value.toString());
}

void SettingsGroup::remove(const QString &key)
{
    const QString name = store->prefix + key;
    store->files.front().remove(name);
    store->changes.insert(name, std::nullopt);
}

std::unique_ptr<SettingsGroup> openSettingsGroup(const QString &group)
{
    return std::make_unique<SettingsGroup>(group);
}
