#pragma once

#include "plugin/DashboardProfile.h"

#include <QtCore/QString>

#include <vector>

/// The file that keeps which vehicles go with which dashboard. Other processes write it too: a save
/// carries over what has changed here since the last one and leaves the rest as the file has it.
/// One thread at a time.
class VehicleAssignments
{
public:
    /// The file at `path` may not exist.
    explicit VehicleAssignments(QString path);

    /// Adds to `profiles` the vehicles that the file gives them. What can't be read, or belongs to
    /// no profile, is passed over. Among names that differ by case only the exact one counts, and
    /// of two profiles with one name the user's own.
    void load(std::vector<DashboardProfile> &profiles);

    /// Brings into `profiles` what other processes have saved since the last load or save, but for
    /// vehicles that have changed here. Belongs in front of a change of names.
    void takeOver(std::vector<DashboardProfile> &profiles);

    /// Saves the vehicles of `profiles`, and under a name that several have those of all of them.
    /// Dashboards that aren't among `profiles` keep theirs as long as they are on disk. False where
    /// the file can't be written; it is as it was then, and the next save makes up for it.
    bool save(const std::vector<DashboardProfile> &profiles);

    /// Drops what the file still has for a dashboard of this name, in any case, that neither is
    /// among `profiles` nor on disk: a new one must not get it. Writes the file only if there is
    /// something. False where that fails.
    bool forget(const QString &name, const std::vector<DashboardProfile> &profiles);

private:
    QString path;
    std::vector<DashboardProfile> known; ///< As of the last load or save, for their vehicles.
};
