#include "HostSettings.h"

#include "Translations.h"
#include "system/AbandonedLock.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QSettings>
#include <QtCore/QVariant>

#include <algorithm>
#include <utility>

namespace {

QString unitsKey()
{
    return QStringLiteral("Preferences/Units");
}

QString dashboardKey()
{
    return QStringLiteral("Preferences/StartupDashboard");
}

QString sourceKey()
{
    return QStringLiteral("Preferences/TelemetrySource");
}

QString languageKey()
{
    return QStringLiteral("Preferences/Language");
}

QString unitsName(bool mph)
{
    return mph ? QStringLiteral("mph") : QStringLiteral("kmh");
}

/// Copies a damaged file: QSettings will overwrite it without what it couldn't read.
void keepDamaged(const QString &file)
{
    const QString copy = file + QStringLiteral(".damaged");
    QFile::remove(copy);
    QFile::copy(file, copy);
}

} // namespace

HostSettings::HostSettings(std::vector<TelemetrySourceChoice> sources)
    : sources(std::move(sources))
{
    load();
    session = {mph, source};
}

void HostSettings::load()
{
    const QSettings settings;
    const QString units = read(settings, unitsKey(), unitsName(false), Units);
    mph = units == unitsName(true);
    if (!mph && units != unitsName(false))
        problems |= Units;
    dashboard = read(settings, dashboardKey(), {}, Dashboard);
    const QString demo = QStringLiteral("demo");
    source = read(settings, sourceKey(), demo, Source);
    if (!isSource(source)) {
        problems |= Source;
        source = demo;
    }
    chosenLanguage = read(settings, languageKey(), {}, Language);
    if (!chosenLanguage.isEmpty() && !isLanguage(chosenLanguage)) {
        problems |= Language;
        chosenLanguage.clear();
    }
    // Known only now, since QSettings parses a section when one of its values is read.
    if (settings.status() == QSettings::FormatError) {
        problems |= DamagedFile;
        keepDamaged(settings.fileName());
    }
}

QString HostSettings::read(const QSettings &settings, const QString &key, const QString &fallback,
                           Problem problem)
{
    if (!settings.contains(key))
        return fallback;
    const QVariant value = settings.value(key);
    if (value.type() == QVariant::String)
        return value.toString();
    problems |= problem;
    return fallback;
}

void HostSettings::save(const QString &key, const QString &value)
{
    // A new object each time: after one error its status never changes again.
    QSettings settings;
    removeAbandonedLock(settings);
    settings.setValue(key, value);
    settings.sync();
    setProblem(NotSaved, settings.status() == QSettings::AccessError || !settings.isWritable());
}

void HostSettings::setProblem(Problem problem, bool present)
{
    if (problems.testFlag(problem) == present)
        return;
    problems.setFlag(problem, present);
    Q_EMIT problemChanged();
}

bool HostSettings::isSource(const QString &name) const
{
    return std::any_of(sources.begin(), sources.end(),
                       [&name](const TelemetrySourceChoice &known) { return known.name == name; });
}

void HostSettings::setUseMph(bool useMph)
{
    setProblem(Units, false);
    if (useMph == mph)
        return;
    const bool neededBefore = restartNeeded();
    mph = useMph;
    save(unitsKey(), unitsName(mph));
    Q_EMIT useMphChanged();
    if (restartNeeded() != neededBefore)
        Q_EMIT restartNeededChanged();
}

void HostSettings::setStartupDashboard(const QString &name)
{
    setProblem(Dashboard, false);
    setProblem(DashboardGone, false);
    if (name == dashboard)
        return;
    dashboard = name;
    save(dashboardKey(), dashboard);
    Q_EMIT startupDashboardChanged();
}

QString HostSettings::startupDashboardAmong(const QStringList &profiles)
{
    const bool found = profiles.contains(dashboard);
    setProblem(DashboardGone, !found && !dashboard.isEmpty());
    return found ? dashboard : QString();
}

QString HostSettings::titleOf(const QString &telemetrySource) const
{
    for (const TelemetrySourceChoice &choice : sources) {
        if (choice.name == telemetrySource)
            return QCoreApplication::translate("TelemetrySources", choice.title);
    }
    return telemetrySource;
}

void HostSettings::setTelemetrySource(const QString &name)
{
    if (!isSource(name))
        return;
    setProblem(Source, false);
    if (name == source)
        return;
    const bool neededBefore = restartNeeded();
    source = name;
    save(sourceKey(), source);
    Q_EMIT telemetrySourceChanged();
    if (restartNeeded() != neededBefore)
        Q_EMIT restartNeededChanged();
}

void HostSettings::setLanguage(const QString &language)
{
    if (!language.isEmpty() && !isLanguage(language))
        return;
    setProblem(Language, false);
    if (language == chosenLanguage)
        return;
    chosenLanguage = language;
    save(languageKey(), chosenLanguage);
    Q_EMIT languageChanged();
}

bool HostSettings::restartNeeded() const
{
    return mph != session.mph || source != session.source;
}

void HostSettings::sessionStarted()
{
    const bool neededBefore = restartNeeded();
    session = {mph, source};
    if (neededBefore)
        Q_EMIT restartNeededChanged();
}

QString HostSettings::problem() const
{
    const QString file = QDir::toNativeSeparators(QSettings().fileName());
    QStringList lines;
    if (problems.testFlag(NotSaved)) {
        lines +=
            tr("Settings can't be saved to '%1'; changes last until the program ends.").arg(file);
    }
    if (problems.testFlag(DamagedFile)) {
        lines += tr("The settings file was damaged. It is kept as '%1'.")
                     .arg(file + QStringLiteral(".damaged"));
    }
    if (problems.testFlag(Units))
        lines += tr("The saved units are unknown; km/h is used.");
    if (problems.testFlag(Dashboard))
        lines += tr("The saved start-up dashboard can't be read; the one used last is shown.");
    if (problems.testFlag(DashboardGone)) {
        lines += tr("The start-up dashboard '%1' no longer exists; the one used last is shown.")
                     .arg(dashboard);
    }
    if (problems.testFlag(Source))
        lines += tr("The saved telemetry source is unknown; the demo is used.");
    if (problems.testFlag(Language))
        lines += tr("The saved language is unknown; the system's is used.");
    return lines.join(QLatin1Char('\n'));
}
