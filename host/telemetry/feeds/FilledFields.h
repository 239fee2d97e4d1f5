#pragma once

#include "TelemetryRecords.h"

#include <cstdint>

/// Finds out which fields a game really fills: one that has never been anything but 0 since the
/// start counts as unavailable.
class FilledFields
{
public:
    /// `judged` are the bits of availability that this is asked of; others are left alone.
    explicit FilledFields(std::uint64_t judged)
        : judged(judged)
    {
    }

    /// Notes what the record holds, and takes the bits of fields that haven't moved yet from its
    /// availability mask.
    void judge(VehicleTelemetry &vehicle);

    void restart() { moved = 0; }

private:
    const std::uint64_t judged;
    std::uint64_t moved = 0;
};
