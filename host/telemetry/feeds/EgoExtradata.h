#pragma once

#include "telemetry/contracts/TelemetrySample.h"

#include <QtCore/QByteArray>

#include <cstdint>
#include <optional>

/// The datagrams of games on the EGO engine: of rally games with extradata 3 or 1, and of the
/// Formula games of 2015 and 2016, which are nearly the same. Length and engine tell which.
namespace EgoExtradata {

/// What one datagram says. Fields without a bit in the availability mask are 0 where the datagram
/// holds no such number; a bit says only that there is a number, which many games never fill. The
/// record's limits are left empty.
struct Reading
{
    TelemetrySample sample;
    float clock = 0;           ///< Seconds since the stage or race began; any number.
    std::uint32_t idleRpm = 0; ///< 0 if it isn't sent.
    std::int32_t gears = 0;    ///< Forward gears; 0 if they aren't sent.
};

/// By length and content.
bool accepts(const QByteArray &datagram);

/// Nothing if the datagram isn't accepted.
std::optional<Reading> decode(const QByteArray &datagram);

} // namespace EgoExtradata
