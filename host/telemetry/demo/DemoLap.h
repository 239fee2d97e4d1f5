#pragma once

#include "Driver.h"
#include "LapTiming.h"
#include "RaceDirector.h"
#include "TimedTelemetry.h"

#include <cstdint>
#include <vector>

/// A race driven by a model of a car: a standing start, the laps, pit stops, the lap back to the
/// pits, and then the same race again. Depends on nothing but its arguments.
///
/// The model moves in steps of 1/120 s; a moment shows the last step at or before it. Moments are
/// seconds from the lights of the grid being switched on; negative ones and what is no finite
/// number count as 0, those after 1e12 s as that. The first visit of a moment costs the steps up to
/// it, at most one race; afterwards every moment is at most ten seconds of driving away from a
/// checkpoint.
///
/// Signs: right is positive for steering, lateral acceleration, heading and the ball; nose up and
/// right side down are positive. Accelerations are those of the motion, so all three are 0 at rest.
class DemoLap final : public TimedTelemetry
{
public:
    static constexpr std::uint32_t StepsPerSecond = 120;
    static constexpr std::uint32_t LongestRace = 900; ///< Laps, which are less than 24 hours.

    static constexpr std::uint32_t DefaultLaps = 36;

    /// `laps` of the race, brought into the range 1 to `LongestRace`. `carName` is what the car is
    /// called.
    explicit DemoLap(std::uint32_t seed, std::uint32_t laps = DefaultLaps,
                     QString carName = QStringLiteral("Auralis Silhouette"));

    TelemetrySample sampleAt(double seconds) override;
    QString vehicleNameAt(double seconds) override;

private:
    struct State
    {
        VehicleState car;
        LapTimes times;
        Field field;
        std::uint64_t steps = 0;
        double pace = 1;
        double standing = 0;   // s at the box
        double drsTime = 0;    // s since the wing may be opened
        double fuelTarget = 0; // kg
        std::uint32_t stintLaps = 0;
        std::int32_t zone = -1; // The DRS zone that the car is in.
        bool comingIn = false;
        bool served = false;
        bool drsAvailable = false;
        bool drsEngaged = false;
        bool over = false;
    };

    static double timeOf(const State &state);
    void moveTo(std::uint64_t step);
    void advance();
    void callIn(double place);
    void useWing(double place);
    void serve(Controls &controls);
    Controls control(const RoadPoint &road, double place);
    bool isServing(double place) const;
    bool isFinished() const { return state.times.completed >= laps; }
    bool isPenalized() const;
    bool inPitLane(double place) const;
    bool isYellow(double place) const;
    double brakeBias() const;
    int tcLevel() const;
    std::uint32_t statusFlags(double place) const;
    void fillMotion(VehicleTelemetry &vehicle, const RoadPoint &road) const;
    void fillRace(VehicleTelemetry &vehicle) const;
    void fillCorners(TelemetrySample &sample) const;

    QString carName;
    Circuit circuit;
    std::uint32_t seed;
    std::uint32_t laps;
    Driver driver;
    RaceDirector director;
    LapTiming timing;
    State state;
    std::vector<State> checkpoints;
    std::uint64_t raceSteps = 0; // 0 until the race has been driven to its end.
};
