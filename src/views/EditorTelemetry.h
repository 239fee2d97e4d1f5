#pragma once

#include "plugin/TelemetryRecords.h"

/// Made-up telemetry for the editor: large values, some of which every step moves and some of which
/// the editor's controls set between steps. Nothing is ever reset.
class EditorTelemetry
{
public:
    /// Steps per second.
    static constexpr int StepsPerSecond = 25;

    EditorTelemetry();

    /// Moves on by 40 ms, then applies the check boxes to the status bits.
    void step();

    /// The motion profile that the panel shows; empty without the panel.
    QString motionProfileName() const;

    VehicleTelemetry vehicle{};
    DisplayLimits limits{};
    ExtendedTelemetry extended{};
    TuneInfo tune;

    bool systemPanel = false; ///< Whether each step reports a tune, which shows the panel.
    bool yellowFlag = false;
    bool blueFlag = false;
    bool blackFlag = false;
    bool blackAndWhiteFlag = false;
    bool drsAvailable = false;

private:
    void stepOnceASecond();
    void stepSpeed();
    void stepDelta();
    void stepTyreWear();
    void stepTune();
    void layFlags();

    int frameCounter = 0;
};
