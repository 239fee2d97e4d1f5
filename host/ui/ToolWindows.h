#pragma once

#include "CodeEditor.h"

#include <QtCore/QObject>
#include <QtCore/QPointer>

class DashboardAbstractProfilesManager;
class HelpWindow;
class HostSettings;
class Navigation;
class SettingsWindow;

/// What documents request from the host as "SoftwareConfiguration", "HelpBrowser" and
/// "StartVisualStudioCode": settings, help and the code editor. GUI thread.
class ToolWindows final : public QObject
{
    Q_OBJECT

public:
    /// Registers the tools with `navigation`. Borrows all three, which must outlive this object; no
    /// tool may be opened after its end.
    ToolWindows(HostSettings &settings, const DashboardAbstractProfilesManager &store,
                Navigation &navigation);
    /// Closes the windows.
    ~ToolWindows() override;

Q_SIGNALS:
    /// The user wants the session restarted with the current settings. Emitted from the event loop.
    void restartRequested();

    /// A user's request failed.
    void failed(const QString &message);

private:
    void showSettings();
    void showHelp(const QString &topic);

    HostSettings &settings;
    const DashboardAbstractProfilesManager &store;
    Navigation &navigation;
    CodeEditor codeEditor;
    QPointer<SettingsWindow> settingsWindow;
    QPointer<HelpWindow> helpWindow;
};
