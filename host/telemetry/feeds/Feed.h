#pragma once

#include "telemetry/contracts/TelemetrySample.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <chrono>
#include <optional>
#include <vector>

/// What a datagram says.
struct FeedSample
{
    TelemetrySample sample;
    QString vehicle; ///< Empty if the feed doesn't say which vehicle is driven.
};

/// A format in which simulators send telemetry over UDP, one update a datagram. One thread at a
/// time.
class Feed
{
public:
    using TimePoint = std::chrono::steady_clock::time_point;

    virtual ~Feed() = default;

    /// What people call the format. Not translated.
    virtual QString name() const = 0;

    /// The UDP ports that games with this feed send to unless the driver changes them.
    virtual std::vector<quint16> usualPorts() const = 0;

    /// Whether a datagram has this format, judged by length and content. Remembers nothing.
    virtual bool accepts(const QByteArray &payload) const = 0;

    /// Decodes a datagram that came at `time`; nothing if it has another format. Any bytes are
    /// safe. May learn about the vehicle from datagram to datagram.
    virtual std::optional<FeedSample> decode(const QByteArray &payload, TimePoint time) = 0;

    /// Forgets what was learnt from earlier datagrams, since another game begins to send.
    virtual void restart() {}
};
