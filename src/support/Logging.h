#pragma once

class QString;

/// Writes `text` to Qt's logging at info level, without quotes and trailing space. Any thread.
void logInfo(const QString &text);
