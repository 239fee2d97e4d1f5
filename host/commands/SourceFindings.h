#pragma once

#include <QtCore/QSet>
#include <QtCore/QString>

#include <vector>

/// A fault in a dashboard.
struct Finding
{
    QString file;
    int line = 0; ///< From 1; 0 if unknown.
    QString text;
};

/// Finds faults without running the dashboard, from the sources and files in its folder: names that
/// aren't published, files that are missing or lie elsewhere, animations, fonts that aren't in the
/// folder, a root item of another size than dashboards are drawn for. GUI thread, since it loads
/// the fonts.
std::vector<Finding> findingsInSources(const QString &document, const QSet<QString> &published);
