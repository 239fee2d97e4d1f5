#include "profiles/RecentProfile.h"

#include "support/SettingsGroup.h"

#include <QtCore/QString>
#include <QtCore/QVariant>

namespace {

QString recentProfileKey()
{
    return QStringLiteral("RecentProfile");
}

std::unique_ptr<SettingsGroup> openDashboardSettings()
{
    return openSettingsGroup(QStringLiteral("Dashboard"));
}

} // namespace

QString recentProfileName()
{
    return openDashboardSettings()->value(recentProfileKey(), QString()).toString();
}

void setRecentProfileName(const QString &name)
{
    openDashboardSettings()->setValue(recentProfileKey(), name);
}

void clearRecentProfileName()
{
    openDashboardSettings()->remove(recentProfileKey());
}
