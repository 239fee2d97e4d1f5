#include "views/EditorTelemetry.h"

#include <cmath>

EditorTelemetry::EditorTelemetry()
{
    constexpr std::uint32_t LongestTimeMs = 5'999'999; // Prints as 99:59:999.

    vehicle.availabilityMask = ~0ULL;
    vehicle.speedKmh = 999.0F;
    vehicle.rpm = 700;
    vehicle.maxRpm = 13'000;
    vehicle.fuelLevelPercent = 100;
    vehicle.position = 99;
    vehicle.currentTimeMs = LongestTimeMs;
    vehicle.lastTimeMs = LongestTimeMs;
    vehicle.bestTimeMs = LongestTimeMs;
    vehicle.completedLaps = 99;
    vehicle.numberOfLaps = 99;
    vehicle.absLevel = 99;
    vehicle.tractionControlLevel = 99;
    vehicle.brakeBiasPercent = -99;
    for (int corner = 0; corner < 4; ++corner) {
        vehicle.tyreTempC[corner] = 999;
        vehicle.brakeTempC[corner] = 9999;
        vehicle.tyreWearPercent[corner] = 100;
        vehicle.tyrePressureKpa[corner] = 999;
    }
    vehicle.statusFlags = ~0U;
    vehicle.engineLoadPercent = 100;

    limits.steeringScale = 1.0F;
    limits.lowFuelLevelThresholdPercent = 20;
    limits.rpmGreenThresholdPercent = 30;
    limits.rpmYellowThresholdPercent = 60;
    limits.rpmRedThresholdPercent = 90;
    limits.rpmBlinkingThresholdPercent = 95;
}

void EditorTelemetry::step()
{
    if (++frameCounter == StepsPerSecond) {
        frameCounter = 0;
        stepOnceASecond();
    }
    stepSpeed();
    stepDelta();
    stepTyreWear();
    if (systemPanel)
        stepTune();
    layFlags();
    extended.wheels[0].wheelFlagB = 1;
}

QString EditorTelemetry::motionProfileName() const
{
    return systemPanel ? QStringLiteral("Demo Profile") : QString();
}

void EditorTelemetry::stepOnceASecond()
{
    vehicle.statusFlags = ~vehicle.statusFlags;

    const int fuel = vehicle.fuelLevelPercent + 10;
    vehicle.fuelLevelPercent = static_cast<std::uint8_t>(fuel > 100 ? 0 : fuel);

    const int gear = vehicle.gear + 1;
    vehicle.gear = static_cast<std::int8_t>(gear > 9 ? -1 : gear);
}

void EditorTelemetry::stepSpeed()
{
    const float speed = vehicle.speedKmh;
    const float sum = speed + (speed > 150.0F ? 11.0F : 1.0F);
    vehicle.speedKmh = sum > 999.0F ? 0.0F : sum;
}

void EditorTelemetry::stepDelta()
{
    float delta = vehicle.deltaTimeS;
    if (delta > 99.0F)
        delta = -99.0F;
    vehicle.deltaTimeS = delta + (std::abs(delta) < 10.0F ? 0.05F : 1.0F);
}

void EditorTelemetry::stepTyreWear()
{
    for (std::uint8_t &wear : vehicle.tyreWearPercent)
        wear = static_cast<std::uint8_t>((wear + 1) % 101);
}

void EditorTelemetry::stepTune()
{
    tune.group = QStringLiteral("Motion");
    tune.name = QStringLiteral("Longitudinal G-Force (Intermittent)");
    tune.valueName = QStringLiteral("Gain");
    tune.valueMin = 0.0F;
    tune.valueMax = 2.5F;
    const float sum = tune.valueCurrent + 0.1F;
    tune.valueCurrent = sum > 2.1F ? 0.5F : sum;
    ++tune.changeCounter;
}

/// Runs after the inversion, so that these bits follow the boxes while all others blink.
void EditorTelemetry::layFlags()
{
    std::uint32_t status = vehicle.statusFlags;
    const auto lay = [&status](std::uint32_t bit, bool on) {
        status = on ? status | bit : status & ~bit;
    };
    lay(Status::DrsAvailable, drsAvailable);
    lay(Status::FlagBlack, blackFlag);
    lay(Status::FlagBlue, blueFlag);
    lay(Status::FlagYellow, yellowFlag);
    lay(Status::FlagBlackAndWhite, blackAndWhiteFlag);
    vehicle.statusFlags = status;
}
