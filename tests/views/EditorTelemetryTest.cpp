#include "views/EditorTelemetry.h"
#include "support/RecordBytes.h"

#include <QtTest/QtTest>

#include <algorithm>
#include <array>
#include <cstring>

namespace {

struct Field
{
    const char *name;
    std::size_t offset;
    std::size_t size;
};

constexpr Field VehicleFields[] = {
    {"availabilityMask", 0, 8},
    {"reserved8", 8, 16},
    {"speedKmh", 24, 4},
    {"groundSpeedKmh", 28, 4},
    {"steeringPercent", 32, 4},
    {"reserved36", 36, 4},
    {"gear", 40, 1},
    {"reserved41", 41, 8},
    {"rpm", 49, 4},
    {"maxRpm", 53, 4},
    {"gasPedalPercent", 57, 1},
    {"brakePedalPercent", 58, 1},
    {"clutchPedalPercent", 59, 1},
    {"fuelLevelPercent", 60, 1},
    {"position", 61, 4},
    {"currentTimeMs", 65, 4},
    {"lastTimeMs", 69, 4},
    {"bestTimeMs", 73, 4},
    {"reserved77", 77, 4},
    {"completedLaps", 81, 4},
    {"numberOfLaps", 85, 4},
    {"absLevel", 89, 1},
    {"tractionControlLevel", 90, 1},
    {"heaveG", 91, 4},
    {"swayG", 95, 4},
    {"surgeG", 99, 4},
    {"brakeBiasPercent", 103, 1},
    {"deltaTimeS", 104, 4},
    {"tyreTempC", 108, 16},
    {"brakeTempC", 124, 16},
    {"tyreWearPercent", 140, 4},
    {"tyrePressureKpa", 144, 16},
    {"altitudeAboveGroundM", 160, 4},
    {"altitudeAboveSeaLevelM", 164, 4},
    {"turnCoordinatorBall", 168, 4},
    {"pitchDeg", 172, 4},
    {"rollDeg", 176, 4},
    {"headingDeg", 180, 4},
    {"statusFlags", 184, 4},
    {"engineLoadPercent", 188, 1},
};

/// Whether a record has exactly these bytes.
template<typename Record, std::size_t size>
bool isExactly(const Record &record, const std::array<unsigned char, size> &bytes)
{
    static_assert(sizeof(Record) == size);
    return std::equal(bytes.begin(), bytes.end(), reinterpret_cast<const unsigned char *>(&record));
}

/// The first field of `actual` that isn't as expected, or null.
const char *differingField(const VehicleTelemetry &actual, const RecordBytes &expected)
{
    const auto *bytes = reinterpret_cast<const unsigned char *>(&actual);
    for (const Field &field : VehicleFields) {
        if (std::memcmp(bytes + field.offset, &expected.vehicle[field.offset], field.size) != 0)
            return field.name;
    }
    return nullptr;
}

/// What no step moves.
RecordBytes seeds()
{
    RecordBytes record;
    record.putVehicle<std::uint64_t>(0, 0xFFFFFFFFFFFFFFFFULL);
    record.putVehicle<std::uint32_t>(49, 700);
    record.putVehicle<std::uint32_t>(53, 13'000);
    record.putVehicle<std::int32_t>(61, 99);
    for (const std::size_t time : {65U, 69U, 73U})
        record.putVehicle<std::uint32_t>(time, 5'999'999);
    record.putVehicle<std::int32_t>(81, 99);
    record.putVehicle<std::int32_t>(85, 99);
    record.putVehicle<std::uint8_t>(89, 99);
    record.putVehicle<std::uint8_t>(90, 99);
    record.putVehicle<std::uint8_t>(103, 0x9D);
    for (std::size_t corner = 0; corner < 16; corner += 4) {
        record.putVehicle<std::int32_t>(108 + corner, 999);
        record.putVehicle<std::int32_t>(124 + corner, 9999);
        record.putVehicle<std::uint32_t>(144 + corner, 999);
    }
    record.putVehicle<std::uint8_t>(188, 100);

    record.putLimits<float>(0, 1.0F);
    record.putLimits<std::uint8_t>(4, 20);
    record.putLimits<std::uint8_t>(5, 30);
    record.putLimits<std::uint8_t>(6, 60);
    record.putLimits<std::uint8_t>(7, 90);
    record.putLimits<std::uint8_t>(8, 95);
    return record;
}

/// What the steps move, computed from the rules apart from the code under test.
struct Model
{
    int step = 0;
    float speed = 999.0F;
    float delta = 0.0F;
    float tuneValue = 0.0F;
    std::uint32_t tuneReports = 0;

    void advance(bool panel)
    {
        ++step;
        speed = speed > 150.0F ? speed + 11.0F : speed + 1.0F;
        if (speed > 999.0F)
            speed = 0.0F;
        if (delta > 99.0F)
            delta = -99.0F;
        delta = delta > -10.0F && delta < 10.0F ? delta + 0.05F : delta + 1.0F;
        if (panel) {
            ++tuneReports;
            tuneValue += 0.1F;
            if (tuneValue > 2.1F)
                tuneValue = 0.5F;
        }
    }

    RecordBytes record(std::uint32_t boxes) const
    {
        const int seconds = step / 25;
        RecordBytes result = seeds();
        result.putVehicle<float>(24, speed);
        result.putVehicle<std::int8_t>(40, static_cast<std::int8_t>((seconds + 1) % 11 - 1));
        result.putVehicle<std::uint8_t>(60, static_cast<std::uint8_t>((seconds + 10) % 11 * 10));
        result.putVehicle<float>(104, delta);
        for (std::size_t corner = 0; corner < 4; ++corner) {
            result.putVehicle<std::uint8_t>(140 + corner,
                                            static_cast<std::uint8_t>((step + 100) % 101));
        }
        const std::uint32_t blinking = seconds % 2 == 0 ? 0xFFFFFFFFU : 0U;
        result.putVehicle<std::uint32_t>(184, (blinking & ~0x5150U) | boxes);
        return result;
    }
};

std::uint32_t statusAfter(EditorTelemetry &telemetry, int steps)
{
    for (int i = 0; i < steps; ++i)
        telemetry.step();
    return telemetry.vehicle.statusFlags;
}

} // namespace

class EditorTelemetryTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNewOneHoldsTheSeeds()
    {
        const EditorTelemetry telemetry;
        RecordBytes expected = seeds();
        expected.putVehicle<float>(24, 999.0F);
        expected.putVehicle<std::uint8_t>(60, 100);
        expected.putVehicle<std::uint32_t>(140, 0x64646464);
        expected.putVehicle<std::uint32_t>(184, 0xFFFFFFFF);
        QCOMPARE(differingField(telemetry.vehicle, expected), nullptr);
        QVERIFY(isExactly(telemetry.limits, expected.limits));
        QVERIFY(isExactly(telemetry.extended, expected.extended));
        QCOMPARE(telemetry.tune.changeCounter, 0U);
        QVERIFY(telemetry.tune.reservedFlagA);
        QVERIFY(telemetry.motionProfileName().isEmpty());
    }

    void sixHundredStepsFollowTheRules()
    {
        EditorTelemetry telemetry;
        Model model;
        for (int step = 1; step <= 600; ++step) {
            telemetry.systemPanel = step > 50 && step <= 500;
            telemetry.yellowFlag = step % 7 < 3;
            telemetry.blueFlag = step % 11 < 4;
            telemetry.blackFlag = step % 13 < 6;
            telemetry.blackAndWhiteFlag = step % 17 < 9;
            telemetry.drsAvailable = step % 19 < 5;
            const std::uint32_t boxes =
                (telemetry.yellowFlag ? 0x1000U : 0U) | (telemetry.blueFlag ? 0x100U : 0U) |
                (telemetry.blackFlag ? 0x40U : 0U) | (telemetry.blackAndWhiteFlag ? 0x4000U : 0U) |
                (telemetry.drsAvailable ? 0x10U : 0U);

            telemetry.step();
            model.advance(telemetry.systemPanel);
            RecordBytes expected = model.record(boxes);
            expected.extended[81] = 1;

            const QByteArray where = QByteArray::number(step) + ": ";
            const char *differing = differingField(telemetry.vehicle, expected);
            QVERIFY2(differing == nullptr, (where + differing).constData());
            QVERIFY(isExactly(telemetry.limits, expected.limits));
            QVERIFY(isExactly(telemetry.extended, expected.extended));
            QVERIFY(telemetry.tune.valueCurrent == model.tuneValue);
            QCOMPARE(telemetry.tune.changeCounter, model.tuneReports);
            QCOMPARE(telemetry.motionProfileName(),
                     telemetry.systemPanel ? QStringLiteral("Demo Profile") : QString());
        }
        QCOMPARE(telemetry.tune.changeCounter, 450U);
    }

    void speedAndDeltaTakeTheirCourses()
    {
        EditorTelemetry telemetry;
        std::vector<float> speed{0};
        std::vector<float> delta{0};
        for (int step = 1; step <= 900; ++step) {
            telemetry.step();
            speed.push_back(telemetry.vehicle.speedKmh);
            delta.push_back(telemetry.vehicle.deltaTimeS);
        }
        QCOMPARE(speed[1], 0.0F);
        QCOMPARE(speed[151], 150.0F);
        QCOMPARE(speed[152], 151.0F);
        QCOMPARE(speed[153], 162.0F);
        QCOMPARE(speed[229], 998.0F);
        QCOMPARE(speed[230], 0.0F);
        QCOMPARE(speed[459], 0.0F);

        QVERIFY(delta[199] < 10.0F);
        QVERIFY(delta[200] >= 10.0F && delta[200] < 10.01F);
        QVERIFY(delta[288] < 99.0F);
        QVERIFY(delta[289] > 99.0F && delta[289] < 99.01F);
        QCOMPARE(delta[290], -98.0F);
        QCOMPARE(delta[379], -9.0F);
        QVERIFY(delta[380] > -9.0F && delta[380] < -8.9F);
        QVERIFY(delta[848] > 99.0F);
        QCOMPARE(delta[849], -98.0F);
    }

    void boundsBelongToTheLowerSide()
    {
        EditorTelemetry telemetry;
        telemetry.vehicle.speedKmh = 150.0F;
        telemetry.vehicle.deltaTimeS = 99.0F;
        telemetry.step();
        QCOMPARE(float(telemetry.vehicle.speedKmh), 151.0F);
        QCOMPARE(float(telemetry.vehicle.deltaTimeS), 100.0F);
        telemetry.vehicle.speedKmh = 988.0F;
        telemetry.vehicle.deltaTimeS = -10.0F;
        telemetry.step();
        QCOMPARE(float(telemetry.vehicle.speedKmh), 999.0F);
        QCOMPARE(float(telemetry.vehicle.deltaTimeS), -9.0F);
    }

    void fuelAndGearWrapAtTheirEnds()
    {
        EditorTelemetry telemetry;
        telemetry.vehicle.fuelLevelPercent = 90;
        telemetry.vehicle.gear = 9;
        statusAfter(telemetry, 25);
        QCOMPARE(int(telemetry.vehicle.fuelLevelPercent), 100);
        QCOMPARE(int(telemetry.vehicle.gear), -1);
        statusAfter(telemetry, 24);
        QCOMPARE(int(telemetry.vehicle.gear), -1);
        telemetry.step();
        QCOMPARE(int(telemetry.vehicle.fuelLevelPercent), 0);
        QCOMPARE(int(telemetry.vehicle.gear), 0);
    }

    void aBoxHoldsItsBitWhileTheOthersBlink()
    {
        EditorTelemetry telemetry;
        telemetry.blueFlag = true;
        QCOMPARE(statusAfter(telemetry, 24), 0xFFFFAFAFU);
        QCOMPARE(statusAfter(telemetry, 1), 0x00000100U);
        QCOMPARE(statusAfter(telemetry, 25), 0xFFFFAFAFU);
        telemetry.blueFlag = false;
        QCOMPARE(statusAfter(telemetry, 1), 0xFFFFAEAFU);
    }

    void theTuneDemoRunsWithThePanelAndStandsWithoutIt()
    {
        EditorTelemetry telemetry;
        statusAfter(telemetry, 30);
        QCOMPARE(telemetry.tune.changeCounter, 0U);
        QVERIFY(telemetry.tune.name.isEmpty());

        telemetry.systemPanel = true;
        std::vector<float> values{0};
        for (int step = 1; step <= 53; ++step) {
            telemetry.step();
            values.push_back(telemetry.tune.valueCurrent);
        }
        QVERIFY(values[20] > 1.99F);
        for (const std::size_t fallen : {21U, 37U, 53U}) {
            QCOMPARE(values[fallen], 0.5F);
            QVERIFY(values[fallen - 1] > 1.9F);
        }
        QCOMPARE(telemetry.tune.group, QStringLiteral("Motion"));
        QCOMPARE(telemetry.tune.name, QStringLiteral("Longitudinal G-Force (Intermittent)"));
        QCOMPARE(telemetry.tune.valueName, QStringLiteral("Gain"));
        QCOMPARE(telemetry.tune.valueMin, 0.0F);
        QCOMPARE(telemetry.tune.valueMax, 2.5F);

        telemetry.systemPanel = false;
        telemetry.step();
        QCOMPARE(telemetry.tune.changeCounter, 53U);
        QCOMPARE(telemetry.tune.valueCurrent, 0.5F);
        QCOMPARE(telemetry.tune.valueName, QStringLiteral("Gain"));
    }
};

QTEST_APPLESS_MAIN(EditorTelemetryTest)
#include "EditorTelemetryTest.moc"
