#pragma once

#include "telemetry/contracts/TelemetrySample.h"

#include <QtCore/QByteArray>

#include <cstdint>
#include <optional>

/// Decodes the datagrams of games on the EGO engine: rally games with extradata 3 or 1, and the
/// Formula games of 2015 and 2016, which send nearly the same. Length and engine speed tell them
/// apart.
namespace EgoExtradata {

/// What a datagram says. A value that it lacks is 0, and the value's availability bit, if it has
/// one, is clear. A set bit means only that there is a number: many games never fill it. `limits`
/// stays empty.
struct Reading
{
    TelemetrySample sample;
    float clock = 0;           ///< Seconds since the stage or race began; any number.
    std::uint32_t idleRpm = 0; ///< 0 if it isn't sent.
    std::int32_t gears = 0;    ///< Forward gears; 0 if they aren't sent.
};

/// Whether a datagram is extradata, judged by length and content.
bool accepts(const QByteArray &datagram);

/// Nothing if the datagram isn't accepted. Any bytes are safe.
std::optional<Reading> decode(const QByteArray &datagram);

} // namespace EgoExtradata
