#include "views/EditorTelemetry.h"

#include <QtTest/QtTest>

#include <cmath>

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

/// Fields of packed records, which can't be referred to.
template<typename... Field> Values values(Field... field)
{
    return {double(field)...};
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
        const VehicleTelemetry &v = telemetry.vehicle;
        QVERIFY(v.availabilityMask == ~0ULL);
        QCOMPARE(values(v.rpm, v.maxRpm, v.position, v.currentTimeMs, v.lastTimeMs, v.bestTimeMs,
                        v.completedLaps, v.numberOfLaps, v.absLevel, v.tractionControlLevel,
                        v.brakeBiasPercent, v.tyreTempC[3], v.brakeTempC[3], v.tyrePressureKpa[3],
                        v.engineLoadPercent),
                 Values({700, 13'000, 99, 5'999'999, 5'999'999, 5'999'999, 99, 99, 99, 99, -99, 999,
                         9999, 999, 100}));
        const DisplayLimits &l = telemetry.limits;
        QCOMPARE(values(l.steeringScale, l.lowFuelLevelThresholdPercent, l.rpmGreenThresholdPercent,
                        l.rpmYellowThresholdPercent, l.rpmRedThresholdPercent,
                        l.rpmBlinkingThresholdPercent),
                 Values({1, 20, 30, 60, 90, 95}));
        const auto &wheels = telemetry.extended.wheels;
        QCOMPARE(values(wheels[0].wheelFlagA, wheels[0].wheelFlagB, wheels[1].wheelFlagB),
                 Values({0, 1, 0}));
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
        QVERIFY(telemetry.motionProfileName().isEmpty() && telemetry.tune.changeCounter == 0);
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
        QCOMPARE(values(tune.valueMin, tune.valueMax, tune.valueCurrent, tune.changeCounter),
                 Values({0, 2.5, 0.5, 21}));
    }
};

QTEST_APPLESS_MAIN(EditorTelemetryTest)
#include "EditorTelemetryTest.moc"
