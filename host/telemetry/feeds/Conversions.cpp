#include "Conversions.h"

#include <algorithm>
#include <cmath>

namespace Conversions {

namespace {

constexpr float Gravity = 9.80665F;
constexpr float DegreesPerRadian = 57.29578F;
constexpr float ShareError = 0.02F;

template<typename Number> std::optional<Number> rounded(const std::optional<float> &value)
{
    return value ? std::optional(static_cast<Number>(std::lround(*value))) : std::nullopt;
}

} // namespace

std::optional<float> within(float value, float low, float high)
{
    return value >= low && value <= high ? std::optional(value) : std::nullopt;
}

std::optional<std::uint8_t> percent(float share)
{
    if (!within(share, -ShareError, 1 + ShareError))
        return std::nullopt;
    return static_cast<std::uint8_t>(std::lround(100 * std::clamp(share, 0.0F, 1.0F)));
}

std::optional<std::int32_t> signedPercent(float share)
{
    if (!within(share, -1 - ShareError, 1 + ShareError))
        return std::nullopt;
    return static_cast<std::int32_t>(std::lround(100 * std::clamp(share, -1.0F, 1.0F)));
}

std::optional<std::uint32_t> milliseconds(float seconds)
{
    constexpr float Longest = 360'000;
    if (!within(seconds, -Longest, Longest))
        return std::nullopt;
    return static_cast<std::uint32_t>(
        std::llround(1000 * static_cast<double>(std::max(seconds, 0.0F))));
}

std::optional<float> kmh(float metresPerSecond)
{
    constexpr float Fastest = 3000;
    const auto speed = within(metresPerSecond, -Fastest, Fastest);
    return speed ? std::optional(*speed * 3.6F) : std::nullopt;
}

std::optional<std::uint32_t> rpm(float perMinute)
{
    // An engine that starts or stalls may turn back a little.
    const auto speed = within(perMinute, -1000, 100'000);
    return rounded<std::uint32_t>(speed ? std::optional(std::max(*speed, 0.0F)) : std::nullopt);
}

std::optional<float> gravities(float metresPerSecondSquared)
{
    return within(metresPerSecondSquared / Gravity, -1000, 1000);
}

std::optional<float> degrees(float radians)
{
    return within(radians * DegreesPerRadian, -360, 360);
}

std::optional<float> heading(float radians)
{
    const auto turned = degrees(radians);
    if (!turned)
        return std::nullopt;
    const float positive = *turned < 0 ? *turned + 360 : *turned;
    return positive >= 360 ? 0 : positive;
}

std::optional<std::int32_t> count(float number)
{
    return rounded<std::int32_t>(within(number, 0, 100'000));
}

Corners corners(const ByteReader &bytes, int offset, WheelOrder order)
{
    Corners values{};
    const std::size_t first = order == WheelOrder::RearFirst ? 2 : 0;
    for (std::size_t i = 0; i < values.size(); ++i)
        values[(i + first) % values.size()] = bytes.real(offset + 4 * static_cast<int>(i));
    return values;
}

std::optional<Corners> within(const Corners &values, float low, float high)
{
    const bool all = std::all_of(values.begin(), values.end(),
                                 [&](float value) { return value >= low && value <= high; });
    return all ? std::optional(values) : std::nullopt;
}

void setPedals(VehicleTelemetry &vehicle, float throttle, float brake, float clutch)
{
    const auto throttlePercent = percent(throttle);
    const auto brakePercent = percent(brake);
    const auto clutchPercent = percent(clutch);
    if (!throttlePercent || !brakePercent || !clutchPercent)
        return;
    vehicle.availabilityMask |= Available::Pedals;
    vehicle.gasPedalPercent = *throttlePercent;
    vehicle.brakePedalPercent = *brakePercent;
    vehicle.clutchPedalPercent = *clutchPercent;
}

int plausibleReals(const ByteReader &bytes, int offset, int count)
{
    constexpr float Smallest = 1e-12F;
    constexpr float Largest = 1e9F;
    int plausible = 0;
    for (int i = 0; i < count; ++i) {
        const float size = std::abs(bytes.real(offset + 4 * i));
        plausible += (size >= Smallest && size <= Largest) || size == 0 ? 1 : 0;
    }
    return plausible;
}

} // namespace Conversions
