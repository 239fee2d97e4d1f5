#pragma once

#include "telemetry/contracts/TelemetrySample.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <chrono>
#include <optional>
#include <vector>

/// What one datagram tells.
struct FeedSample
{
    TelemetrySample sample;
    QString vehicle; ///< Empty if the feed doesn't tell which vehicle is driven.
};

/// One format in which simulators send telemetry over UDP: a datagram is an update. Used by one
/// thread at a time.
class Feed
{
public:
    using TimePoint = std::chrono::steady_clock::time_point;

    virtual ~Feed() = default;

    /// What people call the format. Not translated.
    virtual QString name() const = 0;

    /// The ports that games with this feed are set to unless the driver changes them.
    virtual std::vector<quint16> usualPorts() const = 0;

    /// Whether a datagram is of this format, going by length and content. Remembers nothing.
    virtual bool accepts(const QByteArray &payload) const = 0;

    /// Reads a datagram that came at `time`; nothing if it isn't of this format. Any bytes are
    /// safe. May learn about the vehicle from one datagram to the next.
    virtual std::optional<FeedSample> decode(const QByteArray &payload, TimePoint time) = 0;

    /// Another game begins to send: what was learnt from the datagrams of the last one no longer
    /// counts.
    virtual void restart() {}
};
