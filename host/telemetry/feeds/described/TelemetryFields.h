#pragma once

#include "telemetry/contracts/TelemetrySample.h"

#include <QtCore/QString>

#include <cstdint>
#include <vector>

/// A number or flag of the telemetry that a described feed can fill. docs/described-feeds.md tells
/// what each one means.
struct TelemetryField
{
    struct Range
    {
        double least;
        double most;
    };

    /// As the records call it; each wheel has its own, ending in _FL, _FR, _RL or _RR.
    const char *name;

    Range range;
    std::uint64_t availability; ///< Its bit; 0 where the records have none.
    void (*write)(TelemetrySample &sample, double value);

    /// Writes the value, taken into the range and rounded where the field is a whole number, and
    /// sets the availability bit. A flag is set by any value but 0. A value that isn't finite
    /// changes nothing.
    void set(TelemetrySample &sample, double value) const;
};

/// All of them, in the order of the records. Any thread.
const std::vector<TelemetryField> &telemetryFields();

/// Null if none has the name. Any thread.
const TelemetryField *findTelemetryField(const QString &name);
