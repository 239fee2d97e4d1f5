#include "TelemetryState.h"

#include "telemetry/demo/DemoLap.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <limits>
#include <type_traits>

namespace {

constexpr double PreviewMoment = 281.4; // s into the demo

using States = std::vector<TelemetryState>;
using Change = std::function<void(TelemetryState &)>;

void add(States &states, const char *name, const Change &change)
{
    TelemetryState state = states.front();
    state.name = QString::fromLatin1(name);
    change(state);
    states.push_back(state);
}

template<typename Record> void fillBytes(Record &record, int byte)
{
    static_assert(std::is_trivially_copyable_v<Record>);
    std::memset(&record, byte, sizeof(Record));
}

void fillBytes(TelemetryState &state, int byte)
{
    fillBytes(state.sample.vehicle, byte);
    fillBytes(state.sample.limits, byte);
    fillBytes(state.sample.extended, byte);
}

void setFloats(TelemetryState &state, float value)
{
    VehicleTelemetry &v = state.sample.vehicle;
    v.speedKmh = v.groundSpeedKmh = v.heaveG = v.swayG = v.surgeG = v.deltaTimeS = value;
    v.altitudeAboveGroundM = v.altitudeAboveSeaLevelM = v.turnCoordinatorBall = value;
    v.pitchDeg = v.rollDeg = v.headingDeg = state.sample.limits.steeringScale = value;
}

void addUnknownValues(States &states)
{
    struct Group
    {
        const char *name;
        std::uint64_t bit;
    };
    static constexpr Group Groups[] = {
        {"pedals unknown", Available::Pedals},
        {"fuel level unknown", Available::FuelLevel},
        {"position unknown", Available::Position},
        {"current time unknown", Available::CurrentTime},
        {"last time unknown", Available::LastTime},
        {"best time unknown", Available::BestTime},
        {"completed laps unknown", Available::CompletedLaps},
        {"number of laps unknown", Available::NumberOfLaps},
        {"ABS level unknown", Available::AbsLevel},
        {"traction control level unknown", Available::TractionControlLevel},
        {"brake bias unknown", Available::BrakeBias},
        {"tyre temperatures unknown", Available::TyreTemp},
        {"tyre wear unknown", Available::TyreWear},
        {"brake temperatures unknown", Available::BrakeTemp},
        {"tyre pressures unknown", Available::TyrePressure},
        {"ABS in action unknown", Available::AbsInAction},
        {"traction control in action unknown", Available::TcInAction},
        {"speed limiter unknown", Available::SpeedLimiter},
        {"engine load unknown", Available::EngineLoad},
    };
    add(states, "nothing known", [](TelemetryState &s) { s.sample.vehicle.availabilityMask = 0; });
    for (const Group &group : Groups) {
        add(states, group.name,
            [&group](TelemetryState &s) { s.sample.vehicle.availabilityMask &= ~group.bit; });
    }
}

void addEngines(States &states)
{
    add(states, "rpm above the limit", [](TelemetryState &s) {
        s.sample.vehicle.rpm = s.sample.vehicle.maxRpm + s.sample.vehicle.maxRpm / 5;
    });
    const auto engine = [&states](const char *name, std::uint32_t limit) {
        add(states, name, [limit](TelemetryState &s) { s.sample.vehicle.maxRpm = limit; });
    };
    engine("limit of 0 rpm", 0);
    engine("limit of 1 rpm", 1);
    engine("limit of 600 rpm", 600);
    engine("limit of 2600 rpm", 2600);
    engine("limit of 19000 rpm", 19'000);
    engine("limit of 4294967295 rpm", 0xFFFFFFFF);
    add(states, "no thresholds", [](TelemetryState &s) { s.sample.limits = {}; });
}

void addRaces(States &states)
{
    add(states, "lap 100 of 999", [](TelemetryState &s) {
        s.sample.vehicle.completedLaps = 100;
        s.sample.vehicle.numberOfLaps = 999;
    });
    add(states, "position 100", [](TelemetryState &s) { s.sample.vehicle.position = 100; });
    add(states, "no lap driven", [](TelemetryState &s) {
        VehicleTelemetry &v = s.sample.vehicle;
        v.completedLaps = v.numberOfLaps = v.position = 0;
        v.currentTimeMs = v.lastTimeMs = v.bestTimeMs = 0;
        v.deltaTimeS = 0;
    });
    add(states, "lap times of 100 minutes", [](TelemetryState &s) {
        VehicleTelemetry &v = s.sample.vehicle;
        v.currentTimeMs = v.lastTimeMs = v.bestTimeMs = 6'000'000;
    });
    add(states, "delta at its upper end",
        [](TelemetryState &s) { s.sample.vehicle.deltaTimeS = 1000; });
    add(states, "delta at its lower end",
        [](TelemetryState &s) { s.sample.vehicle.deltaTimeS = -1000; });
    add(states, "every flag and lamp",
        [](TelemetryState &s) { s.sample.vehicle.statusFlags = 0xFFFFFFFF; });
    const auto flag = [&states](const char *name, std::uint32_t bit) {
        add(states, name, [bit](TelemetryState &s) { s.sample.vehicle.statusFlags = bit; });
    };
    flag("yellow flag", Status::FlagYellow);
    flag("blue flag", Status::FlagBlue);
    flag("black flag", Status::FlagBlack);
    flag("black-and-white flag", Status::FlagBlackAndWhite);
    add(states, "slipping wheels", [](TelemetryState &s) {
        for (ExtendedTelemetry::Wheel &wheel : s.sample.extended.wheels)
            wheel.wheelFlagA = 1;
    });
}

void addAbsurdities(States &states)
{
    constexpr float Infinity = std::numeric_limits<float>::infinity();
    add(states, "gear -128", [](TelemetryState &s) { s.sample.vehicle.gear = -128; });
    add(states, "gear 127", [](TelemetryState &s) { s.sample.vehicle.gear = 127; });
    add(states, "all bytes 0", [](TelemetryState &s) { fillBytes(s, 0); });
    add(states, "all bytes 0xFF", [](TelemetryState &s) { fillBytes(s, 0xFF); });
    add(states, "NaN",
        [](TelemetryState &s) { setFloats(s, std::numeric_limits<float>::quiet_NaN()); });
    add(states, "infinity", [](TelemetryState &s) { setFloats(s, Infinity); });
    add(states, "negative infinity", [](TelemetryState &s) { setFloats(s, -Infinity); });
    add(states, "1e30 everywhere", [](TelemetryState &s) { setFloats(s, 1e30F); });
    add(states, "-1e30 everywhere", [](TelemetryState &s) { setFloats(s, -1e30F); });
}

} // namespace

TelemetryState previewState()
{
    return {QStringLiteral("everything known"),
            DemoLap(DemoLap::UsualSeed).sampleAt(PreviewMoment)};
}

std::vector<TelemetryState> telemetryStates()
{
    States states{previewState()};
    states.front().sample.vehicle.availabilityMask = ~std::uint64_t{0};
    add(states, "mph", [](TelemetryState &s) { s.useMph = true; });
    add(states, "paused", [](TelemetryState &s) { s.sample.paused = true; });
    add(states, "markers", [](TelemetryState &s) { s.showMarkers = true; });
    add(states, "reverse", [](TelemetryState &s) { s.sample.vehicle.gear = -1; });
    addUnknownValues(states);
    addEngines(states);
    addRaces(states);
    addAbsurdities(states);
    return states;
}
