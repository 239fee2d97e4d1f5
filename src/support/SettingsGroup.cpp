#include "support/SettingsGroup.h"

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

std::unique_ptr<SettingsGroup> openSettingsGroup(const QString &group)
{
    auto settings = std::make_unique<QSettings>(QSettings::UserScope, QStringLiteral("Orvalentix"),
                                                QStringLiteral("Halvorin"));
    if (!group.isEmpty())
        settings->beginGroup(group);
    return std::make_unique<SettingsGroup>(std::move(settings));
}
