#include "FindProfile.h"

#include "DashboardAbstractProfilesManager.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

using Id = DashboardProfileHeader::Id;

namespace {

Id findByName(const std::vector<DashboardProfileHeader> &headers, const QString &name,
              Qt::CaseSensitivity sensitivity)
{
    Id found = DashboardProfileHeader::NoId;
    for (const DashboardProfileHeader &header : headers) {
        const bool better = found == DashboardProfileHeader::NoId || !header.builtIn;
        if (better && header.name.compare(name, sensitivity) == 0)
            found = header.id;
    }
    return found;
}

} // namespace

Id findProfile(const DashboardAbstractProfilesManager &store, const QString &nameOrId)
{
    const std::vector<DashboardProfileHeader> headers = store.profileHeaders();
    for (const Qt::CaseSensitivity sensitivity : {Qt::CaseSensitive, Qt::CaseInsensitive}) {
        const Id found = findByName(headers, nameOrId, sensitivity);
        if (found != DashboardProfileHeader::NoId)
            return found;
    }
    bool isNumber = false;
    const Id id = nameOrId.toInt(&isNumber);
    return isNumber && store.profileHeader(id) != nullptr ? id : DashboardProfileHeader::NoId;
}

QString findDocument(const DashboardAbstractProfilesManager &store, const QString &fileOrProfile)
{
    const QFileInfo file(fileOrProfile);
    if (!file.isFile()) {
        if (const auto profile = store.profile(findProfile(store, fileOrProfile)))
            return profile->qmlPath;
    }
    if (file.isDir())
        return QDir(file.absoluteFilePath()).filePath(QStringLiteral("Dash.qml"));
    return file.absoluteFilePath();
}
