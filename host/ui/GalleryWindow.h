#pragma once

#include "HostWindow.h"
#include "ProfileActions.h"
#include "ProfileModel.h"
#include "TelemetryStatus.h"

class IDashboardEngine;

/// The host's main window: the collection of dashboards, the active one live, and how the telemetry
/// goes. Other windows open through the navigation: "DashboardWindow", "DashboardEditor" with the
/// document's path, "SoftwareConfiguration" and "HelpBrowser" with a page.
class GalleryWindow final : public HostWindow
{
    Q_OBJECT

public:
    /// Everything is borrowed and must outlive the window. `telemetrySource` names for people where
    /// telemetry comes from.
    GalleryWindow(Navigation &navigation, IDashboardEngine &engine,
                  DashboardAbstractProfilesManager &store, VehicleNames &vehicles,
                  const TelemetryMonitor &monitor, const QString &telemetrySource);

    /// Shows the window.
    void openGallery();

    /// Names anew, in another language perhaps, where telemetry comes from.
    void setTelemetrySource(const QString &name) { telemetry.setSource(name); }

    /// Says that it could not be opened.
    void setTelemetryAbsent() { telemetry.setAbsent(); }

    /// Waits for a copy or a removal that is under way.
    ~GalleryWindow() override;

private:
    IDashboardEngine &dashboards;
    ProfileModel model;
    ProfileActions actions;
    TelemetryStatus telemetry;
};
