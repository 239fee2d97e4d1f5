#include "ProfilesFixture.h"

#include <QtTest/QtTest>

namespace {

QStringList &logged()
{
    static QStringList lines;
    return lines;
}

void keepInLog(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    if (type == QtInfoMsg)
        logged() += text;
}

/// Two dashboards: A is active and was chosen by the user at 1000 ms, and B has the vehicle "V".
struct TwoDashboards : ProfilesFixture
{
    TwoDashboards()
    {
        addUser({"A"_q, "B"_q});
        writeFile(iniPath(), "[B]\nVehicle.0.Name=V\nVehicleCount=1\n");
        setRecentName("B"_q);
        start();
        counter.count += 1000;
        act("A"_q, DashboardProfileAction::Activate);
        QFile::remove(iniPath());
        signalLog.clear();
        engine.documents.clear();
    }
    void report(const QString &vehicle) { store->activateRecentProfileForVehicle(vehicle); }
    QString modified(const QString &name) const { return "modified %1"_q.arg(id(name)); }
    QString activated(const QString &name) const { return "activated %1"_q.arg(id(name)); }
    bool wasSaved() const { return QFileInfo::exists(iniPath()); }
};

} // namespace

class VehicleAssignmentTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aVehicleThatComesWithinThePeriodMovesToTheActiveProfile()
    {
        TwoDashboards f;
        f.counter.count += 7999;
        logged().clear();
        const auto handler = qInstallMessageHandler(keepInLog);
        f.report("V"_q);
        qInstallMessageHandler(handler);
        QCOMPARE(f.activeName(), "A"_q);
        QCOMPARE(f.assignments(), (Assignments{{"A"_q, {"V"_q}}}));
        QCOMPARE(f.storedAssignments(), f.assignments());
        QStringList expected{f.modified("A"_q), f.modified("B"_q)};
        expected.sort();
        QCOMPARE(f.signalLog, expected);
        QCOMPARE(logged(), (QStringList{"Dashboard: Assigned vehicle V to A"_q,
                                        "Dashboard: Detached vehicle V from B"_q}));
        QCOMPARE(f.store->revision(), 2);
        QVERIFY(f.engine.documents.isEmpty());
    }

    void aVehicleThatComesLaterBringsItsOwnProfile()
    {
        TwoDashboards f;
        f.counter.count += 8000;
        f.report("V"_q);
        QCOMPARE(f.activeName(), "B"_q);
        QCOMPARE(f.signalLog, QStringList{f.activated("B"_q)});
        QCOMPARE(f.engine.documents, QStringList{f.userPath("B/Dash.qml"_q)});
        QCOMPARE(ProfilesFixture::recentName(), "B"_q);
        QVERIFY(!f.wasSaved());
        QCOMPARE(f.store->revision(), 1);
    }

    void aSwitchDoesNotOpenThePeriod()
    {
        TwoDashboards f;
        f.report("W"_q);
        f.counter.count += 9000;
        f.report("V"_q);
        f.report("W"_q);
        QCOMPARE(f.activeName(), "A"_q);
        QCOMPARE(f.assignments(), (Assignments{{"A"_q, {"W"_q}}, {"B"_q, {"V"_q}}}));
    }

    void thePeriodIsClosedBeforeTheFirstActivation()
    {
        TwoDashboards f;
        f.report("V"_q);
        ProfilesFixture::setRecentName("B"_q);
        f.start();
        f.counter.count += 1;
        QCOMPARE(f.activeName(), "B"_q);
        f.report("V"_q);
        QCOMPARE(f.activeName(), "A"_q);
    }

    void aNewVehicleJoinsTheActiveProfileOnce()
    {
        TwoDashboards f;
        f.counter.count += 9000;
        f.report("v"_q);
        QCOMPARE(f.assignments(), (Assignments{{"A"_q, {"v"_q}}, {"B"_q, {"V"_q}}}));
        QCOMPARE(f.signalLog, QStringList{f.modified("A"_q)});
        QVERIFY(f.wasSaved());
        QFile::remove(f.iniPath());
        f.report("v"_q);
        f.report({});
        QVERIFY(!f.wasSaved());
        QCOMPARE(f.signalLog.size(), 1);
        QCOMPARE(f.store->revision(), 2);
    }

    void anActivationBringsTheCurrentVehicle()
    {
        TwoDashboards f;
        f.provider.name = "V"_q;
        f.counter.count += 9000;
        QVERIFY(f.act("A"_q, DashboardProfileAction::Activate).ok);
        QVERIFY(f.signalLog.isEmpty());
        f.report("X"_q);
        f.provider.name = "X"_q;
        f.signalLog.clear();
        QVERIFY(f.act("B"_q, DashboardProfileAction::Activate).ok);
        QCOMPARE(f.assignments(), (Assignments{{"B"_q, {"V"_q, "X"_q}}}));
        QStringList modified{f.modified("A"_q), f.modified("B"_q)};
        modified.sort();
        QCOMPARE(f.signalLog, QStringList{f.activated("B"_q)} + modified);
        QCOMPARE(f.storedAssignments(), f.assignments());
    }

    void aVehicleInTwoGroupsStaysThereUntilItIsAssigned()
    {
        ProfilesFixture f;
        f.addUser({"A"_q, "B"_q, "C"_q});
        const QByteArray vehicle = "\nVehicle.0.Name=V\nVehicleCount=1\n";
        writeFile(f.iniPath(), "[C]" + vehicle + "[B]" + vehicle);
        f.start();
        f.store->activateRecentProfileForVehicle("V"_q);
        QCOMPARE(f.activeName(), "B"_q);
        QCOMPARE(f.assignments().keys(), (QStringList{"B"_q, "C"_q}));
        f.provider.name = "V"_q;
        f.counter.count += 5;
        QVERIFY(f.act("A"_q, DashboardProfileAction::Activate).ok);
        QCOMPARE(f.assignments().keys(), QStringList{"A"_q});
    }

    void vehiclesOfARemovedProfileAreNewWhenTheyComeAgain()
    {
        TwoDashboards f;
        f.counter.count += 9000;
        QVERIFY(f.act("B"_q, DashboardProfileAction::Remove).ok);
        QVERIFY(f.assignments().isEmpty());
        f.report("V"_q);
        QCOMPARE(f.assignments().keys(), QStringList{"A"_q});
    }

    void aSaveWithoutVehiclesForgetsThoseOfTheFile()
    {
        ProfilesFixture f;
        f.addUser({"A"_q, "B"_q});
        f.start();
        f.store->activateRecentProfileForVehicle("V"_q);
        QCOMPARE(f.storedAssignments(), (Assignments{{"A"_q, {"V"_q}}}));
        QVERIFY(f.act("A"_q, DashboardProfileAction::Remove).ok);
        QVERIFY(f.act("B"_q, DashboardProfileAction::Rename, "A"_q).ok);
        QVERIFY(f.storedAssignments().isEmpty());
        f.start();
        QVERIFY(f.assignments().isEmpty());
    }

    void vehiclesOfARemovedProfileDoNotComeBackWithItsName()
    {
        for (const int action : {DashboardProfileAction::Copy, DashboardProfileAction::Rename}) {
            TwoDashboards f;
            writeFile(f.iniPath(), "[B]\nVehicle.0.Name=V\nVehicleCount=1\n");
            f.start();
            QVERIFY(f.act("B"_q, DashboardProfileAction::Remove).ok);
            f.start();
            QVERIFY(f.act("A"_q, action, "b"_q).ok);
            f.start();
            QVERIFY(f.assignments().isEmpty());
        }
    }

    void twoProfilesOfOneNameKeepTheVehiclesOfBoth()
    {
        ProfilesFixture f;
        ProfilesFixture::addBuiltIn("A"_q);
        f.addUser({"A"_q});
        f.start();
        f.store->activateRecentProfileForVehicle("V"_q);
        f.provider.name = "W"_q;
        constexpr DashboardProfileHeader::Id BuiltIn = 0;
        QVERIFY(f.store->performAction(BuiltIn, DashboardProfileAction::Activate, {}).ok);
        const Assignments both{{"A"_q, {"V"_q, "W"_q}}};
        QCOMPARE(f.storedAssignments(), both);
        f.start();
        const auto active = f.store->profile(f.store->activeProfileId());
        QVERIFY(!active->builtIn);
        QCOMPARE(active->vehicles, both.first());
    }

    void aSaveKeepsWhatAnotherProcessHasSaved()
    {
        TwoDashboards f;
        writeFile(f.iniPath(), "[B]\nVehicle.0.Name=V\nVehicle.1.Name=W\nVehicleCount=2\n");
        f.start();
        DashboardProfilesManager other(&f.engine, &f.provider, f.counter);
        other.activateRecentProfileForVehicle("X"_q);
        QVERIFY(other.performAction(f.id("B"_q), DashboardProfileAction::Activate, {}).ok);
        f.counter.count += 1;
        f.provider.name = "W"_q;
        QVERIFY(other.performAction(f.id("A"_q), DashboardProfileAction::Activate, {}).ok);
        f.report("Y"_q);
        f.report("V"_q);
        QCOMPARE(f.storedAssignments(),
                 (Assignments{{"A"_q, {"W"_q, "X"_q, "Y"_q}}, {"B"_q, {"V"_q}}}));
        QVERIFY(f.act("A"_q, DashboardProfileAction::Rename, "C"_q).ok);
        QCOMPARE(f.storedAssignments(),
                 (Assignments{{"B"_q, {"V"_q}}, {"C"_q, {"W"_q, "X"_q, "Y"_q}}}));

        writeFile(f.iniPath(), "[C]\nVehicle.0.Name=V\nVehicleCount=1\n");
        QVERIFY(f.act("B"_q, DashboardProfileAction::Remove).ok);
        f.report("Z"_q);
        QCOMPARE(f.storedAssignments().value("C"_q),
                 (QSet<QString>{"V"_q, "W"_q, "X"_q, "Y"_q, "Z"_q}));
    }

    void aFileThatCannotBeReadIsKeptBeside_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<qint64>("size");
        QTest::newRow("too large") << QByteArray("[B]\n") << (qint64{64} << 20) + 1;
        QTest::newRow("no text") << QByteArray("[\0B\0]\0\n\0V\0=\0", 12).prepend("\xff\xfe")
                                 << qint64{14};
        QTest::newRow("no line that makes sense") << QByteArray("B\nV\n") << qint64{4};
    }

    void aFileThatCannotBeReadIsKeptBeside()
    {
        QFETCH(QByteArray, content);
        QFETCH(qint64, size);
        TwoDashboards f;
        writeFile(f.iniPath(), content);
        QVERIFY(QFile::resize(f.iniPath(), size));
        f.start();
        f.report("V"_q);
        QCOMPARE(f.storedAssignments(), f.assignments());
        const QStringList kept =
            QDir(f.home.data()).entryList({"dashboardsExtra.ini.*"_q}, QDir::Files);
        QCOMPARE(kept.size(), 1);
        QFile file(f.home.data("/") + kept.value(0));
        QCOMPARE(file.size(), size);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.read(content.size()), content);
    }

    void assignmentsAreSavedAcrossVolumes()
    {
        TwoDashboards f;
        const QString other = folderOnOtherVolume(f.home.path());
        if (other.isEmpty())
            QSKIP("there is one volume only", );
        const QTemporaryDir away(other + "/gauge-XXXXXX"_q);
        for (const char *const variable : {"TMPDIR", "TMP"})
            qputenv(variable, away.path().toLocal8Bit());
        writeFile(f.home.data("/.moving.AbCdEf"), "left by a process that was killed");
        f.report("V"_q);
        QVERIFY(!QFileInfo::exists(f.home.data("/.moving.AbCdEf")));
        QCOMPARE(f.storedAssignments(), (Assignments{{"A"_q, {"V"_q}}}));
        QVERIFY(QDir(away.path()).isEmpty());
    }

    void aSaveOnAFullDiskKeepsTheOldFileAndTheChangeInMemory()
    {
        NEEDS_POSIX();
        TwoDashboards f;
        f.report("V"_q);
        const QByteArray old = readFile(f.iniPath());
        {
            const FullDisk disk(10);
            f.report("W"_q);
        }
        QCOMPARE(readFile(f.iniPath()), old);
        QCOMPARE(f.assignments(), (Assignments{{"A"_q, {"V"_q, "W"_q}}}));
        QVERIFY(QDir(f.home.path("/tmp")).isEmpty());
        f.report("X"_q);
        QCOMPARE(f.storedAssignments(), f.assignments());
    }
};

QTEST_GUILESS_MAIN(VehicleAssignmentTest)
#include "VehicleAssignmentTest.moc"
