#pragma once

#include <QtCore/QString>

// Where dashboards are, and what makes one. Paths have forward slashes and are returned whether or
// not anything is there; nothing here fails or changes the disk. Any thread, while the application
// object exists.

/// Folder of the built-in dashboards, beside the program. The store never changes it.
QString builtInDashboardsPath();

/// Folder of the user's own dashboards, under the user's documents.
QString userDashboardsPath();

/// File that says which vehicles go with which dashboard, beside `userDashboardsPath`.
QString vehicleAssignmentsPath();

/// Document of the dashboard in `directory`.
QString documentPath(const QString &directory);

/// Preview picture of the dashboard in `directory`.
QString previewPath(const QString &directory);

/// Whether `directory` has a document and a preview. Opens neither; false if it can't look.
bool isDashboard(const QString &directory);

/// Whether `name` names a directory right in a folder: no separator, no colon, no two dots in a
/// row, no space at either end and no dot at the end. The empty name passes.
bool isValidProfileName(const QString &name);
