#pragma once

#include "HostWindow.h"

#include <QtCore/QVariantList>

class DashboardAbstractProfilesManager;
class HostSettings;

/// The window of the settings. Choices are saved at once; what the running session was built with
/// waits for `restartRequested`. GUI thread.
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

    /// The user wants the session to be built anew with the settings as they are. Emitted out of
    /// the document: whoever deletes the window in answer connects it queued.
    void restartRequested();

private:
    const HostSettings &settings;
    const DashboardAbstractProfilesManager &store;
};
