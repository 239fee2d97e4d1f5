#pragma once

class QString;

// The name of the active profile, as the application's settings keep it between runs.

/// Empty when none is kept.
QString recentProfileName();
void setRecentProfileName(const QString &name);
void clearRecentProfileName();
