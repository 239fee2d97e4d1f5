#pragma once

#include <QtCore/QStringList>

// The name of the active profile, as the application's settings keep it between runs.

/// The first of these that there is was active. Empty when none is kept; two names where a rename
/// was cut short.
QStringList recentProfileNames();
void setRecentProfileName(const QString &name);

/// For the time of a rename, which may end with the directory under either name.
void setRecentProfileNames(const QString &oldName, const QString &newName);
void clearRecentProfileName();
