#pragma once

#include <QtCore/QString>

#include <array>
#include <cstdint>

/// Arithmetic of the computed `dash_*` values, in single precision. Conversions to int saturate,
/// and NaN becomes 0.
namespace DerivedIndicators {

inline constexpr float MphPerKmh = 0.6213712F;
inline constexpr float KnotsPerKmh = 0.539957F;
inline constexpr float FeetPerMetre = 3.28084F;

/// Nearest whole number; halves go towards positive infinity.
int rounded(float value);

/// Nearest whole number; halves go away from zero.
int roundedAwayFromZero(float value);

/// "R", "N", "D" with the automatic shifter, or the gear's number.
QString gearText(int gear, bool autoShifter);

/// Minutes, seconds and milliseconds as 01:23:456, or "--:--:---" for 0.
QString timeText(std::uint32_t milliseconds);

/// The number of laps, or "-" for 0.
QString lapText(int laps);

/// Limits to plus and minus 99.999 s. NaN stays NaN.
float clampedDelta(float seconds);

/// A clamped delta with 3 decimals and no plus sign.
QString deltaText(float clampedSeconds);

/// Share of the engine speed limit: 1.0 at the limit, 0 without one.
float rpmShare(int rpm, std::uint32_t maxRpm);

/// Whether the engine speed has reached the blinking threshold. Defaults: 95 percent for a
/// threshold of 0, and 10000 1/min for a limit outside 501 to 99999.
bool rpmWarning(int rpm, std::uint32_t maxRpm, std::uint8_t blinkingThresholdPercent);

} // namespace DerivedIndicators

/// The average engine speed over the latest five publications.
class RpmAverage
{
public:
    /// Adds a sample in 1/min; an implausible one above 100000 counts as 0. After a start or a
    /// pause the average is over as many samples as there are.
    void add(std::uint32_t rpm);

    /// Forgets all samples, as a pause does.
    void reset();

    float average() const { return rpmAverage; }

private:
    static constexpr std::uint32_t rpmWindow = 5;

    std::array<float, rpmWindow> rpmSamples{};
    std::uint32_t rpmIndex = 0;
    std::uint32_t rpmCount = 0;
    float rpmSum = 0;
    float rpmAverage = 0;
};

/// Counts publications in steps of 2, and sets the rhythm of everything that flashes.
class PublicationCounter
{
public:
    /// Adds 2, modulo 1000.
    std::uint32_t advance() { return count = (count + 2) % 1000; }

    /// On in every second publication, also across the wrap: 1000 is a multiple of 4.
    bool blinkPhase() const { return (count & 3U) < 2; }

private:
    std::uint32_t count = 0;
};
