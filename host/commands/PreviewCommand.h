#pragma once

#include <QtCore/QString>

class IDashboardEngine;

/// Makes the picture by which a collection shows the dashboard at `document`: always the same
/// moment of the demo lap, so that the same dashboard gives the same file. `output` empty means
/// preview.png beside the document. The result is the program's exit code.
int makePreview(const QString &document, const QString &output, IDashboardEngine &engine);
