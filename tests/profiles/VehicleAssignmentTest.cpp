#include "ProfilesFixture.h"

#include <QtTest/QtTest>

#include <tuple>

using Action = DashboardProfileAction::Code;

namespace {

/// Two dashboards: A, which the user chose at 1000 ms, and B, which has the vehicle "V".
struct TwoDashboards : ProfilesFixture
{
    explicit TwoDashboards(const QByteArray &vehiclesOfB = "Vehicle.0.Name=V\nVehicleCount=1\n")
        : ProfilesFixture({"B"_q}, {"A"_q})
    {
        writeFile(iniPath(), "[B]\n" + vehiclesOfB);
        setRecentName("B"_q);
        start();
        counter.count += 1000;
        act("A"_q, Action::Activate);
        signalLog.clear();
        engine.documents = QStringList{""_q};
        recentAtStart = "A"_q;
    }
};

} // namespace

class VehicleAssignmentTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aVehicleMovesToTheDashboardJustChosenAndLaterBringsItsOwn()
    {
        const std::vector<std::tuple<int, QString, QString>> rows{
            {7999, "V"_q, "A*(V) B +1 saved modified 0 modified 1"_q},
            {8000, "V"_q, "A B*(V) +0 recent=B document=B activated 1"_q},
            {7999, "v"_q, "A*(v) B(V) +1 saved modified 0"_q},
            {8000, "v"_q, "A*(v) B(V) +1 saved modified 0"_q},
            {7999, ""_q, "A* B(V) +0"_q}};
        for (const auto &[afterMs, vehicle, expected] : rows) {
            TwoDashboards f;
            QFile::remove(f.iniPath());
            f.counter.count += afterMs;
            f.report(vehicle);
            f.report(vehicle); // Already on its dashboard.
            QCOMPARE(f.state() + u' ' + f.effects(), expected);
        }
    }

    void onlyAChoiceOpensThePeriod()
    {
        TwoDashboards f;
        f.report("W"_q);
        f.counter.count += 9000;
        f.report("V"_q);
        QCOMPARE(f.state(), "A(W) B*(V)"_q);
        f.report("W"_q);
        QCOMPARE(f.state(), "A*(W) B(V)"_q);
        f.start();
        f.counter.count += 1;
        f.report("V"_q);
        QCOMPARE(f.state(), "A(W) B*(V)"_q);
    }

    void aVehicleInTwoGroupsStaysThereUntilItIsAssigned()
    {
        ProfilesFixture f({"A"_q, "B"_q, "C"_q}, {"C"_q});
        const QByteArray vehicle = "\nVehicle.0.Name=V\nVehicleCount=1\n";
        writeFile(f.iniPath(), "[C]" + vehicle + "[B]" + vehicle);
        f.start();
        f.report("V"_q);
        QCOMPARE(f.state(), "A B*(V) C(V) C"_q); // The user's own C has it, not the built-in one.
        f.provider.name = "V"_q;
        QTest::ignoreMessage(QtInfoMsg, "Dashboard: Assigned vehicle V to A");
        QTest::ignoreMessage(QtInfoMsg, "Dashboard: Detached vehicle V from B");
        QVERIFY(f.act("A"_q, Action::Activate).ok);
        QCOMPARE(f.savedState(), "A*(V) B C C"_q);
    }

    void vehiclesOfARemovedProfileDoNotComeBackWithItsName()
    {
        for (const int action : {Action::Copy, Action::Rename}) {
            TwoDashboards f;
            QVERIFY(f.act("A"_q, Action::Copy, "C"_q).ok);
            QVERIFY(f.act("B"_q, Action::Remove).ok);
            f.start();
            QVERIFY(f.act("C"_q, action, "b"_q).ok);
            QVERIFY(!f.savedState().contains(u'V'));
        }
    }

    void aSaveKeepsWhatAnotherProcessHasSaved()
    {
        TwoDashboards f("Vehicle.0.Name=V\nVehicle.1.Name=W\nVehicleCount=2\n");
        DashboardProfilesManager other(&f.engine, &f.provider, f.counter);
        other.activateRecentProfileForVehicle("X"_q);
        QVERIFY(other.performAction(f.id("B"_q), Action::Activate, {}).ok);
        f.counter.count += 1;
        f.provider.name = "W"_q;
        QVERIFY(other.performAction(f.id("A"_q), Action::Activate, {}).ok);
        f.report("Y"_q);
        QCOMPARE(f.savedState(), "A*(W X Y) B(V)"_q);
        QVERIFY(f.act("B"_q, Action::Rename, "C"_q).ok);
        QCOMPARE(f.savedState(), "A*(W X Y) C(V)"_q);
        QVERIFY(!readFile(f.iniPath()).contains("[B]"));
        writeFile(f.iniPath(), "[C]\nVehicle.0.Name=Y\nVehicleCount=1\n");
        f.report("Z"_q);
        QCOMPARE(f.savedState(), "A*(W X Z) C(V Y)"_q);
    }

    void aFileIsReadAsFarAsItCanBeOrKeptBeside()
    {
        const QByteArray two = "[B]\nVehicle.0.Name=V\nVehicle.1.Name=W\nVehicleCount=";
        const QByteArray object = R"(@Variant(\0\0\0\t\x7f\xff\xff\xff))"; // Asks for all memory.
        const std::vector<std::tuple<QByteArray, QString, bool>> rows{
            {two + "2\n", "A* B(V W)"_q, false},
            {"[b]" + two.mid(3) + "2\n", "A* B(V W)"_q, false},
            {two + "1\n", "A* B(V)"_q, false},
            {two + "2000000000\n", "A* B( V W)"_q, false},
            {two + "-1\n", "A* B"_q, false},
            {two + object, "A* B"_q, false},
            {two + "2\nVehicle.1.Name=" + object, "A* B( V)"_q, false},
            {two + "2\n[x]\ny=\\\r\n" + object, "A* B(V W)"_q, false},
            {"[B]\nVehicle.1999999999.Name=V\nVehicle.01.Name=W\nVehicleCount=2000000000\n",
             "A* B( V)"_q, false},
            {"[A/B]\nx=1\n[C\\D]\nx=1\n" + two + "1\n[%5d%0A]\nx=2\n", "A* B(V)"_q, false},
            {"[B]\nVehicleCount=1\nVehicle.0.Name=\"V", "A* B(V)"_q, false},
            {"[B]\nVehicleCount=1\nVehicle.0.Name=V\\", "A* B(V)"_q, false},
            {QByteArray("\0\xff[\x80]=\n\0\n", 8).repeated(5000), "A* B"_q, false},
            {QByteArray((64 << 20) + 1, '\n'), "A* B"_q, true},
            {QByteArray("\xff\xfe[\0B\0]\0\n\0V\0=\0", 14), "A* B"_q, true},
            {"B\nV\n", "A* B"_q, true}};
        for (const auto &[content, expected, isKept] : rows) {
            TwoDashboards f;
            writeFile(f.iniPath(), content);
            f.start();
            QVERIFY2(f.state() == expected, content.left(200) + qUtf8Printable(f.state()));
            f.report("New"_q);
            QCOMPARE(f.savedState(), f.state());
            QVERIFY(readFile(f.iniPath() + ".damaged-1"_q) == (isKept ? content : QByteArray()));
        }
    }

#ifndef Q_OS_WIN // No limit of file sizes there, and other permissions.
    void aFileThatCannotBeReadOrWrittenIsNoFault()
    {
        const Unprivileged user;
        ProfilesFixture f({"A"_q});
        f.start();
        f.report("V"_q);
        {
            const FullDisk disk(10);
            f.report("W"_q);
        }
        QCOMPARE(f.savedState(), "A*(V)"_q);
        QCOMPARE(f.state(), "A*(V W)"_q);
        QVERIFY(QDir(f.home.path("/tmp")).isEmpty());
        f.report("X"_q);
        QCOMPARE(f.savedState(), "A*(V W X)"_q);
        QFile::setPermissions(f.iniPath(), {});
        QCOMPARE(f.savedState(), "A*"_q);
        QFile::remove(f.iniPath());
        QDir().mkpath(f.iniPath());
        f.report("Y"_q);
        QVERIFY(QFileInfo(f.iniPath()).isDir());
    }
#endif
};

QTEST_GUILESS_MAIN(VehicleAssignmentTest)
#include "VehicleAssignmentTest.moc"
