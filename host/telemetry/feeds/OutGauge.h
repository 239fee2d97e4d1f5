#pragma once

#include "telemetry/contracts/TelemetrySample.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <optional>

/// Decodes OutGauge, which Live for Speed and BeamNG.drive send.
namespace OutGauge {

/// What a datagram says. A value that it lacks is 0, and the value's availability bit, if it has
/// one, is clear.
struct Reading
{
    TelemetrySample sample;     ///< Without limits and maximum rpm, which OutGauge doesn't send.
    QString car;                ///< As the game shows its code; empty if there is none.
    bool shiftLight = false;    ///< Whether it is on.
    bool hasShiftLight = false; ///< Whether the car has one.
};

/// Whether a datagram is OutGauge, judged by length, 92 bytes or 96 with an id, and content, since
/// OutSim can have 92 bytes too.
bool accepts(const QByteArray &datagram);

/// Nothing if the datagram isn't accepted. Any bytes are safe.
std::optional<Reading> decode(const QByteArray &datagram);

} // namespace OutGauge
