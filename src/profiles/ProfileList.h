#pragma once

#include "plugin/DashboardProfile.h"

#include <QtCore/QString>

#include <set>
#include <vector>

/// The store's dashboards in memory, in the order in which it lists them. Knows nothing of which
/// one is active. One thread at a time; pointers last until the list changes.
class ProfileList
{
public:
    using Id = DashboardProfileHeader::Id;

    /// Adds the dashboards right under `root`. One that is missing or can't be read has none.
    void scan(const QString &root, bool builtIn);

    /// Adds `directory` at the end under a new id, unless it holds no dashboard.
    void add(const QString &directory, bool builtIn);

    /// Sorts by name. Of two with one name the user's own comes first, since a name means that one.
    void sort();

    /// Gives the profile its directory, whose name is the profile's.
    static void setDirectory(DashboardProfile &profile, const QString &directory);

    void remove(Id id);

    /// Null if there is none. Of several with one name, or with one vehicle, the first.
    const DashboardProfile *find(Id id) const;
    DashboardProfile *find(Id id);
    const DashboardProfile *find(const QString &name, Qt::CaseSensitivity sensitivity) const;
    const DashboardProfile *findByVehicle(const QString &vehicle) const;

    /// Gives the vehicle to this dashboard and takes it from all others; logs both. An empty name
    /// changes nothing. Returns whose vehicles changed.
    std::set<Id> assignVehicle(Id id, const QString &vehicle);

    const std::vector<DashboardProfile> &all() const { return profiles; }
    std::vector<DashboardProfile> &all() { return profiles; }

private:
    std::vector<DashboardProfile> profiles;
    Id nextId = 0;
};
