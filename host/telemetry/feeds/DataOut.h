#pragma once

#include "telemetry/contracts/TelemetrySample.h"

#include <QtCore/QByteArray>

#include <optional>

/// The datagrams of Data Out, which the games of the Forza series send. Their length tells which
/// of the four formats they are.
namespace DataOut {

/// What one datagram says. Fields without a bit in the availability mask are 0 where the datagram
/// holds no such number. The record's limits are left empty.
struct Reading
{
    TelemetrySample sample; ///< Paused in menus, where the games send zeros.
    qint32 car = 0;         ///< The car's number in the game; 0 is none.
};

/// By length and content.
bool accepts(const QByteArray &datagram);

/// Nothing if the datagram isn't accepted.
std::optional<Reading> decode(const QByteArray &datagram);

} // namespace DataOut
