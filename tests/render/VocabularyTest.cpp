#include "PublisherRig.h"

#include <QtTest/QtTest>

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <thread>
#include <vector>

namespace {

constexpr int NoTwin = -1;

/// One value property: its name, its value for `distinctInput` after one publication, whose type is
/// the property's type, and the bit of its twin.
struct Row
{
    const char *name;
    QVariant value;
    int twinBit = NoTwin;
};

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

} // namespace

/// Which properties there are, and what raises or feeds each of them.
class VocabularyTest : public QObject
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
};

QTEST_GUILESS_MAIN(VocabularyTest)
#include "VocabularyTest.moc"
