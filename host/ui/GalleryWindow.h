#pragma once

#include "HostWindow.h"
#include "ProfileActions.h"
#include "ProfileModel.h"
#include "TelemetryStatus.h"

class IDashboardEngine;

/// The host's main window: the dashboards, the active one live, and the state of the telemetry.
/// Other windows open through the navigation: "DashboardWindow", "DashboardEditor" with the
/// document's path, "SoftwareConfiguration" and "HelpBrowser" with a page.
class GalleryWindow final : public HostWindow
{
    Q_OBJECT

public:
    /// Everything is borrowed and must outlive the window. `telemetrySource` is the
    /// telemetry source's name, as shown.
    GalleryWindow(Navigation &navigation, IDashboardEngine &engine,
                  DashboardAbstractProfilesManager &store, VehicleNames &vehicles,
                  const TelemetryMonitor &monitor, const QString &telemetrySource);

    void openGallery();

    /// Changes the telemetry source's shown name, for instance to another language.
    void setTelemetrySource(const QString &name) { telemetry.setSource(name); }

    /// Shows that the telemetry source could not be opened.
    void setTelemetryAbsent() { telemetry.setAbsent(); }

    /// Waits for a running copy or removal.
    ~GalleryWindow() override;

private:
    IDashboardEngine &dashboards;
    ProfileModel model;
    ProfileActions actions;
    TelemetryStatus telemetry;
};
