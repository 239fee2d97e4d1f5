#pragma once

#include "DashboardAbstractProfilesManager.h"
#include "Exports.h"
#include "IDashboardEngine.h"

#include <QtCore/QLibrary>
#include <QtCore/QString>

#include <memory>

/// The library GAUGE64, loaded at run time and used only through its three exports. It stays loaded
/// to the end of the process, even when this object is gone, since the QML types that it registers
/// live in it. All operations are for the GUI thread.
class GaugeLibrary
{
public:
    /// Loads the library from `directory`. Check `error` before any other use.
    explicit GaugeLibrary(const QString &directory);

    /// Why the library can't be used; empty if it can. Unless it is empty, call nothing below.
    const QString &error() const { return errorText; }

    /// An engine for the caller, who ends it with `shutdown`.
    std::unique_ptr<IDashboardEngine> createEngine(bool useMph, bool hardwareAcceleration) const;

    /// The store of dashboards, for the caller. It borrows both arguments and must be destroyed
    /// before them.
    std::unique_ptr<DashboardAbstractProfilesManager>
    createProfiles(IDashboardEngine &engine, IRecentVehicleNameProvider &vehicles) const;

    /// Registers the library's views with `navigation`. Borrows both arguments for as long as views
    /// can be opened.
    void init(INavigationService &navigation, IDashboardEngine &engine) const;

private:
    template<typename Function> Function resolve(const char *name);

    QLibrary library;
    QString errorText;
    CreateEFunction createE = nullptr;
    CreatePMFunction createPM = nullptr;
    InitFunction initialise = nullptr;
};
