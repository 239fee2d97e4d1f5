#include "Dashboards.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

#include <algorithm>
#include <utility>

namespace {

QString documentIn(const QString &directory)
{
    return directory + QStringLiteral("/Dash.qml");
}

} // namespace

Dashboards::Dashboards(QString root)
    : root(std::move(root))
{
}

QStringList Dashboards::names() const
{
    QStringList found = QDir(root).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    found.erase(std::remove_if(found.begin(), found.end(),
                               [this](const QString &name) {
                                   return !QFileInfo::exists(
                                       documentIn(root + QLatin1Char('/') + name));
                               }),
                found.end());
    return found;
}

QString Dashboards::documentFor(const QString &fileOrName) const
{
    const QFileInfo file(fileOrName);
    if (!file.isFile() && names().contains(fileOrName))
        return documentIn(root + QLatin1Char('/') + fileOrName);
    return file.absoluteFilePath();
}
