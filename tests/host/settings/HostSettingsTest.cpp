#include "settings/HostSettings.h"
#include "settings/SettledOptions.h"
#include "support/SystemLimits.h"
#include "support/TemporaryHome.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtTest/QSignalSpy>
#include <QtTest/QtTest>

namespace {

HostSettings makeSettings()
{
    return HostSettings({{QStringLiteral("demo"), "Demo"}, {QStringLiteral("other"), "Other"}});
}

QString settingsFile()
{
    return QSettings().fileName();
}

void writeSettings(const QByteArray &content)
{
    QVERIFY(QDir().mkpath(QFileInfo(settingsFile()).absolutePath()));
    QFile file(settingsFile());
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
}

} // namespace

class HostSettingsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QCoreApplication::setOrganizationName(QStringLiteral("gauge-test"));
        QCoreApplication::setApplicationName(QStringLiteral("settings"));
    }
    void init() { home = std::make_unique<TemporaryHome>(); }
    void cleanup() { home.reset(); }

    void whatIsSetIsThereInTheNextRun()
    {
        {
            HostSettings settings = makeSettings();
            QVERIFY(!settings.useMph());
            QCOMPARE(settings.startupDashboard(), QString());
            QCOMPARE(settings.telemetrySource(), QStringLiteral("demo"));
            QCOMPARE(settings.language(), QString());
            const QSignalSpy units(&settings, &HostSettings::useMphChanged);
            const QSignalSpy dashboard(&settings, &HostSettings::startupDashboardChanged);
            const QSignalSpy source(&settings, &HostSettings::telemetrySourceChanged);
            const QSignalSpy language(&settings, &HostSettings::languageChanged);
            for (int i = 0; i < 2; ++i) {
                settings.setUseMph(true);
                settings.setStartupDashboard(QStringLiteral("@Ö, 1\\2;\n3"));
                settings.setTelemetrySource(QStringLiteral("other"));
                settings.setLanguage(QStringLiteral("de"));
            }
            QCOMPARE(units.count() + dashboard.count() + source.count() + language.count(), 4);
            QCOMPARE(settings.problem(), QString());
        }
        const HostSettings settings = makeSettings();
        QVERIFY(settings.useMph());
        QCOMPARE(settings.startupDashboard(), QStringLiteral("@Ö, 1\\2;\n3"));
        QCOMPARE(settings.telemetrySource(), QStringLiteral("other"));
        QCOMPARE(settings.language(), QStringLiteral("de"));
        QCOMPARE(settings.problem(), QString());
    }

    void onlyKnownValuesAreTaken()
    {
        HostSettings settings = makeSettings();
        settings.setTelemetrySource(QStringLiteral("nowhere"));
        settings.setLanguage(QStringLiteral("fr"));
        QCOMPARE(settings.telemetrySource(), QStringLiteral("demo"));
        QCOMPARE(settings.language(), QString());
    }

    void aRestartIsNeededWhileTheSessionDiffers()
    {
        HostSettings settings = makeSettings();
        const QSignalSpy spy(&settings, &HostSettings::restartNeededChanged);
        settings.setStartupDashboard(QStringLiteral("Road"));
        settings.setLanguage(QStringLiteral("de"));
        QVERIFY(!settings.restartNeeded());
        settings.setUseMph(true);
        settings.setTelemetrySource(QStringLiteral("other"));
        QVERIFY(settings.restartNeeded());
        settings.setTelemetrySource(QStringLiteral("demo"));
        settings.setUseMph(false);
        QVERIFY(!settings.restartNeeded());
        settings.setUseMph(true);
        settings.sessionStarted();
        QVERIFY(!settings.restartNeeded());
        QCOMPARE(spy.count(), 4);
    }

    void aChangeGoesBeforeTheCommandLineWhichGoesBeforeWhatWasSet()
    {
        HostSettings settings = makeSettings();
        SettledOptions bare({}, settings);
        SessionOptions commandLine;
        commandLine.telemetry.source = QStringLiteral("my.pcap");
        commandLine.useMph = true;
        SettledOptions given(commandLine, settings);
        for (int i = 0; i < 2; ++i) {
            QCOMPARE(bare.take().telemetry.source, QStringLiteral("demo"));
            QCOMPARE(given.take().telemetry.source, QStringLiteral("my.pcap"));
            QVERIFY(given.take().useMph == true);
        }
        settings.setTelemetrySource(QStringLiteral("other"));
        for (int i = 0; i < 2; ++i) {
            QCOMPARE(bare.take().telemetry.source, QStringLiteral("other"));
            QCOMPARE(given.take().telemetry.source, QStringLiteral("other"));
            QVERIFY(given.take().useMph == true);
        }
        settings.setUseMph(true);
        QVERIFY(bare.take().useMph == true);
        settings.setUseMph(false);
        QVERIFY(bare.take().useMph == false);
        QVERIFY(given.take().useMph == true);
        settings.setUseMph(true);
        given.take();
        settings.setUseMph(false);
        QVERIFY(given.take().useMph == false);
    }

    void aVanishedDashboardIsToldAndKept()
    {
        HostSettings settings = makeSettings();
        settings.setStartupDashboard(QStringLiteral("Mine"));
        QCOMPARE(settings.startupDashboardAmong({QStringLiteral("Road"), QStringLiteral("Mine")}),
                 QStringLiteral("Mine"));
        QCOMPARE(settings.problem(), QString());
        QCOMPARE(settings.startupDashboardAmong({QStringLiteral("Road")}), QString());
        QVERIFY(settings.problem().contains(QStringLiteral("'Mine'")));
        QCOMPARE(settings.startupDashboard(), QStringLiteral("Mine"));
        settings.setStartupDashboard({});
        QCOMPARE(settings.problem(), QString());
        QCOMPARE(settings.startupDashboardAmong({}), QString());
        QCOMPARE(settings.problem(), QString());
    }

    void whatCannotBeReadIsItsDefault_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<QString>("told");
        QTest::newRow("unknown units") << QByteArray("Units=parsecs") << "units";
        QTest::newRow("units of a wrong type") << QByteArray("Units=mph, kmh") << "units";
        QTest::newRow("dashboard of a wrong type")
            << QByteArray("StartupDashboard=@Rect(1 2 3 4)") << "dashboard";
        QTest::newRow("damaged value")
            << QByteArray(R"(StartupDashboard=@Variant(\0\0\0\x7f))") << "dashboard";
        QTest::newRow("unknown source") << QByteArray("TelemetrySource=gone") << "telemetry";
        QTest::newRow("unknown language") << QByteArray("Language=tlh") << "language";
    }

    void whatCannotBeReadIsItsDefault()
    {
        NEEDS_POSIX();
        QFETCH(QByteArray, line);
        QFETCH(QString, told);
        writeSettings("[Preferences]\n" + line + '\n');
        HostSettings settings = makeSettings();
        QVERIFY(!settings.useMph());
        QCOMPARE(settings.startupDashboard(), QString());
        QCOMPARE(settings.telemetrySource(), QStringLiteral("demo"));
        QCOMPARE(settings.language(), QString());
        QCOMPARE(settings.problem().count(QLatin1Char('\n')), 0);
        QVERIFY2(settings.problem().contains(told), qPrintable(settings.problem()));
    }

    void aDamagedFileIsKeptBesideTheNewOne()
    {
        NEEDS_POSIX();
        const QByteArray damaged("[Preferences]\nUnits=mph\nmy notes without a value\n");
        writeSettings(damaged);
        HostSettings settings = makeSettings();
        QVERIFY(settings.useMph());
        QVERIFY(settings.problem().contains(QStringLiteral(".damaged")));
        settings.setLanguage(QStringLiteral("de"));
        QFile copy(settingsFile() + QStringLiteral(".damaged"));
        QVERIFY(copy.open(QIODevice::ReadOnly));
        QCOMPARE(copy.readAll(), damaged);
    }

    void aLockThatNobodyHoldsIsNotWaitedFor()
    {
        NEEDS_POSIX();
        const QString lock = settingsFile() + QStringLiteral(".lock");
        QVERIFY(QDir().mkpath(QFileInfo(lock).absolutePath()));
        QFile empty(lock);
        QVERIFY(empty.open(QIODevice::WriteOnly));
        empty.close();
        QElapsedTimer time;
        time.start();
        HostSettings settings = makeSettings();
        settings.setUseMph(true);
        QVERIFY2(time.elapsed() < 1000, qPrintable(QString::number(time.elapsed())));
        QVERIFY(makePipe(lock));
        settings.setUseMph(false);
        QVERIFY(!makeSettings().useMph());
    }

    void whatCannotBeSavedHoldsForThisRun()
    {
        NEEDS_POSIX();
        // A file where the folder should be: not even the super user can write there.
        QFile blocker(QFileInfo(settingsFile()).absolutePath());
        QVERIFY(QDir().mkpath(QFileInfo(blocker).absolutePath()));
        QVERIFY(blocker.open(QIODevice::WriteOnly));
        HostSettings settings = makeSettings();
        const QSignalSpy spy(&settings, &HostSettings::problemChanged);
        settings.setUseMph(true);
        QVERIFY(settings.useMph());
        QCOMPARE(spy.count(), 1);
        QVERIFY2(settings.problem().contains(settingsFile()), qPrintable(settings.problem()));
    }

private:
    std::unique_ptr<TemporaryHome> home;
};

QTEST_GUILESS_MAIN(HostSettingsTest)
#include "HostSettingsTest.moc"
