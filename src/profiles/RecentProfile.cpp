#include "profiles/RecentProfile.h"

#include "support/SettingsGroup.h"

#include <QtCore/QStringList>
#include <QtCore/QVariant>

namespace {

QString recentProfileKey()
{
    return QStringLiteral("RecentProfile");
}

/// No profile's name contains it.
QChar separator()
{
    return QLatin1Char('/');
}

std::unique_ptr<SettingsGroup> openDashboardSettings()
{
    return openSettingsGroup(QStringLiteral("Dashboard"));
}

} // namespace

QStringList recentProfileNames()
{
    const QString names = openDashboardSettings()->value(recentProfileKey(), QString()).toString();
    return names.split(separator(), Qt::SkipEmptyParts);
}

void setRecentProfileName(const QString &name)
{
    openDashboardSettings()->setValue(recentProfileKey(), name);
}

void setRecentProfileNames(const QString &oldName, const QString &newName)
{
    setRecentProfileName(oldName + separator() + newName);
}

void clearRecentProfileName()
{
    openDashboardSettings()->remove(recentProfileKey());
}
