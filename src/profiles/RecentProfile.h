#pragma once

#include <QtCore/QStringList>

// The name of the active profile, which the application's settings keep between runs. Any thread.
// Settings that can't be written are not reported.

/// Names of the profile that was active: the first that exists counts. Empty if none is kept; two
/// if a rename was cut short.
QStringList recentProfileNames();
void setRecentProfileName(const QString &name);

/// Keeps both names during a rename, which may leave the directory under either.
void setRecentProfileNames(const QString &oldName, const QString &newName);
void clearRecentProfileName();
