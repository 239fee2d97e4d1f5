#include "FilledFields.h"

namespace {

/// The availability bits of the fields that aren't 0.
std::uint64_t nonZeroFields(const VehicleTelemetry &vehicle)
{
    std::uint64_t fields = 0;
    const auto add = [&fields](std::uint64_t bit, bool isNonZero) {
        fields |= isNonZero ? bit : 0;
    };
    // The record is packed, so nothing may refer to its arrays.
    const auto addCorners = [&add](std::uint64_t bit, const auto &corner) {
        add(bit, corner(0) != 0 || corner(1) != 0 || corner(2) != 0 || corner(3) != 0);
    };
    add(Available::Pedals, vehicle.gasPedalPercent != 0 || vehicle.brakePedalPercent != 0 ||
                               vehicle.clutchPedalPercent != 0);
    add(Available::FuelLevel, vehicle.fuelLevelPercent != 0);
    add(Available::Position, vehicle.position != 0);
    add(Available::CurrentTime, vehicle.currentTimeMs != 0);
    add(Available::LastTime, vehicle.lastTimeMs != 0);
    add(Available::BestTime, vehicle.bestTimeMs != 0);
    add(Available::CompletedLaps, vehicle.completedLaps != 0);
    add(Available::NumberOfLaps, vehicle.numberOfLaps != 0);
    add(Available::AbsLevel, vehicle.absLevel != 0);
    add(Available::TractionControlLevel, vehicle.tractionControlLevel != 0);
    add(Available::BrakeBias, vehicle.brakeBiasPercent != 0);
    add(Available::EngineLoad, vehicle.engineLoadPercent != 0);
    addCorners(Available::TyreTemp, [&](int i) { return vehicle.tyreTempC[i]; });
    addCorners(Available::TyreWear, [&](int i) { return vehicle.tyreWearPercent[i]; });
    addCorners(Available::BrakeTemp, [&](int i) { return vehicle.brakeTempC[i]; });
    addCorners(Available::TyrePressure, [&](int i) { return vehicle.tyrePressureKpa[i]; });
    return fields;
}

} // namespace

void FilledFields::hideUnfilled(VehicleTelemetry &vehicle)
{
    filled |= nonZeroFields(vehicle);
    vehicle.availabilityMask &= filled | ~candidates;
}
