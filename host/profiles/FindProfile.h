#pragma once

#include "DashboardProfile.h"

#include <QtCore/QString>

class DashboardAbstractProfilesManager;

/// The profile that a person means: by exact name, by name in any case, or by id. Of two with one
/// name the user's own, since only that one can be changed. `NoId` if there is none.
DashboardProfileHeader::Id findProfile(const DashboardAbstractProfilesManager &store,
                                       const QString &nameOrId);

/// The absolute path of the document that is meant. An existing file goes before a profile, a
/// profile before a folder with a Dash.qml; what is none of them stays a path, for the engine to
/// report.
QString findDocument(const DashboardAbstractProfilesManager &store, const QString &fileOrProfile);
