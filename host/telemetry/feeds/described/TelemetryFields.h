#pragma once

#include "telemetry/TelemetrySample.h"

#include <QtCore/QString>

#include <cstddef>
#include <cstdint>
#include <vector>

/// One number or flag of the telemetry that a feed can fill.
struct TelemetryField
{
    enum class Type { U8, I8, U32, I32, F32, Flag, Bool };

    /// As the records call it; of four corners each has its own, ending in _FL, _FR, _RL or _RR.
    QString name;
    QString meaning; ///< With the unit; for the guide.
    double least;    ///< Values below are raised to it.
    double most;     ///< Values above are lowered to it.

    /// The availability bit; 0 where the records have none for the field.
    std::uint64_t availability;

    Type type;
    std::size_t offset; ///< In bytes from the start of the sample.
    std::uint32_t mask; ///< Of a flag.
    bool isCircular;    ///< An angle: values beyond the limits are turned into them.

    /// Writes the value, within the limits and rounded where the field is a whole number, and says
    /// that the field is available. A flag is set by any value but 0. A value that is no number
    /// changes nothing.
    void set(TelemetrySample &sample, double value) const;
};

/// All of them, in the order of the records.
const std::vector<TelemetryField> &telemetryFields();

/// Null if none has the name.
const TelemetryField *findTelemetryField(const QString &name);
