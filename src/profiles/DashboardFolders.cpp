#include "profiles/DashboardFolders.h"

#include "support/Paths.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>

namespace {

QString dataPath(QLatin1String tail)
{
    const QString folder = QString::fromStdWString(documentsDataPath(L"Halvorin"));
    return QDir::fromNativeSeparators(folder) + tail;
}

} // namespace

QString builtInDashboardsPath()
{
    return QCoreApplication::applicationDirPath() + QLatin1String("/Dashboards");
}

QString userDashboardsPath()
{
    return dataPath(QLatin1String("/Dashboards"));
}

QString vehicleAssignmentsPath()
{
    return dataPath(QLatin1String("/dashboardsExtra.ini"));
}

QString documentPath(const QString &directory)
{
    return directory + QLatin1String("/Dash.qml");
}

QString previewPath(const QString &directory)
{
    return directory + QLatin1String("/preview.png");
}

bool isDashboard(const QString &directory)
{
    return QFile::exists(documentPath(directory)) && QFile::exists(previewPath(directory));
}

bool isValidProfileName(const QString &name)
{
    return !name.contains(QLatin1Char('/')) && !name.contains(QLatin1Char('\\')) &&
           !name.contains(QLatin1String("..")) && !name.contains(QLatin1Char(':')) &&
           !name.startsWith(QLatin1Char(' ')) && !name.endsWith(QLatin1Char(' ')) &&
           !name.endsWith(QLatin1Char('.'));
}
