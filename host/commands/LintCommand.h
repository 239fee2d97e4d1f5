#pragma once

#include <QtCore/QString>

class IDashboardEngine;

/// Checking one dashboard, as the command line asks for it.
struct LintCommand
{
    QString dashboard; ///< A QML file, or a profile's name or id.
};

/// Shows every kind of telemetry on the dashboard at `document`, reads its sources, and prints its
/// findings, one a line. GUI thread. Returns the program's exit code: 0 if there is no finding.
int lintDashboard(const QString &document, IDashboardEngine &engine);
