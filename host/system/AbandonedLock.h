#pragma once

class QSettings;

/// Removes a lock on the file of `settings` that no living process holds, in less than a second.
/// Before it writes, QSettings would wait for such a lock for half a minute, or for ever.
void removeAbandonedLock(const QSettings &settings);
