#pragma once

#include "DashboardProfile.h"

#include <QtCore/QString>

class DashboardAbstractProfilesManager;

/// The profile that a person means: by exact name, by name in any case, or by id. Of two with one
/// name the user's own, since only that one can be changed. `NoId` if there is none. Any thread.
DashboardProfileHeader::Id findProfile(const DashboardAbstractProfilesManager &store,
                                       const QString &nameOrId);

/// The absolute path of the document that a person means. An existing file wins over a profile, a
/// profile over a folder with a Dash.qml. Anything else is taken as a path, for the engine to
/// report. Any thread.
QString findDocument(const DashboardAbstractProfilesManager &store, const QString &fileOrProfile);
