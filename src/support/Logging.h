#pragma once

class QString;

/// Writes `text` to Qt's logging at info level, without quotes and without a space behind it.
void logInfo(const QString &text);
