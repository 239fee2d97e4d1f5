#pragma once

#include <QtCore/QString>

class IDashboardEngine;

/// What the command line asks for.
struct PreviewCommand
{
    QString dashboard; ///< A QML file, or a profile's name or id.
    QString output;    ///< The file to write; empty means preview.png beside the document.
};

/// Makes the picture by which a collection shows the dashboard at `document`: always the same
/// moment of the demo lap, so that the same dashboard gives the same file. The result is the
/// program's exit code.
int makePreview(const QString &document, const QString &output, IDashboardEngine &engine);
