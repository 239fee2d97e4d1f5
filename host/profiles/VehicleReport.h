#pragma once

class DashboardAbstractProfilesManager;
class QString;

/// Whether any dashboard is remembered for the vehicle.
bool isAssigned(const DashboardAbstractProfilesManager &store, const QString &vehicle);

/// Tells the store which vehicle is driven. One that no dashboard knows gets the dashboard that it
/// had under a former name.
void reportVehicle(DashboardAbstractProfilesManager &store, const QString &name);
