#pragma once

#include <QtCore/QtGlobal>

class DashboardAbstractProfilesManager;
class IDashboardEngine;
class INavigationService;
class IRecentVehicleNameProvider;

// The library's exports; their names are undecorated. A host resolves them by name and calls them
// on its GUI thread, once it has a Qt application object: `CreateE` first, then `CreatePM` and
// `Init`.

extern "C" {

/// Creates the engine; the caller owns it. `useMph` makes dashboards show miles per hour. Without
/// `hardwareAcceleration` consumers get a message instead of a dashboard. Both are fixed for the
/// engine's lifetime. Throws only if an allocation throws.
Q_DECL_EXPORT IDashboardEngine *CreateE(bool useMph, bool hardwareAcceleration);

/// Creates the store of dashboards; the caller owns it. The store reads the dashboards from disk
/// and sets the active one's document in `engine`. Both arguments are borrowed and must outlive the
/// store. Returns null if either is null. Throws only if an allocation throws.
Q_DECL_EXPORT DashboardAbstractProfilesManager *
CreatePM(IDashboardEngine *engine, IRecentVehicleNameProvider *vehicleProvider);

/// Registers the views "DashboardEditor" and "DashboardWindow" with `navigation`, in this order,
/// and the QML type that dashboards import. Must run before the first dashboard is loaded. Each
/// call of a factory creates a view model; the caller owns it. Both arguments are borrowed and must
/// outlive all view models. If either is null, logs that and registers nothing.
Q_DECL_EXPORT void Init(INavigationService *navigation, IDashboardEngine *engine);
}

using CreateEFunction = decltype(&CreateE);
using CreatePMFunction = decltype(&CreatePM);
using InitFunction = decltype(&Init);
