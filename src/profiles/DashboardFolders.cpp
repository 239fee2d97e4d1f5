#include "profiles/DashboardFolders.h"

#include "profiles/StagingDirectory.h"
#include "support/Files.h"
#include "support/Paths.h"
#include "support/platform/FileSystem.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

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

bool isValidProfileName(const QString &name)
{
    return !name.contains(QLatin1Char('/')) && !name.contains(QLatin1Char('\\')) &&
           !name.contains(QLatin1String("..")) && !name.contains(QLatin1Char(':')) &&
           !name.startsWith(QLatin1Char(' ')) && !name.endsWith(QLatin1Char(' ')) &&
           !name.endsWith(QLatin1Char('.'));
}

bool renameDirectory(QDir &dir, const QString &newName)
{
    if (!platform::canHoldFileName(newName))
        return false;
    const QString oldPath = QDir::cleanPath(dir.filePath(QStringLiteral(".")));
    const QString sibling = QStringLiteral("..%1%2").arg(QDir::separator(), newName);
    const QString newPath = QDir::cleanPath(dir.filePath(sibling));
    if (!QFile::rename(oldPath, newPath))
        return false;
    dir.setPath(newPath);
    return true;
}

bool removeDashboardDirectory(const QString &directory)
{
    const QFileInfo info(directory);
    if (!info.isDir() || info.isSymLink() || info.isJunction())
        return removeTree(directory);

    // Out of the list's sight first: a removal cut short must not leave half a dashboard there.
    const auto staging = StagingDirectory::make(info.path(), info.fileName());
    if (staging &&
        platform::placeDirectory(directory, staging->path()) == platform::Placement::Placed) {
        if (removeTree(staging->path()))
            return true;
        platform::placeDirectory(staging->path(), directory);
        return false;
    }
    return removeTree(directory);
}
