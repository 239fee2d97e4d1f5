#include "support/SettingsGroup.h"

#include <QtCore/QDateTime>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
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

/// A process that was killed while it made the lock of the settings' file leaves it empty, and Qt
/// would wait half a minute for the dead. A living one fills it at once.
void removeDeadLock(const QSettings &settings)
{
    constexpr qint64 LongerThanFillingMs = 1000;
    const QFileInfo lock(settings.fileName() + QStringLiteral(".lock"));
    if (lock.isFile() && lock.size() == 0 &&
        lock.lastModified().msecsTo(QDateTime::currentDateTime()) > LongerThanFillingMs)
        QFile::remove(lock.filePath());
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
