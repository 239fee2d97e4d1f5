#include "settings/HostSettings.h"
#include "settings/SettledOptions.h"
#include "support/TemporaryHome.h"
#include "support/TestFiles.h"

#include <QtTest/QtTest>

class HostSettingsTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<TemporaryHome> home;

    static std::vector<TelemetrySourceChoice> sources()
    {
        return {{"demo"_q, "Demo"}, {"other"_q, "Other"}};
    }

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
        {
            HostSettings settings(sources());
            const QSignalSpy spies[] = {{&settings, &HostSettings::useMphChanged},
                                        {&settings, &HostSettings::startupDashboardChanged},
                                        {&settings, &HostSettings::telemetrySourceChanged},
                                        {&settings, &HostSettings::languageChanged}};
            for (int i = 0; i < 2; ++i) {
                settings.setUseMph(true);
                settings.setStartupDashboard("@Ö, 1\\2;\n3"_q);
                settings.setTelemetrySource("other"_q);
                settings.setLanguage("de"_q);
                settings.setTelemetrySource("unknown"_q);
                settings.setLanguage("fr"_q);
            }
            for (const QSignalSpy &spy : spies)
                QCOMPARE(spy.count(), 1);
        }
        const HostSettings settings(sources());
        QVERIFY(settings.useMph());
        QCOMPARE(settings.startupDashboard(), "@Ö, 1\\2;\n3"_q);
        QCOMPARE(settings.telemetrySource(), "other"_q);
        QCOMPARE(settings.language(), "de"_q);
        QCOMPARE(settings.problem(), QString());
    }

    void aRestartIsNeededWhileTheSessionDiffers()
    {
        HostSettings settings(sources());
        const QSignalSpy spy(&settings, &HostSettings::restartNeededChanged);
        settings.setStartupDashboard("Road"_q);
        settings.setLanguage("de"_q);
        QVERIFY(!settings.restartNeeded());
        settings.setUseMph(true);
        settings.setTelemetrySource("other"_q);
        settings.setUseMph(false);
        QVERIFY(settings.restartNeeded());
        settings.setTelemetrySource("demo"_q);
        QVERIFY(!settings.restartNeeded());
        settings.setUseMph(true);
        settings.sessionStarted();
        QVERIFY(!settings.restartNeeded());
        QCOMPARE(spy.count(), 4);
    }

    void aChangeGoesBeforeTheCommandLineWhichGoesBeforeWhatWasSet()
    {
        HostSettings settings(sources());
        SettledOptions bare({}, settings);
        SessionOptions commandLine;
        commandLine.telemetry.source = "my.pcap"_q;
        commandLine.useMph = true;
        SettledOptions given(commandLine, settings);
        const auto compare = [&](bool bareMph, const char *bareSource, bool givenMph,
                                 const char *givenSource) {
            for (int i = 0; i < 2; ++i) { // A second session changes nothing.
                const SessionOptions first = bare.take();
                const SessionOptions second = given.take();
                QVERIFY(first.useMph == bareMph && second.useMph == givenMph);
                QCOMPARE(first.telemetry.source, QLatin1String(bareSource));
                QCOMPARE(second.telemetry.source, QLatin1String(givenSource));
            }
        };
        compare(false, "demo", true, "my.pcap");
        settings.setTelemetrySource("other"_q);
        compare(false, "other", true, "other");
        settings.setUseMph(true);
        compare(true, "other", true, "other");
        settings.setUseMph(false);
        compare(false, "other", false, "other");
    }

    void aVanishedDashboardIsToldAndKept()
    {
        HostSettings settings(sources());
        settings.setStartupDashboard("Mine"_q);
        QCOMPARE(settings.startupDashboardAmong({"Road"_q, "Mine"_q}), "Mine"_q);
        QCOMPARE(settings.problem(), QString());
        QCOMPARE(settings.startupDashboardAmong({"Road"_q}), QString());
        QVERIFY(settings.problem().contains("'Mine'"_q));
        QCOMPARE(settings.startupDashboard(), "Mine"_q);
        settings.setStartupDashboard({});
        QCOMPARE(settings.startupDashboardAmong({}), QString());
        QCOMPARE(settings.problem(), QString());
    }

#ifndef Q_OS_WIN // There settings are in the registry, which keeps them whole.
    void whatCannotBeReadIsItsDefaultAndTold_data()
    {
        QTest::addColumn<QString>("told");
        QTest::newRow("Units=parsecs") << "units";
        QTest::newRow("Units=mph, kmh") << "units";
        QTest::newRow(R"(StartupDashboard=@Variant(\0\0\0\x7f))") << "dashboard";
        QTest::newRow("TelemetrySource=gone") << "telemetry";
        QTest::newRow("Language=tlh") << "language";
        QTest::newRow("my notes without a value") << ".damaged";
    }

    void whatCannotBeReadIsItsDefaultAndTold()
    {
        QFETCH(QString, told);
        const QByteArray content = QByteArray("[Preferences]\n") + QTest::currentDataTag() + '\n';
        writeFile(file(), content);
        HostSettings settings(sources());
        QVERIFY(!settings.useMph());
        QCOMPARE(settings.startupDashboard() + settings.language(), QString());
        QCOMPARE(settings.telemetrySource(), "demo"_q);
        QCOMPARE(settings.problem().count(QLatin1Char('\n')), 0);
        QVERIFY2(settings.problem().contains(told), qPrintable(settings.problem()));
        settings.setUseMph(true);
        if (told == ".damaged"_q)
            QCOMPARE(readFile(file() + told), content);
    }

    void aLockThatNobodyHoldsIsNotWaitedFor()
    {
        const QString lock = file() + ".lock"_q;
        writeFile(lock, {});
        HostSettings settings(sources());
        QElapsedTimer time;
        time.start();
        settings.setUseMph(true);
        QVERIFY2(time.elapsed() < 10'000, "QSettings waits for half a minute");
        QVERIFY(makePipe(lock));
        settings.setUseMph(false);
        QVERIFY(!HostSettings(sources()).useMph());
    }

    void whatCannotBeSavedHoldsForThisRun()
    {
        writeFile(QFileInfo(file()).absolutePath(), "in the folder's place");
        HostSettings settings(sources());
        const QSignalSpy spy(&settings, &HostSettings::problemChanged);
        settings.setUseMph(true);
        QVERIFY(settings.useMph());
        QCOMPARE(spy.count(), 1);
        QVERIFY2(settings.problem().contains(file()), qPrintable(settings.problem()));
    }
#endif
};

QTEST_GUILESS_MAIN(HostSettingsTest)
#include "HostSettingsTest.moc"
