#pragma once

#include "CodeEditor.h"

#include <QtCore/QObject>
#include <QtCore/QPointer>

class DashboardAbstractProfilesManager;
class HelpWindow;
class HostSettings;
class Navigation;
class SettingsWindow;

/// What documents ask the host for by the names "SoftwareConfiguration", "HelpBrowser" and
/// "StartVisualStudioCode": the settings, the help and the editor of code. GUI thread.
class ToolWindows final : public QObject
{
    Q_OBJECT

public:
    /// Adds the targets. All are borrowed and must outlive this object, and no target may be called
    /// after its end.
    ToolWindows(HostSettings &settings, const DashboardAbstractProfilesManager &store,
                Navigation &navigation);
    /// Closes the windows.
    ~ToolWindows() override;

Q_SIGNALS:
    /// The session is to be built anew with the settings as they are. Comes from the event loop.
    void restartRequested();

    /// Something failed that the user has asked for.
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
