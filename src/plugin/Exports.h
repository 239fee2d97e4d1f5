#pragma once

#include <QtCore/QtGlobal>

class DashboardAbstractProfilesManager;
class IDashboardEngine;
class INavigationService;
class IRecentVehicleNameProvider;

// The library's exports, undecorated. A host resolves them by name and calls them on the thread of
// its GUI, after its Qt application object exists: `CreateE` first, then `CreatePM` and `Init`.

extern "C" {

/// Makes the engine; the caller owns it. `useMph` asks dashboards for miles per hour.
/// Without `hardwareAcceleration` consumers get a message in place of dashboards. Both are fixed
/// for the engine's life. Throws what its allocations throw.
Q_DECL_EXPORT IDashboardEngine *CreateE(bool useMph, bool hardwareAcceleration);

/// Makes the store of dashboards, which reads them from disk and sends the active one's document to
/// `engine`; the caller owns it. Both arguments are borrowed and must outlive it. Null when either
/// is. Throws what its allocations throw.
Q_DECL_EXPORT DashboardAbstractProfilesManager *
CreatePM(IDashboardEngine *engine, IRecentVehicleNameProvider *vehicleProvider);

/// Tells `navigation` of the views "DashboardEditor" and "DashboardWindow", in this order, and
/// registers the QML type that documents need. Must run before the first dashboard is loaded. The
/// caller owns what the factories make, each call a new view model; both arguments are borrowed and
/// must outlive every one of them. A null pointer is logged, and then nothing is registered.
Q_DECL_EXPORT void Init(INavigationService *navigation, IDashboardEngine *engine);
}

using CreateEFunction = decltype(&CreateE);
using CreatePMFunction = decltype(&CreatePM);
using InitFunction = decltype(&Init);
