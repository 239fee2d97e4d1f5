#pragma once

#include <QtCore/QString>

/// Whether the INI file at `path` may be read through QSettings whoever wrote it. QSettings unpacks
/// all values at once, and serialised objects among them can exhaust the stack, ask for any amount
/// of memory or abort the process. Files of our own hold texts and numbers only. A missing file may
/// be read; what is no regular file may not.
bool isHarmlessIni(const QString &path);
