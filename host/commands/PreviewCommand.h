#pragma once

#include <QtCore/QString>

class IDashboardEngine;

/// Drawing a preview, as the command line asks for it.
struct PreviewCommand
{
    QString dashboard; ///< A QML file, or a profile's name or id.
    QString output;    ///< The PNG file to write; empty means preview.png beside the document.
};

/// Draws the picture by which galleries show the dashboard at `document`, always at the same moment
/// of the demo, so that the same dashboard gives the same bytes. A failure leaves the old file.
/// GUI thread. Returns the program's exit code.
int makePreview(const QString &document, const QString &output, IDashboardEngine &engine);
