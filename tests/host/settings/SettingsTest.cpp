#include "settings/HostSettings.h"
#include "settings/SettledOptions.h"
#include "settings/Translations.h"
#include "support/TemporaryHome.h"
#include "support/TestFiles.h"

#include <QtTest/QtTest>

/// The settings and what follows from them: a session's options and the language.
class SettingsTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<TemporaryHome> home;
    const std::vector<TelemetrySourceChoice> sources{{"demo"_q, "Demo"}, {"other"_q, "Other"}};

    /// Where the settings are kept, except on Windows.
    static QString file() { return QSettings().fileName(); }

private Q_SLOTS:
    void initTestCase()
    {
        QCoreApplication::setOrganizationName("gauge-test"_q);
        QCoreApplication::setApplicationName("settings"_q);
    }
    void init() { home = std::make_unique<TemporaryHome>(); }
    void cleanup() { home.reset(); }

    void whatIsSetIsThereInTheNextRun()
    {
        HostSettings now(sources);
        QSignalSpy changes(&now, &HostSettings::languageChanged);
        for (const char *language : {"de", "de", "fr"})
            now.setLanguage(QLatin1String(language));
        QCOMPARE(changes.count(), 1);
        now.setUseMph(true);
        now.setStartupDashboard("@Ö, 1\\2;\n3"_q);
        now.setTelemetrySource("other"_q);
        now.setTelemetrySource("unknown"_q);
        const HostSettings next(sources);
        QVERIFY(next.useMph());
        QCOMPARE(next.startupDashboard(), "@Ö, 1\\2;\n3"_q);
        QCOMPARE(next.telemetrySource(), "other"_q);
        QCOMPARE(next.language(), "de"_q);
        QCOMPARE(next.problem(), QString());
    }

    void aChangeGoesBeforeTheCommandLineWhichGoesBeforeWhatWasSet()
    {
        HostSettings settings(sources);
        SessionOptions commandLine;
        commandLine.telemetry.source = "a.pcap"_q;
        commandLine.useMph = true;
        SettledOptions open({}, settings);
        SettledOptions given(commandLine, settings);
        const auto taken = [](SettledOptions &options) {
            options.take(); // A further session changes nothing.
            const SessionOptions session = options.take();
            return session.telemetry.source + (session.useMph.value() ? " mph"_q : " km/h"_q);
        };
        QCOMPARE(taken(open), "demo km/h"_q);
        QCOMPARE(taken(given), "a.pcap mph"_q);
        settings.setTelemetrySource("other"_q);
        QCOMPARE(taken(given), "other mph"_q);
        settings.setUseMph(true);
        taken(given);
        settings.setUseMph(false);
        QCOMPARE(taken(given), "other km/h"_q);
    }

    void textsComeInTheFirstLanguageOfTheSystemThatIsKnown()
    {
        const QString de = "Warten auf Daten vom Spiel: 1 Fahrzeug, 2 Fahrzeuge"_q;
        const QString en = "Waiting for game data: 1 vehicle, 2 vehicles"_q;
        const QVector<QPair<QString, QString>> texts{
            {"de-AT"_q, de}, {"en-GB de"_q, en}, {"fr de-Latn-DE"_q, de}, {"fr den"_q, en}};
        const auto vehicles = [](int count) {
            return QCoreApplication::translate("ProfileCard", "%n vehicle(s)", nullptr, count);
        };
        for (const auto &[system, text] : texts) {
            Translations translations(system.split(QLatin1Char(' ')));
            for (const char *language : {"de", "en", ""})
                translations.use(QLatin1String(language));
            QCOMPARE("%1: %2, %3"_q.arg(
                         QCoreApplication::translate("DashboardEngine", "Waiting for game data"),
                         vehicles(1), vehicles(2)),
                     text);
        }
    }

#ifndef Q_OS_WIN // There settings are in the registry.
    void whatCannotBeReadIsItsDefaultToldAndKept()
    {
        const QByteArray content =
            "[Preferences]\nUnits=parsecs\nTelemetrySource=gone\nLanguage=tlh\n"
            "StartupDashboard=@Variant(\\0\\0\\0\\x7f)\nnotes without a value\n";
        writeFile(file(), content);
        HostSettings settings(sources);
        QVERIFY(!settings.useMph());
        QCOMPARE(settings.startupDashboard() + settings.language(), QString());
        QCOMPARE(settings.telemetrySource(), "demo"_q);
        for (const char *told : {"units", "telemetry", "language", "dashboard", ".damaged"})
            QVERIFY2(settings.problem().contains(QLatin1String(told)), told);
        settings.setUseMph(true);
        QCOMPARE(readFile(file() + ".damaged"_q), content);
    }

    void whatCannotBeSavedHoldsForThisRun()
    {
        writeFile(QFileInfo(file()).absolutePath(), "in the folder's place");
        HostSettings settings(sources);
        settings.setUseMph(true);
        QVERIFY(settings.useMph());
        QVERIFY2(settings.problem().contains(file()), qPrintable(settings.problem()));
    }

    void aLockThatNobodyHoldsIsNotWaitedFor()
    {
        QVERIFY(QDir().mkpath(QFileInfo(file()).absolutePath()));
        QVERIFY(makePipe(file() + ".lock"_q)); // On which QSettings would wait for ever.
        HostSettings(sources).setUseMph(true);
        writeFile(file() + ".lock"_q, {});
        QElapsedTimer time;
        time.start();
        HostSettings(sources).setUseMph(false);
        QVERIFY2(time.elapsed() < 10'000, "QSettings waits for half a minute");
        QVERIFY(!HostSettings(sources).useMph());
    }
#endif
};

QTEST_GUILESS_MAIN(SettingsTest)
#include "SettingsTest.moc"
