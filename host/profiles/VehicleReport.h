#pragma once

class DashboardAbstractProfilesManager;
class QString;

/// Tells the store which vehicle is driven. One that no dashboard knows gets the dashboard that it
/// had under a former name.
void reportVehicle(DashboardAbstractProfilesManager &store, const QString &name);
