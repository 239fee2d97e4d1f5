#pragma once

class DashboardAbstractProfilesManager;
class QString;

/// Whether any dashboard has the vehicle.
bool isAssigned(const DashboardAbstractProfilesManager &store, const QString &vehicle);

/// Tells the store which vehicle is driven. If no dashboard has it, it gets the dashboard that it
/// had under a former name.
void reportVehicle(DashboardAbstractProfilesManager &store, const QString &name);
