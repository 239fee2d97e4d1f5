#pragma once

#include <QtCore/QString>

class QDir;

// Where dashboards are, and what may be done to one's directory.

/// The dashboards that came with the application. The store never changes them.
QString builtInDashboardsPath();

/// The user's own dashboards. May not exist.
QString userDashboardsPath();

/// The file that remembers which vehicle goes with which dashboard. May not exist.
QString vehicleAssignmentsPath();

/// The document of the dashboard in `directory`.
QString documentPath(const QString &directory);

/// The preview picture of the dashboard in `directory`.
QString previewPath(const QString &directory);

/// Whether `name` may be asked of the file system as a directory's name.
bool isValidProfileName(const QString &name);

/// Renames `dir` within its parent and points it at the new place. An existing `newName`, whatever
/// it is, makes it fail.
bool renameDirectory(QDir &dir, const QString &newName);

/// Deletes a dashboard's directory. A link in its place goes without what it points at; a missing
/// directory is a success. After a failure some of the files may be gone.
bool removeDashboardDirectory(const QString &directory);
