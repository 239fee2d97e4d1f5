#pragma once

#include "telemetry/contracts/TelemetrySample.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <optional>

/// The datagrams of OutGauge, which Live for Speed and BeamNG.drive send.
namespace OutGauge {

/// What one datagram says. Fields without a bit in the availability mask are 0 where the datagram
/// holds no such number.
struct Reading
{
    TelemetrySample sample;     ///< Without limits and maximum rpm, which OutGauge doesn't send.
    QString car;                ///< As the game shows its code; empty if there is none.
    bool shiftLight = false;    ///< Whether it is on.
    bool hasShiftLight = false; ///< Whether the car has one.
};

/// By length and content: 92 bytes, or 96 with an id. OutSim can have 92 as well.
bool accepts(const QByteArray &datagram);

/// Nothing if the datagram isn't accepted.
std::optional<Reading> decode(const QByteArray &datagram);

} // namespace OutGauge
