#pragma once

#include <QtCore/QString>

/// The actions of `DashboardAbstractProfilesManager::performAction`.
namespace DashboardProfileAction {
enum Code : int {
    Activate = 0, ///< Makes the profile the active one; no parameter.
    Copy = 1,     ///< Copies it into the user's folder; the parameter is the copy's name.
    Rename = 2,   ///< The parameter is the new name.
    Remove = 3,   ///< Deletes it from disk; no parameter.
};
}

/// The result of an action.
struct DashboardActionResult
{
    bool ok = false;
    QString message; ///< Why it failed, for the user; empty on success.
};
