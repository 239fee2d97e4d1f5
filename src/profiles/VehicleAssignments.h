#pragma once

#include <vector>

class QString;
struct DashboardProfile;

/// Adds to `profiles` the vehicles that the file at `path` gives them. What can't be read, or
/// belongs to no profile, is passed over.
void loadVehicleAssignments(const QString &path, std::vector<DashboardProfile> &profiles);

/// Replaces the file at `path` with the vehicles of `profiles`. A failure leaves it as it was.
bool saveVehicleAssignments(const QString &path, const std::vector<DashboardProfile> &profiles);
