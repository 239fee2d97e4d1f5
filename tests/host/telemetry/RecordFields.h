#pragma once

#include "telemetry/contracts/TelemetrySample.h"

#include <vector>

/// One thing that records hold, by the name that drivers know it by.
struct RecordField
{
    const char *name;
    std::uint64_t bit; ///< Of the availability mask; 0 if none guards the field.
    std::vector<double> values;
};

/// Everything that a sample holds.
inline std::vector<RecordField> fieldsOf(const TelemetrySample &sample)
{
    const VehicleTelemetry &v = sample.vehicle;
    const auto &wheels = sample.extended.wheels;
    const auto number = [](auto value) { return static_cast<double>(value); };
    const auto flag = [&](std::uint32_t bit) { return (v.statusFlags & bit) != 0 ? 1.0 : 0.0; };
    const auto corners = [&](const auto &at) {
        return std::vector<double>{number(at(0)), number(at(1)), number(at(2)), number(at(3))};
    };
    return {
        {"Speed", 0, {number(v.speedKmh), number(v.groundSpeedKmh)}},
        {"Engine speed", 0, {number(v.rpm)}},
        {"Maximum engine speed", 0, {number(v.maxRpm)}},
        {"Gear", 0, {number(v.gear)}},
        {"Steering", 0, {number(v.steeringPercent)}},
        {"Pedals",
         Available::Pedals,
         {number(v.gasPedalPercent), number(v.brakePedalPercent), number(v.clutchPedalPercent)}},
        {"Fuel", Available::FuelLevel, {number(v.fuelLevelPercent)}},
        {"Position", Available::Position, {number(v.position)}},
        {"Current lap time", Available::CurrentTime, {number(v.currentTimeMs)}},
        {"Last lap time", Available::LastTime, {number(v.lastTimeMs)}},
        {"Best lap time", Available::BestTime, {number(v.bestTimeMs)}},
        {"Laps driven", Available::CompletedLaps, {number(v.completedLaps)}},
        {"Laps of the race", Available::NumberOfLaps, {number(v.numberOfLaps)}},
        {"ABS setting", Available::AbsLevel, {number(v.absLevel)}},
        {"Traction control setting",
         Available::TractionControlLevel,
         {number(v.tractionControlLevel)}},
        {"Brake balance", Available::BrakeBias, {number(v.brakeBiasPercent)}},
        {"Tyre temperatures", Available::TyreTemp, corners([&](int i) { return v.tyreTempC[i]; })},
        {"Tyre wear", Available::TyreWear, corners([&](int i) { return v.tyreWearPercent[i]; })},
        {"Brake temperatures", Available::BrakeTemp,
         corners([&](int i) { return v.brakeTempC[i]; })},
        {"Tyre pressures", Available::TyrePressure,
         corners([&](int i) { return v.tyrePressureKpa[i]; })},
        {"ABS light", Available::AbsInAction, {flag(Status::AbsInAction)}},
        {"Traction control light", Available::TcInAction, {flag(Status::TcInAction)}},
        {"Pit limiter light", Available::SpeedLimiter, {flag(Status::SpeedLimiter)}},
        {"Engine load", Available::EngineLoad, {number(v.engineLoadPercent)}},
        {"G-forces", 0, {number(v.swayG), number(v.surgeG)}},
        {"Vertical g-force", 0, {number(v.heaveG)}},
        {"Heading, pitch, roll", 0, {number(v.headingDeg), number(v.pitchDeg), number(v.rollDeg)}},
        {"DRS", 0, {flag(Status::DrsEngaged)}},
        {"DRS allowed", 0, {flag(Status::DrsAvailable)}},
        {"Flags", 0, {flag(Status::FlagYellow), flag(Status::FlagBlue)}},
        {"Lap delta", 0, {number(v.deltaTimeS)}},
        {"Wheel slip",
         0,
         {number(wheels[0].wheelFlagA), number(wheels[1].wheelFlagA), number(wheels[2].wheelFlagA),
          number(wheels[3].wheelFlagA), number(wheels[0].wheelFlagB), number(wheels[1].wheelFlagB),
          number(wheels[2].wheelFlagB), number(wheels[3].wheelFlagB)}},
    };
}
