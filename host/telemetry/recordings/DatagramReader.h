#pragma once

#include "telemetry/feeds/Datagram.h"

#include <QtCore/QStringList>

#include <optional>

/// Reads the datagrams of a drive from a file, one after the other. Used by one thread at a time.
class DatagramReader
{
public:
    DatagramReader() = default;
    virtual ~DatagramReader() = default;
    DatagramReader(const DatagramReader &) = delete;
    DatagramReader &operator=(const DatagramReader &) = delete;

    /// The next datagram, or nothing at the end. Times are the file's own: they may jump and run
    /// back.
    virtual std::optional<Datagram> next() = 0;

    /// Starts over from the first datagram.
    virtual void rewind() = 0;

    /// What the user should know about the file, such as how much is damaged: one line each.
    /// Complete only at the end.
    virtual QStringList remarks() const = 0;
};
