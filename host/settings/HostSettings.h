#pragma once

#include "telemetry/TelemetrySourceChoices.h"

#include <QtCore/QFlags>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <vector>

class QSettings;

/// The user's settings, kept in the program's QSettings; set the application's names before. A
/// value that can't be read becomes its default, and `problem` says so. A value that can't be saved
/// holds until the program ends. GUI thread.
class HostSettings final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool useMph READ useMph WRITE setUseMph NOTIFY useMphChanged)
    Q_PROPERTY(QString startupDashboard READ startupDashboard WRITE setStartupDashboard NOTIFY
                   startupDashboardChanged)
    Q_PROPERTY(QString telemetrySource READ telemetrySource WRITE setTelemetrySource NOTIFY
                   telemetrySourceChanged)
    Q_PROPERTY(QString language READ language WRITE setLanguage NOTIFY languageChanged)
    Q_PROPERTY(bool restartNeeded READ restartNeeded NOTIFY restartNeededChanged)
    Q_PROPERTY(QString problem READ problem NOTIFY problemChanged)

public:
    /// `sources` must contain "demo", the default.
    explicit HostSettings(std::vector<TelemetrySourceChoice> sources);

    bool useMph() const { return mph; }
    void setUseMph(bool useMph);

    /// A profile's name, or empty for the one used last.
    QString startupDashboard() const { return dashboard; }
    void setStartupDashboard(const QString &name);

    /// The start-up dashboard if it is one of `profiles`, else empty and reported by `problem`.
    QString startupDashboardAmong(const QStringList &profiles);

    /// One of the sources' names.
    QString telemetrySource() const { return source; }
    void setTelemetrySource(const QString &name);
    /// A source's title in the current language; the name itself if it isn't one of the sources.
    QString titleOf(const QString &telemetrySource) const;
    const std::vector<TelemetrySourceChoice> &telemetrySources() const { return sources; }

    /// "en", "de", or empty for the system's.
    QString language() const { return chosenLanguage; }
    void setLanguage(const QString &language);

    /// Whether a setting has changed that the running session was created with.
    bool restartNeeded() const;

    /// A session is created with the settings as they are.
    void sessionStarted();

    /// What the user should know, one sentence a line; empty if all is well.
    QString problem() const;

Q_SIGNALS:
    void useMphChanged();
    void startupDashboardChanged();
    void telemetrySourceChanged();
    void languageChanged();
    void restartNeededChanged();
    void problemChanged();

private:
    enum Problem {
        DamagedFile = 1,
        Units = 2,
        Dashboard = 4,
        Source = 8,
        Language = 16,
        NotSaved = 32,
        DashboardGone = 64,
    };
    Q_DECLARE_FLAGS(Problems, Problem)

    struct SessionPart
    {
        bool mph = false;
        QString source;
    };

    void load();
    QString read(const QSettings &settings, const QString &key, const QString &fallback,
                 Problem problem);
    void save(const QString &key, const QString &value);
    void setProblem(Problem problem, bool present);
    bool isSource(const QString &name) const;

    const std::vector<TelemetrySourceChoice> sources;
    bool mph = false;
    QString dashboard;
    QString source;
    QString chosenLanguage;
    SessionPart session;
    Problems problems;
};
