#pragma once

#include <QtCore/QString>

// Where dashboards are, and what is one.

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

/// Whether `directory` holds what makes it a dashboard. Neither file is opened.
bool isDashboard(const QString &directory);

/// Whether `name` may be asked of the file system as a directory's name.
bool isValidProfileName(const QString &name);
