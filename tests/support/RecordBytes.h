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
    template<typename T> void putLimits(std::size_t offset, T value)
    {
        std::memcpy(limits.data() + offset, &value, sizeof value);
    }

    VehicleTelemetry vehicleRecord() const { return read<VehicleTelemetry>(vehicle); }
    DisplayLimits limitsRecord() const { return read<DisplayLimits>(limits); }
    ExtendedTelemetry extendedRecord() const { return read<ExtendedTelemetry>(extended); }

private:
    template<typename Record, std::size_t size>
    static Record read(const std::array<unsigned char, size> &bytes)
    {
        static_assert(sizeof(Record) == size);
        Record record;
        std::memcpy(&record, bytes.data(), size);
        return record;
    }
};
