#pragma once

#include "plugin/TelemetryRecords.h"

/// The telemetry that the editor makes up: large fixed values, some of them swept a step at a time,
/// the others set by hand between the steps. Nothing is ever reset.
class EditorTelemetry
{
public:
    /// Steps in a second.
    static constexpr int StepsPerSecond = 25;

    EditorTelemetry();

    /// Moves everything on by 40 ms and lays the check boxes over the status bits.
    void step();

    /// What the panel shows as the motion profile; empty without the panel.
    QString motionProfileName() const;

    VehicleTelemetry vehicle{};
    DisplayLimits limits{};
    ExtendedTelemetry extended{};
    TuneInfo tune;

    bool systemPanel = false; ///< Whether tuning reports, which call up the panel, go on.
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
