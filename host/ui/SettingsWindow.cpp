#include "SettingsWindow.h"

#include "DashboardAbstractProfilesManager.h"
#include "settings/HostSettings.h"
#include "settings/Translations.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QUrl>
#include <QtQml/QQmlContext>

#include <algorithm>

namespace {

QVariantMap choice(const QString &text, const QString &value)
{
    return {{QStringLiteral("text"), text}, {QStringLiteral("value"), value}};
}

} // namespace

SettingsWindow::SettingsWindow(HostSettings &settings,
                               const DashboardAbstractProfilesManager &store,
                               Navigation &navigation)
    : HostWindow(QStringLiteral("SoftwareConfiguration"), navigation)
    , settings(settings)
    , store(store)
{
    rootContext()->setContextProperty(QStringLiteral("host_settings"), &settings);
    connect(&store, &DashboardAbstractProfilesManager::profileListChanged, this,
            &SettingsWindow::dashboardsChanged);
    connect(&settings, &HostSettings::startupDashboardChanged, this,
            &SettingsWindow::dashboardsChanged);
    open(QUrl(QStringLiteral("qrc:/qml/SettingsWindow.qml")));
}

SettingsWindow::~SettingsWindow()
{
    setSource(QUrl()); // Its bindings read this object.
}

QVariantList SettingsWindow::dashboards() const
{
    QVariantList choices{choice(tr("Last used"), {})};
    const std::vector<DashboardProfileHeader> headers = store.profileHeaders();
    for (const DashboardProfileHeader &header : headers)
        choices += choice(header.name, header.name);
    const QString chosen = settings.startupDashboard();
    const bool known = chosen.isEmpty() ||
                       std::any_of(headers.begin(), headers.end(),
                                   [&chosen](const auto &header) { return header.name == chosen; });
    if (!known)
        choices += choice(tr("%1 (no longer exists)").arg(chosen), chosen);
    return choices;
}

QVariantList SettingsWindow::telemetrySources() const
{
    QVariantList choices;
    for (const TelemetrySourceChoice &source : settings.telemetrySources())
        choices +=
            choice(QCoreApplication::translate("TelemetrySources", source.title), source.name);
    return choices;
}

QVariantList SettingsWindow::languages() const
{
    QVariantList choices;
    for (const Language &language : knownLanguages())
        choices += choice(language.name, language.code);
    return choices;
}
