#include "views/EditorTelemetry.h"

#include <QtTest/QtTest>

#include <cmath>
#include <cstring>

namespace {

using Values = QVector<double>;

void run(EditorTelemetry &telemetry, int steps)
{
    for (int i = 0; i < steps; ++i)
        telemetry.step();
}

/// What `read` returns after each number of steps, to two decimals.
template<typename Read>
Values after(const QVector<int> &steps, Read read, EditorTelemetry telemetry = {})
{
    Values values;
    int taken = 0;
    for (const int wanted : steps) {
        run(telemetry, wanted - std::exchange(taken, wanted));
        values += std::round(100 * double(read(telemetry))) / 100;
    }
    return values;
}

} // namespace

class EditorTelemetryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void otherValuesStayAsTheyWereSeeded()
    {
        EditorTelemetry telemetry;
        run(telemetry, 600);
        QVERIFY(telemetry.vehicle.availabilityMask == ~0ULL);
        QVERIFY(telemetry.vehicle.bestTimeMs == 5'999'999);
        QVERIFY(telemetry.vehicle.brakeTempC[3] == 9999);
        const DisplayLimits limits{1, 20, 30, 60, 90, 95, {}};
        QVERIFY(std::memcmp(&telemetry.limits, &limits, sizeof limits) == 0);
        ExtendedTelemetry extended{};
        extended.wheels[0].wheelFlagB = 1;
        QVERIFY(std::memcmp(&telemetry.extended, &extended, sizeof extended) == 0);
    }

    void sweptValuesTakeTheirCourses()
    {
        QCOMPARE(after({0, 1, 151, 152, 153, 229, 230}, [](auto &t) { return t.vehicle.speedKmh; }),
                 Values({999, 0, 150, 151, 162, 998, 0}));
        QCOMPARE(after({199, 200, 201, 289, 290, 379, 380, 848},
                       [](auto &t) { return t.vehicle.deltaTimeS; }),
                 Values({9.95, 10, 11, 99, -98, -9, -8.95, 99}));
        QCOMPARE(after({24, 25, 50, 275, 300}, [](auto &t) { return t.vehicle.fuelLevelPercent; }),
                 Values({100, 0, 10, 100, 0}));
        QCOMPARE(after({24, 25, 225, 250, 275}, [](auto &t) { return t.vehicle.gear; }),
                 Values({0, 1, 9, -1, 0}));
        QCOMPARE(after({0, 1, 2, 101, 102}, [](auto &t) { return t.vehicle.tyreWearPercent[3]; }),
                 Values({100, 0, 1, 100, 0}));
    }

    void boundsBelongToTheLowerSide()
    {
        const auto speed = [](auto &t) { return t.vehicle.speedKmh; };
        const auto delta = [](auto &t) { return t.vehicle.deltaTimeS; };
        EditorTelemetry telemetry;
        telemetry.vehicle.speedKmh = 150;
        telemetry.vehicle.deltaTimeS = 99;
        QCOMPARE(after({1}, speed, telemetry) + after({1}, delta, telemetry), Values({151, 100}));
        telemetry.vehicle.speedKmh = 988;
        telemetry.vehicle.deltaTimeS = -10;
        QCOMPARE(after({1}, speed, telemetry) + after({1}, delta, telemetry), Values({999, -9}));
    }

    void aBoxHoldsItsBitWhileTheOthersBlink()
    {
        EditorTelemetry telemetry;
        telemetry.blueFlag = true;
        QCOMPARE(after(
                     {1, 24, 25, 49, 50}, [](auto &t) { return t.vehicle.statusFlags; }, telemetry),
                 Values({0xFFFFAFAF, 0xFFFFAFAF, 0x100, 0x100, 0xFFFFAFAF}));
    }

    void theTuneDemoRunsWithThePanelAndStandsWithoutIt()
    {
        EditorTelemetry telemetry;
        run(telemetry, 30);
        QVERIFY(telemetry.motionProfileName().isEmpty());
        QCOMPARE(telemetry.tune.changeCounter, 0U);
        telemetry.systemPanel = true;
        QCOMPARE(after(
                     {1, 20, 21, 36, 37}, [](auto &t) { return t.tune.valueCurrent; }, telemetry),
                 Values({0.1, 2, 0.5, 2, 0.5}));
        QCOMPARE(telemetry.motionProfileName(), QStringLiteral("Demo Profile"));
        run(telemetry, 21);
        telemetry.systemPanel = false;
        run(telemetry, 9);
        const TuneInfo &tune = telemetry.tune;
        QCOMPARE(QStringList({tune.group, tune.name, tune.valueName}).join(QLatin1Char('/')),
                 QStringLiteral("Motion/Longitudinal G-Force (Intermittent)/Gain"));
        QCOMPARE(Values({tune.valueMin, tune.valueMax, tune.valueCurrent}), Values({0, 2.5, 0.5}));
        QCOMPARE(tune.changeCounter, 21U);
    }
};

QTEST_APPLESS_MAIN(EditorTelemetryTest)
#include "EditorTelemetryTest.moc"
