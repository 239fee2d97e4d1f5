#include "EgoFeed.h"

#include "DefaultDisplayLimits.h"

bool EgoFeed::accepts(const QByteArray &payload) const
{
    return EgoExtradata::accepts(payload);
}

std::optional<FeedSample> EgoFeed::decode(const QByteArray &payload, TimePoint time)
{
    const std::optional<EgoExtradata::Reading> reading = EgoExtradata::decode(payload);
    if (!reading)
        return std::nullopt;
    // Cars have no names, but engine and gearbox tell them apart well enough to remember a
    // dashboard.
    const Engine now{reading->sample.vehicle.maxRpm, reading->idleRpm, reading->gears};
    if (now != engine) {
        restart();
        engine = now;
        if (engine.maxRpm != 0 && engine.gears != 0) {
            vehicle = QStringLiteral("EGO car %1-%2-%3")
                          .arg(engine.maxRpm)
                          .arg(engine.idleRpm)
                          .arg(engine.gears);
        }
    }
    FeedSample sample{reading->sample, vehicle};
    sample.sample.limits = defaultDisplayLimits();
    filledFields.hideUnfilled(sample.sample.vehicle);
    if (engine.maxRpm == 0)
        learnMaximum(sample.sample.vehicle, reading->clock, time);
    return sample;
}

/// Datagrams without the maximum don't tell cars apart either. Drivers change cars only between two
/// stages, so that each stage learns anew.
void EgoFeed::learnMaximum(VehicleTelemetry &now, float clock, TimePoint time)
{
    if (clock < lastClock)
        learner.restart({});
    lastClock = clock;
    learner.see(now, false, time);
    now.maxRpm = learner.limits().maximum();
}

void EgoFeed::restart()
{
    engine = Engine();
    vehicle.clear();
    learner.restart({});
    lastClock = 0;
    filledFields.restart();
}
