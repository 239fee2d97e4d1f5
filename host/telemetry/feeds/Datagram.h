#pragma once

#include <QtCore/QByteArray>

#include <chrono>

/// One UDP datagram as it came.
struct Datagram
{
    std::chrono::nanoseconds time{0}; ///< Since the listening, or the recording of it, began.
    quint16 port = 0;                 ///< The port that it was sent to.
    QByteArray payload;               ///< 0 to 65507 bytes, from anybody.
};
