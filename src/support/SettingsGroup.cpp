#include "support/SettingsGroup.h"

#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QLockFile>
#include <QtCore/QSettings>

#include <utility>

SettingsGroup::SettingsGroup(std::unique_ptr<QSettings> settings)
    : settings(std::move(settings))
{
}

SettingsGroup::~SettingsGroup()
{
    settings->sync();
}

QVariant SettingsGroup::value(const QString &key, const QVariant &defaultValue) const
{
    return settings->value(key, defaultValue);
}

void SettingsGroup::setValue(const QString &key, const QVariant &value)
{
    settings->setValue(key, value);
}

void SettingsGroup::remove(const QString &key)
{
    settings->remove(key);
}

namespace {

/// Qt waits half a minute for a lock unless it names a dead process of this computer. A process
/// that lives holds it for a moment only; what stays the same for longer was left by a killed one.
void removeDeadLock(const QSettings &settings)
{
    constexpr int LongerThanSavingMs = 500;
    const QString path = settings.fileName() + QStringLiteral(".lock");
    const QFileInfo found(path);
    if (!found.exists() && !found.isSymLink())
        return;
    const QDateTime since = found.lastModified();
    QLockFile lock(path);
    if (!lock.tryLock(LongerThanSavingMs) && QFileInfo(path).lastModified() == since)
        static_cast<void>(QFile::remove(path) || QDir().rmdir(path));
}

} // namespace

std::unique_ptr<SettingsGroup> openSettingsGroup(const QString &group)
{
    auto settings = std::make_unique<QSettings>(QSettings::UserScope, QStringLiteral("Orvalentix"),
                                                QStringLiteral("Halvorin"));
    removeDeadLock(*settings);
    if (!group.isEmpty())
        settings->beginGroup(group);
    return std::make_unique<SettingsGroup>(std::move(settings));
}
