#pragma once

#include "plugin/DashboardProfile.h"

#include <QtCore/QString>

#include <vector>

/// The file that says which vehicles go with which dashboard. Other processes write it too, so a
/// save merges: what changed here since the last load or save wins, the rest stays as in the file.
///
/// One thread at a time; the store calls it under its lock. Lists of profiles are borrowed for the
/// call. Writing waits up to a second for another process.
class VehicleAssignments
{
public:
    /// Touches nothing yet. The file at `path` may not exist.
    explicit VehicleAssignments(QString path);

    /// Adds to `profiles` their vehicles from the file. Skips what can't be read or belongs to none
    /// of them. A group goes to the profile with exactly its name, else to one that differs only in
    /// case; of two with one name to the user's own.
    void load(std::vector<DashboardProfile> &profiles);

    /// Updates `profiles` with what other processes have saved since the last load or save, except
    /// for vehicles that changed here. Call it before a profile's name changes.
    void takeOver(std::vector<DashboardProfile> &profiles);

    /// Saves the vehicles of `profiles`; profiles of one name share a group. A dashboard that isn't
    /// among them keeps its vehicles as long as it is on disk. If the file can't be written it
    /// stays as it was, the result is false, and the next save makes up for it.
    bool save(const std::vector<DashboardProfile> &profiles);

    /// Drops what the file still has for a dashboard of this name, in any case, that is neither
    /// among `profiles` nor on disk: a new one of that name must not get it. False if there was
    /// something and the file can't be written.
    bool forget(const QString &name, const std::vector<DashboardProfile> &profiles);

private:
    QString path;
    std::vector<DashboardProfile> known; ///< The profiles at the last load or save.
};
