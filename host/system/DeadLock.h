#pragma once

class QSettings;

/// Takes away a lock on the file of `settings` that no living process holds, in less than a second.
/// QSettings would wait for it for half a minute, or for ever, before it writes.
void removeDeadLock(const QSettings &settings);
