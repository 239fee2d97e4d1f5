#include "render/TelemetryPublisher.h"
#include "support/RecordBytes.h"

#include <QtCore/QSet>
#include <QtCore/QVariant>
#include <QtTest/QtTest>

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <limits>
#include <map>
#include <set>
#include <thread>
#include <utility>
#include <vector>

namespace {

constexpr float Inf = std::numeric_limits<float>::infinity();
constexpr float NaN = std::numeric_limits<float>::quiet_NaN();
constexpr int NoTwin = -1;

/// One value property: its name, its value for `distinctInput` after one publication, whose type is
/// the property's type, and the bit of its twin.
struct Row
{
    const char *name;
    QVariant value;
    int twinBit = NoTwin;
};

QVariant text(const char *value)
{
    return QString::fromLatin1(value);
}

/// The whole vocabulary in the order of publication.
const std::vector<Row> &vocabulary()
{
    static const std::vector<Row> rows{
        {"dash_paused", false},
        {"dash_useMph", true},
        {"dash_showMarkers", true},
        {"dash_rpm", 7311},
        {"dash_rpmPercent", 7311.0F / 81920.0F},
        {"dash_maxRpm", 81920U},
        {"dash_speed_kmh", 188},
        {"dash_groundSpeed_kmh", 93},
        {"dash_speed_mph", 117},
        {"dash_speed_knots", 101},
        {"dash_groundSpeed_mph", 58},
        {"dash_groundSpeed_knots", 50},
        {"dash_gear", 5},
        {"dash_gear_str", text("5")},
        {"dash_currentTime_str", text("01:23:456"), 15},
        {"dash_currentTime_ms", 83456U, 15},
        {"dash_bestTime_str", text("01:21:234"), 17},
        {"dash_bestTime_ms", 81234U, 17},
        {"dash_lastTime_str", text("01:22:345"), 16},
        {"dash_lastTime_ms", 82345U, 16},
        {"dash_completedLaps", 70007, 19},
        {"dash_numberOfLaps", 80023, 20},
        {"dash_numberOfLaps_str", text("80023"), 20},
        {"dash_abs_Level", 3, 21},
        {"dash_tractionControl_Level", 6, 22},
        {"dash_fuelLevel_Percent", 64, 13},
        {"dash_gasPedal_Percent", 81, 12},
        {"dash_brakePedal_Percent", 12, 12},
        {"dash_clutchPedal_Percent", 34, 12},
        {"dash_autoShifter", false},
        {"dash_deltaTime_s", -1.25F},
        {"dash_deltaTime_str", text("-1.250")},
        {"dash_tyreTemp_C_FL", 100291, 27},
        {"dash_tyreTemp_C_FR", 100292, 27},
        {"dash_tyreTemp_C_RL", -100293, 27},
        {"dash_tyreTemp_C_RR", 100294, 27},
        {"dash_tyreWear_Percent_FL", 255, 28},
        {"dash_tyreWear_Percent_FR", 202, 28},
        {"dash_tyreWear_Percent_RL", 203, 28},
        {"dash_tyreWear_Percent_RR", 204, 28},
        {"dash_brakeTemp_C_FL", 100611, 29},
        {"dash_brakeTemp_C_FR", 100612, 29},
        {"dash_brakeTemp_C_RL", 100613, 29},
        {"dash_brakeTemp_C_RR", -100614, 29},
        {"dash_tyrePressure_kPa_FL", 4000000001U, 30},
        {"dash_tyrePressure_kPa_FR", 4000000002U, 30},
        {"dash_tyrePressure_kPa_RL", 4000000003U, 30},
        {"dash_tyrePressure_kPa_RR", 4000000004U, 30},
        {"dash_brakeBias_Percent", -99, 25},
        {"dash_position", -300017, 14},
        {"dash_speedLimiter", false, 36},
        {"dash_absInAction", false, 34},
        {"dash_tcInAction", false, 35},
        {"dash_surgeG", 0.75F},
        {"dash_swayG", -1.5F},
        {"dash_heaveG", 0.125F},
        {"dash_altitudeAboveGround_m", 123.5F},
        {"dash_altitudeAboveGround_feet", 405},
        {"dash_altitudeAboveSeaLevel_m", -987.25F},
        {"dash_altitudeAboveSeaLevel_feet", -3239},
        {"dash_turnCoordinatorBall", 0.375F},
        {"dash_heading_deg", 271.5F},
        {"dash_pitch_deg", -4.25F},
        {"dash_roll_deg", 12.75F},
        {"dash_drsAvailable", false},
        {"dash_drsEngaged", false},
        {"dash_sessionFlagYellow", false},
        {"dash_sessionFlagBlue", false},
        {"dash_sessionFlagBlackAndWhite", false},
        {"dash_sessionFlagBlack", false},
        {"dash_engineLoad_Percent", 177, 39},
        {"dash_frameCounter1000", 2U},
        {"dash_angle", -92.5F},
        {"dash_lowFuelLevelThreshold_Percent", 15},
        {"dash_rpmGreenThreshold_Percent", 161},
        {"dash_rpmYellowThreshold_Percent", 72},
        {"dash_rpmRedThreshold_Percent", 83},
        {"dash_rpmBlinkingThreshold_Percent", 94},
        {"dash_motionProfileName", text("Gentle")},
        {"dash_tuneGroup", text("Aero")},
        {"dash_tuneName", text("Wing")},
        {"dash_tuneValueName", text("Rear")},
        {"dash_tuneValueMin", -3.5F},
        {"dash_tuneValueMax", 11.25F},
        {"dash_tuneValueCurrent", 4.5F},
        {"dash_tuneValueIsInteger", true},
        {"dash_tuneChangeCounter", 4000000009U},
        {"dash_wheelSlip_FL", false},
        {"dash_wheelSlip_FR", false},
        {"dash_wheelSlip_RL", false},
        {"dash_wheelSlip_RR", false},
        {"dash_rpmBlink", false},
    };
    return rows;
}

/// All that a test hands to a publication.
struct Input
{
    RecordBytes records;
    QString motionProfileName;
    TuneInfo tune;
    float steeringSmoothing = 1;
    bool useMph = false;
    bool showMarkers = false;
    bool paused = false;

    void setMask(std::uint64_t mask) { records.putVehicle(0, mask); }
    void setSpeed(float kmh) { records.putVehicle(24, kmh); }
    void setGear(int gear) { records.putVehicle(40, static_cast<std::int8_t>(gear)); }
    void setRpm(std::uint32_t rpm) { records.putVehicle(49, rpm); }
    void setMaxRpm(std::uint32_t rpm) { records.putVehicle(53, rpm); }
    void setFlags(std::uint32_t flags) { records.putVehicle(184, flags); }
    void setBlinkingThreshold(std::uint8_t percent) { records.putLimits(8, percent); }
};

/// A different value in every field.
Input distinctInput()
{
    Input input;
    RecordBytes &records = input.records;
    records.putVehicle(24, 187.6F);
    records.putVehicle(28, 93.4F);
    records.putVehicle(32, std::int32_t{-37});
    records.putVehicle(40, std::int8_t{5});
    records.putVehicle(49, 7311U);
    records.putVehicle(53, 81920U);
    const std::array<std::uint8_t, 4> percents{81, 12, 34, 64};
    records.putVehicle(57, percents);
    records.putVehicle(61, std::int32_t{-300017});
    records.putVehicle(65, 83456U);
    records.putVehicle(69, 82345U);
    records.putVehicle(73, 81234U);
    records.putVehicle(81, std::int32_t{70007});
    records.putVehicle(85, std::int32_t{80023});
    records.putVehicle(89, std::uint8_t{3});
    records.putVehicle(90, std::uint8_t{6});
    records.putVehicle(91, 0.125F);
    records.putVehicle(95, -1.5F);
    records.putVehicle(99, 0.75F);
    records.putVehicle(103, std::uint8_t{0x9D});
    records.putVehicle(104, -1.25F);
    records.putVehicle(108, std::array<std::int32_t, 4>{100291, 100292, -100293, 100294});
    records.putVehicle(124, std::array<std::int32_t, 4>{100611, 100612, 100613, -100614});
    records.putVehicle(140, std::array<std::uint8_t, 4>{255, 202, 203, 204});
    records.putVehicle(
        144, std::array<std::uint32_t, 4>{4000000001U, 4000000002U, 4000000003U, 4000000004U});
    records.putVehicle(160, 123.5F);
    records.putVehicle(164, -987.25F);
    records.putVehicle(168, 0.375F);
    records.putVehicle(172, -4.25F);
    records.putVehicle(176, 12.75F);
    records.putVehicle(180, 271.5F);
    records.putVehicle(188, std::uint8_t{177});
    records.putLimits(0, 2.5F);
    records.putLimits(4, std::array<std::uint8_t, 5>{15, 161, 72, 83, 94});
    input.motionProfileName = QStringLiteral("Gentle");
    input.tune.group = QStringLiteral("Aero");
    input.tune.name = QStringLiteral("Wing");
    input.tune.valueName = QStringLiteral("Rear");
    input.tune.valueMin = -3.5F;
    input.tune.valueMax = 11.25F;
    input.tune.valueCurrent = 4.5F;
    input.tune.valueIsInteger = true;
    input.tune.changeCounter = 4000000009U;
    input.useMph = true;
    input.showMarkers = true;
    return input;
}

/// Type and value, and floats exactly, where QVariant compares them loosely.
bool same(const QVariant &a, const QVariant &b)
{
    if (a.userType() != b.userType())
        return false;
    if (a.userType() != QMetaType::Float)
        return a == b;
    const float x = a.toFloat();
    const float y = b.toFloat();
    return x == y || (std::isnan(x) && std::isnan(y));
}

/// A publisher together with what it has written last.
struct Bench
{
    std::vector<std::pair<QString, QVariant>> written;
    std::map<QString, QVariant> state;
    TelemetryPublisher publisher{[this](const QString &name, const QVariant &value) {
        written.emplace_back(name, value);
        state[name] = value;
    }};

    Bench() = default;
    Q_DISABLE_COPY_MOVE(Bench)

    void publish(const Input &input)
    {
        written.clear();
        const VehicleTelemetry vehicle = input.records.vehicleRecord();
        const DisplayLimits limits = input.records.limitsRecord();
        const ExtendedTelemetry extended = input.records.extendedRecord();
        publisher.publish({vehicle, limits, extended, input.motionProfileName, input.tune,
                           input.steeringSmoothing, input.useMph, input.showMarkers, input.paused});
    }
    QVariant value(const char *name) const { return state.at(QLatin1String(name)); }
    int number(const char *name) const { return value(name).toInt(); }

    /// Names of the properties that hold `true`, of those whose names begin with `prefix`.
    QSet<QString> raised(const char *prefix = "dash_") const
    {
        QSet<QString> names;
        for (const auto &[name, value] : state) {
            if (name.startsWith(QLatin1String(prefix)) && same(value, true))
                names.insert(name);
        }
        return names;
    }
};

std::vector<std::pair<QString, QVariant>> written(const Input &input, int publications = 1)
{
    Bench bench;
    for (int i = 0; i < publications; ++i)
        bench.publish(input);
    return bench.written;
}

bool sameWriting(const Input &a, const Input &b, int publications = 1)
{
    const auto first = written(a, publications);
    const auto second = written(b, publications);
    return std::equal(first.begin(), first.end(), second.begin(), second.end(),
                      [](const auto &x, const auto &y) {
                          return x.first == y.first && same(x.second, y.second);
                      });
}

} // namespace

class TelemetryPublisherTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyPublicationWritesAllPropertiesInOrder()
    {
        Bench bench;
        Input input = distinctInput();
        for (int publication = 0; publication < 3; ++publication) {
            bench.publish(input);
            QCOMPARE(bench.written.size(), std::size_t{129});
            auto next = bench.written.cbegin();
            for (const Row &row : vocabulary()) {
                QCOMPARE(next->first, QLatin1String(row.name));
                QCOMPARE(next->second.userType(), row.value.userType());
                ++next;
                if (row.twinBit == NoTwin)
                    continue;
                QCOMPARE(next->first, QLatin1String(row.name) + QLatin1String("_Available"));
                QCOMPARE(next->second.userType(), int{QMetaType::Bool});
                ++next;
            }
            QVERIFY(next == bench.written.cend());
            input = {};
        }
    }

    void everyFieldFeedsItsOwnProperty()
    {
        Bench bench;
        bench.publish(distinctInput());
        for (const Row &row : vocabulary())
            QVERIFY2(same(bench.value(row.name), row.value), row.name);
    }

    void emptyRecordsHaveTheirTexts()
    {
        Bench bench;
        bench.publish({});
        for (const char *name : {"dash_currentTime_str", "dash_lastTime_str", "dash_bestTime_str"})
            QVERIFY(same(bench.value(name), text("--:--:---")));
        QVERIFY(same(bench.value("dash_gear"), 0));
        QVERIFY(same(bench.value("dash_gear_str"), text("N")));
        QVERIFY(same(bench.value("dash_numberOfLaps_str"), text("-")));
        QVERIFY(same(bench.value("dash_deltaTime_str"), text("0.000")));
        QVERIFY(same(bench.value("dash_rpmPercent"), 0.0F));
        QVERIFY(same(bench.value("dash_frameCounter1000"), 2U));
        QVERIFY(same(bench.value("dash_tuneName"), text("")));
        QVERIFY(same(bench.value("dash_motionProfileName"), text("")));
        QVERIFY(bench.raised().isEmpty());
    }

    void aFullMaskRaisesEveryTwinAndChangesNoValue()
    {
        Input full;
        full.setMask(~std::uint64_t{0});
        Bench bench;
        bench.publish(full);
        Bench empty;
        empty.publish({});
        int twins = 0;
        for (const auto &[name, value] : bench.state) {
            const bool isTwin = name.endsWith(QLatin1String("_Available"));
            twins += isTwin ? 1 : 0;
            QVERIFY2(same(value, isTwin ? QVariant(true) : empty.state.at(name)), qPrintable(name));
        }
        QCOMPARE(twins, 37);
    }

    void everyMaskBitRaisesItsOwnTwins_data()
    {
        QTest::addColumn<int>("bit");
        for (int bit = 0; bit < 64; ++bit)
            QTest::addRow("bit %d", bit) << bit;
    }

    void everyMaskBitRaisesItsOwnTwins()
    {
        QFETCH(int, bit);
        QSet<QString> expected;
        for (const Row &row : vocabulary()) {
            if (row.twinBit == bit)
                expected.insert(QLatin1String(row.name) + QLatin1String("_Available"));
        }
        Input input;
        input.setMask(std::uint64_t{1} << bit);
        Bench bench;
        bench.publish(input);
        QCOMPARE(bench.raised(), expected);
    }

    void everyStatusBitRaisesItsOwnFlag_data()
    {
        QTest::addColumn<int>("bit");
        QTest::addColumn<QString>("name");
        const std::map<int, const char *> names{
            {0, "dash_absInAction"},        {1, "dash_tcInAction"},
            {2, "dash_autoShifter"},        {3, "dash_speedLimiter"},
            {4, "dash_drsAvailable"},       {5, "dash_drsEngaged"},
            {6, "dash_sessionFlagBlack"},   {8, "dash_sessionFlagBlue"},
            {12, "dash_sessionFlagYellow"}, {14, "dash_sessionFlagBlackAndWhite"},
        };
        for (int bit = 0; bit < 32; ++bit) {
            const auto found = names.find(bit);
            QTest::addRow("bit %d", bit)
                << bit << (found == names.end() ? QString() : QLatin1String(found->second));
        }
    }

    void everyStatusBitRaisesItsOwnFlag()
    {
        QFETCH(int, bit);
        QFETCH(QString, name);
        Input input;
        input.setFlags(1U << bit);
        Bench bench;
        bench.publish(input);
        QCOMPARE(bench.raised(), name.isEmpty() ? QSet<QString>() : QSet<QString>{name});
    }

    void everyArgumentRaisesItsOwnFlag()
    {
        const std::map<const char *, bool Input::*> flags{
            {"dash_useMph", &Input::useMph},
            {"dash_showMarkers", &Input::showMarkers},
            {"dash_paused", &Input::paused},
        };
        for (const auto &[name, flag] : flags) {
            Input input;
            input.*flag = true;
            Bench bench;
            bench.publish(input);
            QCOMPARE(bench.raised(), QSet<QString>{QLatin1String(name)});
        }
    }

    void theAutomaticShifterShowsInTheTextOfForwardGearsOnly()
    {
        const std::map<int, std::pair<const char *, const char *>> texts{
            {0xFF, {"R", "R"}}, {0, {"N", "N"}}, {3, {"3", "D"}}};
        for (const auto &[byte, pair] : texts) {
            Input input;
            input.setGear(byte);
            Bench bench;
            bench.publish(input);
            QVERIFY(same(bench.value("dash_gear_str"), text(pair.first)));
            input.setFlags(4);
            bench.publish(input);
            QVERIFY(same(bench.value("dash_gear_str"), text(pair.second)));
            QVERIFY(same(bench.value("dash_gear"), byte == 0xFF ? -1 : byte));
        }
    }

    void reservedBytesHaveNoEffect()
    {
        const std::vector<std::pair<int, int>> stretches{{8, 24}, {36, 40}, {41, 49}, {77, 81}};
        Input garbage = distinctInput();
        for (const auto &[begin, end] : stretches)
            std::fill(garbage.records.vehicle.begin() + begin,
                      garbage.records.vehicle.begin() + end, 0xA5);
        std::fill(garbage.records.limits.begin() + 9, garbage.records.limits.end(), 0xA5);
        garbage.tune.reservedFlagA = false;
        garbage.tune.reservedFlagB = true;
        QVERIFY(sameWriting(distinctInput(), garbage));
        QVERIFY(sameWriting(distinctInput(), garbage, 2));
        garbage.setSpeed(1);
        QVERIFY(!sameWriting(distinctInput(), garbage));
    }

    void onlyTheTwoFlagsOfAWheelRaiseItsSlip()
    {
        const std::map<std::size_t, const char *> wheels{
            {80, "dash_wheelSlip_FL"},  {81, "dash_wheelSlip_FL"},  {96, "dash_wheelSlip_FR"},
            {97, "dash_wheelSlip_FR"},  {112, "dash_wheelSlip_RL"}, {113, "dash_wheelSlip_RL"},
            {128, "dash_wheelSlip_RR"}, {129, "dash_wheelSlip_RR"},
        };
        for (std::size_t offset = 0; offset < 232; ++offset) {
            for (const unsigned char byte : {0x01, 0x80, 0xFF}) {
                Input input;
                input.records.extended.at(offset) = byte;
                Bench bench;
                bench.publish(input);
                QVERIFY(bench.raised().isEmpty());
                bench.publish(input);
                const auto found = wheels.find(offset);
                QCOMPARE(bench.raised(), found == wheels.end()
                                             ? QSet<QString>()
                                             : QSet<QString>{QLatin1String(found->second)});
            }
        }
    }

    void whatFlashesIsOnInEveryOtherPublicationOverTheWrap()
    {
        Input input;
        input.setRpm(8000);
        input.setMaxRpm(8000);
        input.records.extended.fill(1);
        const QSet<QString> all{
            QStringLiteral("dash_wheelSlip_FL"), QStringLiteral("dash_wheelSlip_FR"),
            QStringLiteral("dash_wheelSlip_RL"), QStringLiteral("dash_wheelSlip_RR"),
            QStringLiteral("dash_rpmBlink")};
        Bench bench;
        for (unsigned publication = 1; publication <= 1010; ++publication) {
            bench.publish(input);
            QVERIFY(same(bench.value("dash_frameCounter1000"), publication * 2 % 1000));
            QCOMPARE(bench.raised(), publication % 2 == 0 ? all : QSet<QString>());
        }
    }

    void theEngineSpeedWarningStandsOnTheAverage()
    {
        Input input;
        input.setMaxRpm(8000);
        input.setBlinkingThreshold(50);
        Bench bench;
        const std::vector<std::pair<unsigned, bool>> steps{
            // Averages 0, 3999, 2666, 3999.5 which rounds up to the threshold, 5199.
            {0, false}, {7998, false}, {0, false}, {8000, true}, {10000, false}, {10000, true}};
        for (const auto &[rpm, warns] : steps) {
            input.setRpm(rpm);
            bench.publish(input);
            QCOMPARE(bench.value("dash_rpmBlink").toBool(), warns);
            QVERIFY(same(bench.value("dash_rpmPercent"),
                         static_cast<float>(bench.number("dash_rpm")) / 8000.0F));
        }
    }

    void aPauseWipesTheEngineSpeedAndHoldsNothingElse()
    {
        Input input = distinctInput();
        input.steeringSmoothing = 0.5F;
        input.setMaxRpm(5000);
        input.setRpm(5000);
        Bench bench;
        bench.publish(input);
        input.paused = true;
        input.setSpeed(50);
        bench.publish(input);
        QCOMPARE(bench.number("dash_rpm"), 0);
        QVERIFY(same(bench.value("dash_rpmPercent"), 0.0F));
        QVERIFY(same(bench.value("dash_maxRpm"), 5000U));
        QVERIFY(same(bench.value("dash_rpmBlink"), false));
        QVERIFY(same(bench.value("dash_speed_kmh"), 50));
        QVERIFY(same(bench.value("dash_frameCounter1000"), 4U));
        QVERIFY(same(bench.value("dash_angle"), -37.0F * 0.75F * 2.5F));
        input.paused = false;
        input.setRpm(4000);
        bench.publish(input);
        QCOMPARE(bench.number("dash_rpm"), 4000);
    }

    void theEngineSpeedRampsOverTheZeroOfAnEmptyFirstPublication()
    {
        Bench bench;
        bench.publish({});
        Input input;
        input.setRpm(8000);
        for (const int expected : {4000, 5333, 6000, 6400, 8000, 8000}) {
            bench.publish(input);
            QCOMPARE(bench.number("dash_rpm"), expected);
        }
    }

    void steeringIsSmoothed()
    {
        Input input;
        input.records.putVehicle(32, std::int32_t{100});
        input.records.putLimits(0, 1.0F);
        input.steeringSmoothing = 0.2F;
        Bench bench;
        for (const double expected : {20.0, 36.0, 48.8, 59.04}) {
            bench.publish(input);
            QVERIFY(std::abs(bench.value("dash_angle").toDouble() - expected) < 1e-4);
        }
        input.steeringSmoothing = 1;
        input.records.putLimits(0, -4.5F);
        bench.publish(input);
        QVERIFY(same(bench.value("dash_angle"), -450.0F));
    }

    void speedsAndHeightsAreConvertedBeforeTheyAreRounded()
    {
        Input input;
        Bench bench;
        // From the rounded 1 km/h it would be 1 mph and 1 knot.
        input.setSpeed(0.5F);
        input.records.putVehicle(28, -0.6F);
        input.records.putVehicle(160, 0.4F);
        input.records.putVehicle(164, -0.4F);
        bench.publish(input);
        QCOMPARE(bench.number("dash_speed_kmh"), 1);
        QCOMPARE(bench.number("dash_speed_mph"), 0);
        QCOMPARE(bench.number("dash_speed_knots"), 0);
        QCOMPARE(bench.number("dash_groundSpeed_kmh"), -1);
        QCOMPARE(bench.number("dash_groundSpeed_mph"), 0);
        QCOMPARE(bench.number("dash_groundSpeed_knots"), 0);
        QCOMPARE(bench.number("dash_altitudeAboveGround_feet"), 1);
        QCOMPARE(bench.number("dash_altitudeAboveSeaLevel_feet"), -1);
        // Large enough to tell the factors' last digits.
        input.setSpeed(1e6F);
        input.records.putVehicle(160, 1e6F);
        bench.publish(input);
        QCOMPARE(bench.number("dash_speed_mph"), 621371);
        QCOMPARE(bench.number("dash_speed_knots"), 539957);
        QCOMPARE(bench.number("dash_altitudeAboveGround_feet"), 3280840);
    }

    void implausibleFloatsPassOrAreBoundedAndLeaveNothingBehind_data()
    {
        QTest::addColumn<float>("value");
        QTest::addColumn<int>("rounded");
        QTest::newRow("not a number") << NaN << 0;
        QTest::newRow("infinity") << Inf << std::numeric_limits<int>::max();
        QTest::newRow("minus infinity") << -Inf << std::numeric_limits<int>::min();
        QTest::newRow("huge") << 3e38F << std::numeric_limits<int>::max();
    }

    void implausibleFloatsPassOrAreBoundedAndLeaveNothingBehind()
    {
        QFETCH(float, value);
        QFETCH(int, rounded);
        Input input;
        for (const std::size_t offset : {24, 28, 91, 95, 99, 104, 160, 164, 168, 172, 176, 180})
            input.records.putVehicle(offset, value);
        input.records.putVehicle(32, std::int32_t{100});
        input.records.putLimits(0, value);
        input.tune.valueMin = input.tune.valueMax = input.tune.valueCurrent = value;

        Bench bench;
        bench.publish(input);
        for (const char *name :
             {"dash_surgeG", "dash_swayG", "dash_heaveG", "dash_altitudeAboveGround_m",
              "dash_altitudeAboveSeaLevel_m", "dash_turnCoordinatorBall", "dash_heading_deg",
              "dash_pitch_deg", "dash_roll_deg", "dash_tuneValueMin", "dash_tuneValueMax",
              "dash_tuneValueCurrent"})
            QVERIFY2(same(bench.value(name), value), name);
        for (const char *name :
             {"dash_speed_kmh", "dash_groundSpeed_kmh", "dash_speed_mph", "dash_speed_knots",
              "dash_groundSpeed_mph", "dash_groundSpeed_knots", "dash_altitudeAboveGround_feet",
              "dash_altitudeAboveSeaLevel_feet"})
            QVERIFY2(same(bench.value(name), rounded), name);
        QCOMPARE(bench.value("dash_angle").userType(), int{QMetaType::Float});
        QVERIFY(!std::isfinite(bench.value("dash_angle").toFloat()));
        const float delta = bench.value("dash_deltaTime_s").toFloat();
        QVERIFY(std::isnan(value) ? std::isnan(delta) : std::abs(delta) == 99.999F);

        Bench fresh;
        fresh.publish({});
        fresh.publish(distinctInput());
        bench.publish(distinctInput());
        for (const auto &[name, expected] : fresh.state)
            QVERIFY2(same(bench.state.at(name), expected), qPrintable(name));
    }

    void theFirstPublicationFixesTheNames()
    {
        Bench bench;
        QVERIFY(bench.publisher.publishedFields().empty());
        bench.publish({});
        const std::set<QString> names = bench.publisher.publishedFields();
        QCOMPARE(names.size(), std::size_t{129});
        for (const auto &[name, value] : bench.written)
            QVERIFY(names.count(name) == 1);
        QVERIFY(names.count(QStringLiteral("dash_position_Available")) == 1);
        QVERIFY(names.count(QStringLiteral("dash_surgeG_Available")) == 0);
        // By code units: capitals stand before the underscore, and that before small letters.
        QVERIFY(std::is_sorted(names.begin(), names.end()));
        QCOMPARE(*names.begin(), QStringLiteral("dash_absInAction"));
        QCOMPARE(*std::next(names.begin(), 2), QStringLiteral("dash_abs_Level"));
        bench.publish(distinctInput());
        QVERIFY(bench.publisher.publishedFields() == names);
    }

    void namesCanBeReadElsewhereDuringTheFirstPublication()
    {
        for (int round = 0; round < 20; ++round) {
            Bench bench;
            std::size_t largest = 0;
            std::thread reader([&] {
                for (int i = 0; i < 100; ++i)
                    largest = std::max(largest, bench.publisher.publishedFields().size());
            });
            bench.publish({});
            reader.join();
            QVERIFY(largest <= 129);
        }
    }

    void aHandlerSeesEarlierPropertiesNewAndLaterOnesOld()
    {
        std::map<QString, QVariant> state;
        std::map<QString, QVariant> seen;
        std::set<QString> names;
        TelemetryPublisher *self = nullptr;
        TelemetryPublisher publisher([&](const QString &name, const QVariant &value) {
            state[name] = value;
            if (name == QLatin1String("dash_frameCounter1000")) {
                seen = state;
                // The lock on the names isn't held while a handler runs.
                names = self->publishedFields();
            }
        });
        self = &publisher;
        const Input input = distinctInput();
        const VehicleTelemetry vehicle = input.records.vehicleRecord();
        publisher.publish({{}, {}, {}, {}, {}});
        QVERIFY(names.count(QStringLiteral("dash_engineLoad_Percent_Available")) == 1);
        QVERIFY(names.count(QStringLiteral("dash_frameCounter1000")) == 1);
        QVERIFY(names.count(QStringLiteral("dash_angle")) == 0);
        publisher.publish({vehicle, {}, {}, input.motionProfileName, input.tune});
        QVERIFY(same(seen.at(QStringLiteral("dash_engineLoad_Percent")), 177));
        QVERIFY(same(seen.at(QStringLiteral("dash_tuneName")), text("")));
        QVERIFY(same(seen.at(QStringLiteral("dash_motionProfileName")), text("")));
        QVERIFY(same(state.at(QStringLiteral("dash_tuneName")), text("Wing")));
    }
};

QTEST_GUILESS_MAIN(TelemetryPublisherTest)
#include "TelemetryPublisherTest.moc"
