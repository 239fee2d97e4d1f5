#pragma once

#include "ByteReader.h"
#include "telemetry/contracts/TelemetrySample.h"

#include <array>
#include <cstdint>
#include <optional>

/// Converts what games send to the units of the records. A number that is not finite, or beyond
/// anything its quantity can be, gives an empty result.
namespace Conversions {

/// `value` if it lies within the limits.
std::optional<float> within(float value, float low, float high);

/// A share of 1 in percent. Rounding errors beyond 0 or 1 are forgiven.
std::optional<std::uint8_t> percent(float share);

/// -1 to 1, left to right, in percent.
std::optional<std::int32_t> signedPercent(float share);

/// Seconds, up to 100 hours. Negative ones, which some games send for no time, give 0.
std::optional<std::uint32_t> milliseconds(float seconds);

std::optional<float> kmh(float metresPerSecond);
std::optional<std::uint32_t> rpm(float perMinute);
std::optional<float> gravities(float metresPerSecondSquared);
std::optional<float> degrees(float radians);

/// Radians in degrees of a compass, from 0 to below 360.
std::optional<float> heading(float radians);

/// A count of laps, places or steps, from 0.
std::optional<std::int32_t> count(float number);

/// Four numbers in the order front left, front right, rear left, rear right.
using Corners = std::array<float, 4>;
enum class WheelOrder { FrontFirst, RearFirst };

/// The four numbers at `offset`, which come in `order`.
Corners corners(const ByteReader &bytes, int offset, WheelOrder order);

/// All four within the limits, or none.
std::optional<Corners> within(const Corners &values, float low, float high);

/// How many of `count` numbers from `offset` on could have been measured: 0, or of a usual size.
int plausibleReals(const ByteReader &bytes, int offset, int count);

/// Whether that many plausible numbers among `count` speak for a datagram of the format. Noise or
/// text, read as numbers, rarely has as many, and a game that sends some wrong ones has more.
inline bool areMostlyPlausible(int plausible, int count)
{
    return 4 * plausible >= 3 * count;
}

/// Sets the pedals, which are available together, from shares of 1; leaves them alone if one of
/// the numbers is none.
void setPedals(VehicleTelemetry &vehicle, float throttle, float brake, float clutch);

/// Sets the availability bit and gives the value; 0 and no bit if there is no value.
template<typename Value>
Value markAvailable(VehicleTelemetry &vehicle, std::uint64_t bit, const std::optional<Value> &value)
{
    if (value)
        vehicle.availabilityMask |= bit;
    return value.value_or(Value{});
}

} // namespace Conversions
