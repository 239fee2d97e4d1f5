#include "support/SettingsGroup.h"

#include <QtCore/QSettings>

struct SettingsGroup::Store
{
    QSettings settings{QSettings::UserScope, QStringLiteral("Orvalentix"),
                       QStringLiteral("Halvorin")};
};

SettingsGroup::SettingsGroup(const QString &group)
    : store(std::make_unique<Store>())
{
    if (!group.isEmpty())
        store->settings.beginGroup(group);
}

SettingsGroup::~SettingsGroup()
{
    store->settings.sync();
}

QVariant SettingsGroup::value(const QString &key, const QVariant &defaultValue) const
{
    return store->settings.value(key, defaultValue);
}

void SettingsGroup::setValue(const QString &key, const QVariant &value)
{
    store->settings.setValue(key, value);
}

void SettingsGroup::remove(const QString &key)
{
    store->settings.remove(key);
}

std::unique_ptr<SettingsGroup> openSettingsGroup(const QString &group)
{
    return std::make_unique<SettingsGroup>(group);
}
