#pragma once

#include <QtCore/QByteArray>
#include <QtNetwork/QHostAddress>

#include <chrono>

/// A UDP datagram as it came.
struct Datagram
{
    /// Where it came from and which port it went to.
    struct Sender
    {
        QHostAddress address;
        quint16 port = 0;
        quint16 toPort = 0;
    };

    std::chrono::nanoseconds time{0}; ///< Since any moment that is the same for the whole drive.
    Sender sender;
    QByteArray payload; ///< 0 to 65507 bytes, from anybody.
};
