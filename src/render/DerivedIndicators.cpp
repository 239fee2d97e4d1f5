#include "render/DerivedIndicators.h"

#include <cmath>
#include <limits>

namespace DerivedIndicators {

namespace {

/// Truncates and saturates; a plain cast of a value out of range is undefined.
int toInt(float value)
{
    constexpr float Beyond = 2147483648.0F;
    if (std::isnan(value))
        return 0;
    if (value >= Beyond)
        return std::numeric_limits<int>::max();
    if (value < -Beyond)
        return std::numeric_limits<int>::min();
    return static_cast<int>(value);
}

} // namespace

int rounded(float value)
{
    if (!(value < 0))
        return toInt(value + 0.5F);
    const int below = toInt(value - 1.0F);
    if (below == std::numeric_limits<int>::min())
        return below;
    return toInt(value - static_cast<float>(below) + 0.5F) + below;
}

int roundedAwayFromZero(float value)
{
    const float magnitude = std::fabs(value);
    float nearest = std::nearbyint(magnitude);
    if (magnitude - nearest == 0.5F)
        nearest += 1.0F;
    return toInt(std::copysign(nearest, value));
}

QString gearText(int gear, bool autoShifter)
{
    if (gear < 0)
        return QStringLiteral("R");
    if (gear == 0)
        return QStringLiteral("N");
    return autoShifter ? QStringLiteral("D") : QString::number(gear);
}

QString timeText(std::uint32_t milliseconds)
{
    if (milliseconds == 0)
        return QStringLiteral("--:--:---");
    const QLatin1Char zero('0');
    return QStringLiteral("%1:%2:%3")
        .arg(milliseconds / 60000, 2, 10, zero)
        .arg(milliseconds / 1000 % 60, 2, 10, zero)
        .arg(milliseconds % 1000, 3, 10, zero);
}

QString lapText(int laps)
{
    return laps == 0 ? QStringLiteral("-") : QString::number(laps);
}

float clampedDelta(float seconds)
{
    constexpr float Limit = 99.999F;
    if (seconds > Limit)
        return Limit;
    if (seconds < -Limit)
        return -Limit;
    return seconds;
}

QString deltaText(float clampedSeconds)
{
    return QString::number(static_cast<double>(clampedSeconds), 'f', 3);
}

float rpmShare(int rpm, std::uint32_t maxRpm)
{
    return maxRpm == 0 ? 0.0F : static_cast<float>(rpm) / static_cast<float>(maxRpm);
}

bool rpmWarning(int rpm, std::uint32_t maxRpm, std::uint8_t blinkingThresholdPercent)
{
    const float share = blinkingThresholdPercent != 0
                            ? static_cast<float>(blinkingThresholdPercent) * 0.01F
                            : 0.95F;
    const std::uint32_t base = maxRpm > 500 && maxRpm < 100'000 ? maxRpm : 10'000;
    return static_cast<float>(rpm) >= share * static_cast<float>(base);
}

} // namespace DerivedIndicators

void RpmAverage::add(std::uint32_t rpm)
{
    const float sample = rpm <= 100'000 ? static_cast<float>(rpm) : 0.0F;
    rpmSum = (rpmSum - rpmSamples[rpmIndex]) + sample;
    rpmSamples[rpmIndex] = sample;
    rpmIndex = (rpmIndex + 1) % rpmWindow;
    if (rpmCount < rpmWindow)
        ++rpmCount;
    rpmAverage = rpmSum / static_cast<float>(rpmCount);
}

void RpmAverage::reset()
{
    rpmAverage = 0;
    rpmSum = 0;
    rpmCount = 0;
    rpmSamples.fill(0);
}
