#pragma once

#include <QtCore/QString>
#include <QtCore/QtEndian>

#include <cstddef>
#include <cstdint>

// The host and the library exchange three binary records: byte-packed, little-endian, IEEE 754
// single precision, copied whole. Reserved bytes belong to the host; the library copies them
// unread. Arrays of four hold front left, front right, rear left, rear right.

static_assert(Q_BYTE_ORDER == Q_LITTLE_ENDIAN, "the records are read in place");

#pragma pack(push, 1)

/// The vehicle's state at one moment. A record of zeros is valid.
struct VehicleTelemetry
{
    std::uint64_t availabilityMask;    ///< Bits of `Available`: what the source delivers.
    std::uint8_t reserved8[16];        ///< Reserved.
    float speedKmh;                    ///< km/h.
    float groundSpeedKmh;              ///< Speed over ground, km/h.
    std::int32_t steeringPercent;      ///< -100 to 100, 0 is straight ahead.
    std::uint8_t reserved36[4];        ///< Reserved.
    std::int8_t gear;                  ///< Negative is reverse, 0 neutral.
    std::uint8_t reserved41[8];        ///< Reserved.
    std::uint32_t rpm;                 ///< 1/min.
    std::uint32_t maxRpm;              ///< 1/min.
    std::uint8_t gasPedalPercent;      ///< 0 to 100.
    std::uint8_t brakePedalPercent;    ///< 0 to 100.
    std::uint8_t clutchPedalPercent;   ///< 0 to 100, 100 is fully pressed.
    std::uint8_t fuelLevelPercent;     ///< 0 to 100.
    std::int32_t position;             ///< Position in the running order, from 1.
    std::uint32_t currentTimeMs;       ///< Current lap, ms; 0 is no time.
    std::uint32_t lastTimeMs;          ///< Last lap, ms; 0 is no time.
    std::uint32_t bestTimeMs;          ///< Best lap, ms; 0 is no time.
    std::uint8_t reserved77[4];        ///< Reserved.
    std::int32_t completedLaps;        ///< Completed laps.
    std::int32_t numberOfLaps;         ///< Laps of the race; 0 is unknown.
    std::uint8_t absLevel;             ///< Setting, in steps.
    std::uint8_t tractionControlLevel; ///< Setting, in steps.
    float heaveG;                      ///< Vertical acceleration, g.
    float swayG;                       ///< Lateral acceleration, g.
    float surgeG;                      ///< Longitudinal acceleration, g.
    std::int8_t brakeBiasPercent;      ///< Signed percent.
    float deltaTimeS;                  ///< Against the reference lap, s; negative is faster.
    std::int32_t tyreTempC[4];         ///< °C.
    std::int32_t brakeTempC[4];        ///< °C.
    std::uint8_t tyreWearPercent[4];   ///< Percent.
    std::uint32_t tyrePressureKpa[4];  ///< kPa.
    float altitudeAboveGroundM;        ///< m.
    float altitudeAboveSeaLevelM;      ///< m.
    float turnCoordinatorBall;         ///< Slip ball; 0 is centred.
    float pitchDeg;                    ///< Degrees, nose up is positive.
    float rollDeg;                     ///< Degrees, right side down is positive.
    float headingDeg;                  ///< Degrees.
    std::uint32_t statusFlags;         ///< Bits of `Status`; only the low 16 are read.
    std::uint8_t engineLoadPercent;    ///< 0 to 100.
};

/// Steering scale and display limits of the vehicle, set by the source.
struct DisplayLimits
{
    float steeringScale;                       ///< `dash_angle` per percent of smoothed steering.
    std::uint8_t lowFuelLevelThresholdPercent; ///< Percent of a full tank.
    std::uint8_t rpmGreenThresholdPercent;     ///< Percent of maximum rpm.
    std::uint8_t rpmYellowThresholdPercent;    ///< Percent of maximum rpm.
    std::uint8_t rpmRedThresholdPercent;       ///< Percent of maximum rpm.
    std::uint8_t rpmBlinkingThresholdPercent;  ///< Percent of maximum rpm; 0 stands for 95.
    std::uint8_t reserved9[3];                 ///< Reserved.
};

/// More data of the wheels. The library reads two flags of each; any byte but 0 is set.
struct ExtendedTelemetry
{
    struct Wheel
    {
        std::uint8_t wheelFlagA;   ///< The wheel slips if either flag is set.
        std::uint8_t wheelFlagB;   ///< The wheel slips if either flag is set.
        std::uint8_t reserved[14]; ///< Reserved.
    };

    std::uint8_t reserved0[80];   ///< Reserved.
    Wheel wheels[4];              ///< The four corners.
    std::uint8_t reserved144[88]; ///< Reserved.
};

#pragma pack(pop)

#define GAUGE_FIELD_AT(record, field, offset)                                                      \
    static_assert(offsetof(record, field) == (offset), #record "::" #field)

static_assert(sizeof(VehicleTelemetry) == 189);
GAUGE_FIELD_AT(VehicleTelemetry, availabilityMask, 0);
GAUGE_FIELD_AT(VehicleTelemetry, speedKmh, 24);
GAUGE_FIELD_AT(VehicleTelemetry, groundSpeedKmh, 28);
GAUGE_FIELD_AT(VehicleTelemetry, steeringPercent, 32);
GAUGE_FIELD_AT(VehicleTelemetry, gear, 40);
GAUGE_FIELD_AT(VehicleTelemetry, rpm, 49);
GAUGE_FIELD_AT(VehicleTelemetry, maxRpm, 53);
GAUGE_FIELD_AT(VehicleTelemetry, gasPedalPercent, 57);
GAUGE_FIELD_AT(VehicleTelemetry, brakePedalPercent, 58);
GAUGE_FIELD_AT(VehicleTelemetry, clutchPedalPercent, 59);
GAUGE_FIELD_AT(VehicleTelemetry, fuelLevelPercent, 60);
GAUGE_FIELD_AT(VehicleTelemetry, position, 61);
GAUGE_FIELD_AT(VehicleTelemetry, currentTimeMs, 65);
GAUGE_FIELD_AT(VehicleTelemetry, lastTimeMs, 69);
GAUGE_FIELD_AT(VehicleTelemetry, bestTimeMs, 73);
GAUGE_FIELD_AT(VehicleTelemetry, completedLaps, 81);
GAUGE_FIELD_AT(VehicleTelemetry, numberOfLaps, 85);
GAUGE_FIELD_AT(VehicleTelemetry, absLevel, 89);
GAUGE_FIELD_AT(VehicleTelemetry, tractionControlLevel, 90);
GAUGE_FIELD_AT(VehicleTelemetry, heaveG, 91);
GAUGE_FIELD_AT(VehicleTelemetry, swayG, 95);
GAUGE_FIELD_AT(VehicleTelemetry, surgeG, 99);
GAUGE_FIELD_AT(VehicleTelemetry, brakeBiasPercent, 103);
GAUGE_FIELD_AT(VehicleTelemetry, deltaTimeS, 104);
GAUGE_FIELD_AT(VehicleTelemetry, tyreTempC, 108);
GAUGE_FIELD_AT(VehicleTelemetry, brakeTempC, 124);
GAUGE_FIELD_AT(VehicleTelemetry, tyreWearPercent, 140);
GAUGE_FIELD_AT(VehicleTelemetry, tyrePressureKpa, 144);
GAUGE_FIELD_AT(VehicleTelemetry, altitudeAboveGroundM, 160);
GAUGE_FIELD_AT(VehicleTelemetry, altitudeAboveSeaLevelM, 164);
GAUGE_FIELD_AT(VehicleTelemetry, turnCoordinatorBall, 168);
GAUGE_FIELD_AT(VehicleTelemetry, pitchDeg, 172);
GAUGE_FIELD_AT(VehicleTelemetry, rollDeg, 176);
GAUGE_FIELD_AT(VehicleTelemetry, headingDeg, 180);
GAUGE_FIELD_AT(VehicleTelemetry, statusFlags, 184);
GAUGE_FIELD_AT(VehicleTelemetry, engineLoadPercent, 188);

static_assert(sizeof(DisplayLimits) == 12);
GAUGE_FIELD_AT(DisplayLimits, steeringScale, 0);
GAUGE_FIELD_AT(DisplayLimits, lowFuelLevelThresholdPercent, 4);
GAUGE_FIELD_AT(DisplayLimits, rpmGreenThresholdPercent, 5);
GAUGE_FIELD_AT(DisplayLimits, rpmYellowThresholdPercent, 6);
GAUGE_FIELD_AT(DisplayLimits, rpmRedThresholdPercent, 7);
GAUGE_FIELD_AT(DisplayLimits, rpmBlinkingThresholdPercent, 8);

static_assert(sizeof(ExtendedTelemetry) == 232);
GAUGE_FIELD_AT(ExtendedTelemetry::Wheel, wheelFlagA, 0);
GAUGE_FIELD_AT(ExtendedTelemetry::Wheel, wheelFlagB, 1);
GAUGE_FIELD_AT(ExtendedTelemetry, wheels, 80);
GAUGE_FIELD_AT(ExtendedTelemetry, reserved144, 80 + 4 * 16);

#undef GAUGE_FIELD_AT

/// Bits of `VehicleTelemetry::availabilityMask`; the library ignores all others.
namespace Available {
inline constexpr std::uint64_t Pedals = 1ULL << 12;
inline constexpr std::uint64_t FuelLevel = 1ULL << 13;
inline constexpr std::uint64_t Position = 1ULL << 14;
inline constexpr std::uint64_t CurrentTime = 1ULL << 15;
inline constexpr std::uint64_t LastTime = 1ULL << 16;
inline constexpr std::uint64_t BestTime = 1ULL << 17;
inline constexpr std::uint64_t CompletedLaps = 1ULL << 19;
inline constexpr std::uint64_t NumberOfLaps = 1ULL << 20;
inline constexpr std::uint64_t AbsLevel = 1ULL << 21;
inline constexpr std::uint64_t TractionControlLevel = 1ULL << 22;
inline constexpr std::uint64_t BrakeBias = 1ULL << 25;
inline constexpr std::uint64_t TyreTemp = 1ULL << 27;
inline constexpr std::uint64_t TyreWear = 1ULL << 28;
inline constexpr std::uint64_t BrakeTemp = 1ULL << 29;
inline constexpr std::uint64_t TyrePressure = 1ULL << 30;
inline constexpr std::uint64_t AbsInAction = 1ULL << 34;
inline constexpr std::uint64_t TcInAction = 1ULL << 35;
inline constexpr std::uint64_t SpeedLimiter = 1ULL << 36;
inline constexpr std::uint64_t EngineLoad = 1ULL << 39;
} // namespace Available

/// Bits of `VehicleTelemetry::statusFlags`; all others are reserved.
namespace Status {
inline constexpr std::uint32_t AbsInAction = 1U << 0;
inline constexpr std::uint32_t TcInAction = 1U << 1;
inline constexpr std::uint32_t AutoShifter = 1U << 2; ///< A forward gear shows as "D".
inline constexpr std::uint32_t SpeedLimiter = 1U << 3;
inline constexpr std::uint32_t DrsAvailable = 1U << 4;
inline constexpr std::uint32_t DrsEngaged = 1U << 5;
inline constexpr std::uint32_t FlagBlack = 1U << 6;
inline constexpr std::uint32_t FlagBlue = 1U << 8;
inline constexpr std::uint32_t FlagYellow = 1U << 12;
inline constexpr std::uint32_t FlagBlackAndWhite = 1U << 14;
} // namespace Status

/// The value part of a tuning report.
struct TuneValue
{
    QString valueName; ///< Shown after the tune's name.
    float valueMin = 0;
    float valueMax = 0;
    float valueCurrent = 0;
    bool valueIsInteger = false; ///< Shown without decimals.
    bool reservedFlagA = true;   ///< Reserved.
    bool reservedFlagB = false;  ///< Reserved.
};

/// The last tuning value that the host reported.
struct TuneInfo
{
    QString group; ///< Category of the tuned value.
    QString name;
    QString valueName;
    float valueMin = 0;
    float valueMax = 0;
    float valueCurrent = 0;
    bool valueIsInteger = false;
    bool reservedFlagA = true;
    bool reservedFlagB = false;
    std::uint32_t changeCounter = 0; ///< Counts reports; wraps.
};
