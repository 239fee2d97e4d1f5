#pragma once

#include "plugin/TelemetryRecords.h"

#include <array>
#include <cstring>

/// The three records as a host writes them: values at byte offsets. Keeps tests independent of the
/// library's own field names, so that two fields which have changed places are noticed.
struct RecordBytes
{
    std::array<unsigned char, 189> vehicle{};
    std::array<unsigned char, 12> limits{};
    std::array<unsigned char, 232> extended{};

    template<typename T> void putVehicle(std::size_t offset, T value)
    {
        std::memcpy(vehicle.data() + offset, &value, sizeof value);
    }
};

/// The record that these bytes are.
template<typename Record> Record recordOf(const std::array<unsigned char, sizeof(Record)> &bytes)
{
    Record record;
    std::memcpy(&record, bytes.data(), bytes.size());
    return record;
}
