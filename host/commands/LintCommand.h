#pragma once

#include <QtCore/QString>

class IDashboardEngine;

/// What the command line asks for.
struct LintCommand
{
    QString dashboard; ///< A QML file, or a profile's name or id.
};

/// Shows the dashboard at `document` every kind of telemetry, reads its sources, and prints what is
/// wrong, a line each. The result is the program's exit code: 0 when nothing is.
int lintDashboard(const QString &document, IDashboardEngine &engine);
