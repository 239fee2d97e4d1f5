#pragma once

#include "FeedSwitch.h"

#include <QtCore/QByteArray>

#include <chrono>

/// One UDP datagram as it came.
struct Datagram
{
    std::chrono::nanoseconds time{0}; ///< Since any moment that is the same for the whole drive.
    FeedSwitch::Sender sender;
    QByteArray payload; ///< 0 to 65507 bytes, from anybody.
};
