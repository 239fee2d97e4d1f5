#include "render/TelemetryPublisher.h"
#include "support/RecordBytes.h"
#include "support/TestFiles.h"

#include <QtCore/QSet>
#include <QtCore/QVariant>
#include <QtTest/QtTest>

#include <map>
#include <thread>
#include <vector>

namespace {

/// The arguments of a publication.
struct Input
{
    RecordBytes records;
    QString motionProfileName;
    TuneInfo tune;
    float steeringSmoothing = 1;
    bool useMph = false;
    bool showMarkers = false;
    bool paused = false;
};

/// A different value in every field.
Input distinctInput()
{
    Input input;
    RecordBytes &records = input.records;
    records.putVehicle(24, std::array{1000024.5F, 1000030.5F});
    records.putVehicle(32, std::int32_t{-37});
    records.putVehicle(40, std::int8_t{-3});
    records.putVehicle(49, std::array{7311U, 81920U});
    records.putVehicle(57, std::array<std::uint8_t, 4>{81, 12, 34, 64});
    records.putVehicle(61, std::int32_t{-300017});
    records.putVehicle(65, std::array{83456U, 82345U, 81234U});
    records.putVehicle(81, std::array{70007, 80023});
    records.putVehicle(89, std::array<std::uint8_t, 2>{3, 6});
    records.putVehicle(91, std::array{0.125F, -1.5F, 0.75F});
    records.putVehicle(103, std::int8_t{-99});
    records.putVehicle(104, -1.25F);
    records.putVehicle(108, std::array{100291, 100292, -100293, 100294});
    records.putVehicle(124, std::array{100611, 100612, 100613, -100614});
    records.putVehicle(140, std::array<std::uint8_t, 4>{255, 202, 203, 204});
    records.putVehicle(144, std::array{4000000001U, 4000000002U, 4000000003U, 4000000004U});
    records.putVehicle(160, std::array{1000000.5F, -987.25F, 0.375F, -4.25F, 12.75F, 271.5F});
    records.putVehicle(188, std::uint8_t{177});
    records.limits = {0, 0, 0x20, 0x40, 15, 161, 72, 83, 94}; // It begins with 2.5F.
    input.useMph = true;
    input.motionProfileName = "Gentle"_q;
    input.tune = {"Aero"_q, "Wing"_q, "Rear"_q, -3.5F, 11.25F,
                  4.5F,     true,     false,    false, 4000000009U};
    return input;
}

/// The records at odd addresses: they are packed, so a host may pass them from anywhere. A
/// sanitizer then reports every access that needs an alignment.
struct OddPlaces
{
    alignas(8) unsigned char first;
    VehicleTelemetry vehicle;
    DisplayLimits limits;
    ExtendedTelemetry extended;
};

/// A publisher and what it has written.
struct PublisherRig
{
    std::vector<QString> order; ///< Of the names in the latest publication.
    std::map<QString, QVariant> state;
    TelemetryPublisher publisher{[this](const QString &name, const QVariant &value) {
        order.push_back(name);
        state[name] = value;
    }};

    PublisherRig() = default;
    Q_DISABLE_COPY_MOVE(PublisherRig)

    void publish(const Input &input)
    {
        order.clear();
        const RecordBytes &bytes = input.records;
        const OddPlaces records{{},
                                recordOf<VehicleTelemetry>(bytes.vehicle),
                                recordOf<DisplayLimits>(bytes.limits),
                                recordOf<ExtendedTelemetry>(bytes.extended)};
        publisher.publish({records.vehicle, records.limits, records.extended,
                           input.motionProfileName, input.tune, input.steeringSmoothing,
                           input.useMph, input.showMarkers, input.paused});
    }

    // Names lack their "dash_" from here on.
    QVariant value(const char *name) const { return state.at("dash_"_q + QLatin1String(name)); }
    /// Type and value; floats exactly, where QVariant compares them loosely.
    bool is(const char *name, const QVariant &expected) const
    {
        const QVariant actual = value(name);
        return actual.userType() == expected.userType() && actual == expected &&
               (actual.userType() != QMetaType::Float || actual.toFloat() == expected.toFloat());
    }

    /// Names of the properties that hold `true`.
    QSet<QString> raised() const
    {
        QSet<QString> names;
        for (const auto &[name, value] : state) {
            if (value == true && value.userType() == QMetaType::Bool)
                names.insert(name.mid(5));
        }
        return names;
    }
};

constexpr int NoTwin = -1;

/// A property: its name after "dash_", its value and so its type in the first publication of
/// `distinctInput`, and the bit of its twin.
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
        {"paused", false},
        {"useMph", true},
        {"showMarkers", false},
        {"rpm", 7311},
        {"rpmPercent", 7311.0F / 81920.0F},
        {"maxRpm", 81920U},
        {"speed_kmh", 1000025},
        {"groundSpeed_kmh", 1000031},
        {"speed_mph", 621386},
        {"speed_knots", 539970},
        {"groundSpeed_mph", 621390},
        {"groundSpeed_knots", 539973},
        {"gear", -3},
        {"gear_str", "R"_q},
        {"currentTime_str", "01:23:456"_q, 15},
        {"currentTime_ms", 83456U, 15},
        {"bestTime_str", "01:21:234"_q, 17},
        {"bestTime_ms", 81234U, 17},
        {"lastTime_str", "01:22:345"_q, 16},
        {"lastTime_ms", 82345U, 16},
        {"completedLaps", 70007, 19},
        {"numberOfLaps", 80023, 20},
        {"numberOfLaps_str", "80023"_q, 20},
        {"abs_Level", 3, 21},
        {"tractionControl_Level", 6, 22},
        {"fuelLevel_Percent", 64, 13},
        {"gasPedal_Percent", 81, 12},
        {"brakePedal_Percent", 12, 12},
        {"clutchPedal_Percent", 34, 12},
        {"autoShifter", false},
        {"deltaTime_s", -1.25F},
        {"deltaTime_str", "-1.250"_q},
        {"tyreTemp_C_FL", 100291, 27},
        {"tyreTemp_C_FR", 100292, 27},
        {"tyreTemp_C_RL", -100293, 27},
        {"tyreTemp_C_RR", 100294, 27},
        {"tyreWear_Percent_FL", 255, 28},
        {"tyreWear_Percent_FR", 202, 28},
        {"tyreWear_Percent_RL", 203, 28},
        {"tyreWear_Percent_RR", 204, 28},
        {"brakeTemp_C_FL", 100611, 29},
        {"brakeTemp_C_FR", 100612, 29},
        {"brakeTemp_C_RL", 100613, 29},
        {"brakeTemp_C_RR", -100614, 29},
        {"tyrePressure_kPa_FL", 4000000001U, 30},
        {"tyrePressure_kPa_FR", 4000000002U, 30},
        {"tyrePressure_kPa_RL", 4000000003U, 30},
        {"tyrePressure_kPa_RR", 4000000004U, 30},
        {"brakeBias_Percent", -99, 25},
        {"position", -300017, 14},
        {"speedLimiter", false, 36},
        {"absInAction", false, 34},
        {"tcInAction", false, 35},
        {"surgeG", 0.75F},
        {"swayG", -1.5F},
        {"heaveG", 0.125F},
        {"altitudeAboveGround_m", 1000000.5F},
        {"altitudeAboveGround_feet", 3280842},
        {"altitudeAboveSeaLevel_m", -987.25F},
        {"altitudeAboveSeaLevel_feet", -3239},
        {"turnCoordinatorBall", 0.375F},
        {"heading_deg", 271.5F},
        {"pitch_deg", -4.25F},
        {"roll_deg", 12.75F},
        {"drsAvailable", false},
        {"drsEngaged", false},
        {"sessionFlagYellow", false},
        {"sessionFlagBlue", false},
        {"sessionFlagBlackAndWhite", false},
        {"sessionFlagBlack", false},
        {"engineLoad_Percent", 177, 39},
        {"frameCounter1000", 2U},
        {"angle", -92.5F},
        {"lowFuelLevelThreshold_Percent", 15},
        {"rpmGreenThreshold_Percent", 161},
        {"rpmYellowThreshold_Percent", 72},
        {"rpmRedThreshold_Percent", 83},
        {"rpmBlinkingThreshold_Percent", 94},
        {"motionProfileName", "Gentle"_q},
        {"tuneGroup", "Aero"_q},
        {"tuneName", "Wing"_q},
        {"tuneValueName", "Rear"_q},
        {"tuneValueMin", -3.5F},
        {"tuneValueMax", 11.25F},
        {"tuneValueCurrent", 4.5F},
        {"tuneValueIsInteger", true},
        {"tuneChangeCounter", 4000000009U},
        {"wheelSlip_FL", false},
        {"wheelSlip_FR", false},
        {"wheelSlip_RL", false},
        {"wheelSlip_RR", false},
        {"rpmBlink", false},
    };
    return rows;
}

/// Names of what the second publication of this input raises; what flashes is on then.
QSet<QString> raisedBy(const Input &input)
{
    PublisherRig rig;
    rig.publish(input);
    rig.publish(input);
    return rig.raised();
}

using NamesOfBits = QMap<int, QSet<QString>>;

/// Expects that each bit of these bytes raises its own properties and no others.
template<typename Bytes>
void checkBits(Bytes RecordBytes::*record, int begin, int end, const NamesOfBits &expected)
{
    for (int bit = begin * 8; bit < end * 8; ++bit) {
        Input input;
        (input.records.*record)[bit / 8] = static_cast<unsigned char>(1 << bit % 8);
        QCOMPARE(raisedBy(input), expected.value(bit));
    }
}

} // namespace

/// Which properties there are, what raises or feeds each of them, and what a publication keeps.
class VocabularyTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyPublicationWritesAllPropertiesInOrder()
    {
        std::vector<QString> expected;
        for (const Row &row : vocabulary()) {
            expected.push_back("dash_"_q + QLatin1String(row.name));
            if (row.twinBit != NoTwin)
                expected.push_back(expected.back() + "_Available"_q);
        }
        QCOMPARE(expected.size(), std::size_t{129});
        PublisherRig rig;
        rig.publish(distinctInput());
        QVERIFY(rig.order == expected);
        for (const Row &row : vocabulary())
            QVERIFY2(rig.is(row.name, row.value), row.name);
        rig.publish({});
        QVERIFY(rig.order == expected);
        for (const Row &row : vocabulary())
            QCOMPARE(rig.value(row.name).userType(), row.value.userType());
        QVERIFY(rig.raised().isEmpty() && rig.is("gear_str", "N"_q));
        QVERIFY(rig.publisher.publishedFields() == std::set(expected.begin(), expected.end()));
    }

    void everyBitRaisesItsOwnProperties()
    {
        NamesOfBits twins;
        for (const Row &row : vocabulary())
            twins[row.twinBit].insert(QLatin1String(row.name) + "_Available"_q);
        checkBits(&RecordBytes::vehicle, 0, 8, twins);
        NamesOfBits flags;
        int bit = 184 * 8;
        for (const QString &name :
             {"absInAction"_q, "tcInAction"_q, "autoShifter"_q, "speedLimiter"_q, "drsAvailable"_q,
              "drsEngaged"_q, "sessionFlagBlack"_q, ""_q, "sessionFlagBlue"_q, ""_q, ""_q, ""_q,
              "sessionFlagYellow"_q, ""_q, "sessionFlagBlackAndWhite"_q})
            flags[bit++] = name.isEmpty() ? QSet<QString>() : QSet<QString>{name};
        checkBits(&RecordBytes::vehicle, 184, 188, flags);
        NamesOfBits slips; // Of the first two bytes of a wheel's sixteen.
        for (int i = 0; i < 16; ++i) {
            slips[80 * 8 + i] = {"wheelSlip_FL"_q};
            slips[96 * 8 + i] = {"wheelSlip_FR"_q};
            slips[112 * 8 + i] = {"wheelSlip_RL"_q};
            slips[128 * 8 + i] = {"wheelSlip_RR"_q};
        }
        checkBits(&RecordBytes::extended, 0, 232, slips);
    }

    void whatFlashesIsOnInEveryOtherPublicationOverTheWrap()
    {
        Input input;
        input.records.putVehicle(53, 15'000U);
        input.records.limits = {0, 0, 0, 0, 255, 255, 255, 255, 50};
        input.records.extended.fill(1);
        PublisherRig rig;
        for (unsigned publication = 1; publication <= 1010; ++publication) {
            // Alternating, so that only the average stays above the threshold.
            input.records.putVehicle(49, publication % 2 == 0 ? 0U : 40'000U);
            rig.publish(input);
            QVERIFY(rig.is("frameCounter1000", publication * 2 % 1000));
            QCOMPARE(rig.raised().size(), publication % 2 == 0 ? 5 : 0);
        }
    }

    void aPauseWipesTheEngineSpeedAndHoldsNothingElse()
    {
        Input input = distinctInput();
        input.steeringSmoothing = 0.5F;
        PublisherRig rig;
        rig.publish(input);
        input.paused = input.showMarkers = true;
        input.records.putVehicle(24, 0.5F);
        input.records.putVehicle(104, 200.0F);
        input.records.putVehicle(40, std::int8_t{5});
        input.records.putVehicle(184, 4U); // Automatic shifter.
        rig.publish(input);
        QVERIFY(rig.is("paused", true) && rig.is("showMarkers", true));
        QVERIFY(rig.is("rpm", 0) && rig.is("rpmPercent", 0.0F) && rig.is("frameCounter1000", 4U));
        QVERIFY(rig.is("speed_kmh", 1) && rig.is("gear_str", "D"_q));
        QVERIFY(rig.is("deltaTime_s", 99.999F) && rig.is("deltaTime_str", "99.999"_q));
        QVERIFY(rig.is("angle", -37.0F * 0.75F * 2.5F)); // Smoothed in two steps.
        input.paused = false;
        rig.publish(input);
        QVERIFY(rig.is("rpm", 7311));
    }

    void namesCanBeReadWhileTheyAreRecorded()
    {
        for (int round = 0; round < 20; ++round) {
            PublisherRig rig;
            std::thread reader([&rig] {
                for (int i = 0; i < 100; ++i)
                    QVERIFY(rig.publisher.publishedFields().size() <= 129);
            });
            rig.publish({});
            reader.join();
        }
    }
};

QTEST_GUILESS_MAIN(VocabularyTest)
#include "VocabularyTest.moc"
