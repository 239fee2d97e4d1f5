#pragma once

#include "HostWindow.h"

#include <QtCore/QVariantList>

class DashboardAbstractProfilesManager;
class HostSettings;

/// The settings window. Choices are saved at once; those that a session is built with apply
/// after `restartRequested`. GUI thread.
class SettingsWindow final : public HostWindow
{
    Q_OBJECT
    // Lists of {text, value} for a ComboBox.
    Q_PROPERTY(QVariantList dashboards READ dashboards NOTIFY dashboardsChanged)
    Q_PROPERTY(QVariantList telemetrySources READ telemetrySources CONSTANT)
    Q_PROPERTY(QVariantList languages READ languages CONSTANT)

public:
    /// All are borrowed.
    SettingsWindow(HostSettings &settings, const DashboardAbstractProfilesManager &store,
                   Navigation &navigation);
    ~SettingsWindow() override;

    QVariantList dashboards() const;
    QVariantList telemetrySources() const;
    QVariantList languages() const;

Q_SIGNALS:
    void dashboardsChanged();

    /// The user wants the session restarted with the current settings. Emitted from within
    /// the document, so a receiver that deletes the window must connect queued.
    void restartRequested();

private:
    const HostSettings &settings;
    const DashboardAbstractProfilesManager &store;
};
