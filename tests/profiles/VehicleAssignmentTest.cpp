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
