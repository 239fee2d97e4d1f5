#pragma once

#include "TelemetryRecords.h"

#include <cstdint>

/// Notices which fields a game fills. A field that has been 0 since the start counts as one that
/// the game never fills, and so as unavailable.
class FilledFields
{
public:
    /// `candidates` are the availability bits of the fields that a game may leave empty.
    explicit FilledFields(std::uint64_t candidates)
        : candidates(candidates)
    {
    }

    /// Notes which fields hold something, and clears the availability bits of those that never did.
    void hideUnfilled(VehicleTelemetry &vehicle);

    void restart() { filled = 0; }

private:
    const std::uint64_t candidates;
    std::uint64_t filled = 0;
};
