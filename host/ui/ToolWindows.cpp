#include "ToolWindows.h"

#include "HelpWindow.h"
#include "Navigation.h"
#include "SettingsWindow.h"

#include <memory>

ToolWindows::ToolWindows(HostSettings &settings, const DashboardAbstractProfilesManager &store,
                         Navigation &navigation)
    : settings(settings)
    , store(store)
    , navigation(navigation)
{
    navigation.addTarget(QStringLiteral("SoftwareConfiguration"),
                         [this](const QVariant &) { showSettings(); });
    navigation.addTarget(QStringLiteral("HelpBrowser"),
                         [this](const QVariant &topic) { showHelp(topic.toString()); });
    navigation.addTarget(QStringLiteral("StartVisualStudioCode"),
                         [this](const QVariant &argument) { codeEditor.open(argument); });
    connect(&codeEditor, &CodeEditor::failed, this, &ToolWindows::failed);
}

ToolWindows::~ToolWindows()
{
    delete settingsWindow;
    delete helpWindow;
}

void ToolWindows::showSettings()
{
    if (settingsWindow != nullptr && settingsWindow->isVisible()) {
        settingsWindow->present();
        return;
    }
    delete settingsWindow; // A closed window may still wait for its deletion.
    settingsWindow = std::make_unique<SettingsWindow>(settings, store, navigation).release();
    connect(settingsWindow, &HostWindow::closed, settingsWindow, &QObject::deleteLater);
    connect(settingsWindow, &SettingsWindow::restartRequested, this, &ToolWindows::restartRequested,
            Qt::QueuedConnection);
}

void ToolWindows::showHelp(const QString &topic)
{
    if (helpWindow != nullptr && helpWindow->isVisible()) {
        helpWindow->showTopic(topic);
        helpWindow->present();
        return;
    }
    delete helpWindow;
    helpWindow = std::make_unique<HelpWindow>(topic, navigation).release();
    connect(helpWindow, &HostWindow::closed, helpWindow, &QObject::deleteLater);
}
