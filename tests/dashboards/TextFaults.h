#pragma once

#include <QtCore/QStringList>

class QQuickItem;

/// What is wrong with the text as it is painted below `root`, in words: text that sticks out of the
/// dashboard or of the box that it was given, that lies on other text, or that something opaque
/// cuts. Judged by the glyphs' ink. Text that something opaque covers whole counts as hidden;
/// needles may pass over text; an item named "ghost" is the background of other text.
QStringList textFaults(const QQuickItem &root);
