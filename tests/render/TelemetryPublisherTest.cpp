#include "PublisherRig.h"

#include <QtTest/QtTest>

#include <algorithm>
#include <limits>
#include <map>
#include <set>
#include <utility>
#include <vector>

namespace {

constexpr float Inf = std::numeric_limits<float>::infinity();
constexpr float NaN = std::numeric_limits<float>::quiet_NaN();

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

/// What a publication keeps, derives and leaves out.
class TelemetryPublisherTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
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
