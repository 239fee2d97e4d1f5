#pragma once

#include "DashboardAbstractProfilesManager.h"
#include "Exports.h"
#include "IDashboardEngine.h"

#include <QtCore/QLibrary>
#include <QtCore/QString>

#include <memory>

/// The library GAUGE64, loaded at run time and met only through its exports. Stays loaded to the
/// end of the process, since the QML types that it registers live there.
class GaugeLibrary
{
public:
    /// Loads the library that lies in `directory`.
    explicit GaugeLibrary(const QString &directory);

    /// Why the library can't be used; empty if it can. The operations below need it usable.
    const QString &error() const { return errorText; }

    std::unique_ptr<IDashboardEngine> createEngine(bool useMph, bool hardwareAcceleration) const;

    /// The store must go before the engine.
    std::unique_ptr<DashboardAbstractProfilesManager>
    createProfiles(IDashboardEngine &engine, IRecentVehicleNameProvider &vehicles) const;

    void init(INavigationService &navigation, IDashboardEngine &engine) const;

private:
    template<typename Function> Function resolve(const char *name);

    QLibrary library;
    QString errorText;
    CreateEFunction createE = nullptr;
    CreatePMFunction createPM = nullptr;
    InitFunction initialise = nullptr;
};
