#pragma once

#include <QtCore/QSet>
#include <QtCore/QString>

#include <vector>

/// Something wrong with a dashboard.
struct Finding
{
    QString file;
    int line = 0; ///< From 1; 0 says nothing of a place.
    QString text;
};

/// What can be told of a dashboard without running it, from the sources and files in its folder:
/// names that aren't published, files that are missing or lie elsewhere, things that move without a
/// publication, fonts that don't come along, a root of another size than 480 x 272.
std::vector<Finding> findingsInSources(const QString &document, const QSet<QString> &published);
