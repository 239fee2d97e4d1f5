#pragma once

#include "telemetry/contracts/TelemetrySample.h"

#include <QtCore/QByteArray>

#include <optional>

/// Decodes Data Out, which the games of the Forza series send. The length of a datagram tells which
/// of the four formats it has.
namespace DataOut {

/// What a datagram says. A value that it lacks is 0, and the value's availability bit, if it has
/// one, is clear. `limits` stays empty.
struct Reading
{
    TelemetrySample sample; ///< Paused in menus, where the games send zeros.
    qint32 car = 0;         ///< The car's number in the game; 0 if there is none.
};

/// Whether a datagram is Data Out, judged by length and content.
bool accepts(const QByteArray &datagram);

/// Nothing if the datagram isn't accepted. Any bytes are safe.
std::optional<Reading> decode(const QByteArray &datagram);

} // namespace DataOut
