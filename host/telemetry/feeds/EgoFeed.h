#pragma once

#include "EgoExtradata.h"
#include "Feed.h"
#include "FilledFields.h"
#include "RevLimits.h"

/// The feed EGO extradata. Remembers from datagram to datagram which fields the game fills, and
/// learns the highest engine speed where it isn't sent.
class EgoFeed final : public Feed
{
public:
    QString name() const override { return QStringLiteral("EGO"); }
    std::vector<quint16> usualPorts() const override { return {20777}; }
    bool accepts(const QByteArray &payload) const override;
    std::optional<FeedSample> decode(const QByteArray &payload, TimePoint time) override;
    void restart() override;

private:
    struct Engine
    {
        std::uint32_t maxRpm = 0;
        std::uint32_t idleRpm = 0;
        std::int32_t gears = 0;
        bool operator!=(const Engine &other) const
        {
            return maxRpm != other.maxRpm || idleRpm != other.idleRpm || gears != other.gears;
        }
    };

    void learnMaximum(VehicleTelemetry &now, float clock, TimePoint time);

    Engine engine;
    RevLimitLearner learner;
    float lastClock = 0;
    QString vehicle;
    FilledFields filledFields{~std::uint64_t{0}};
};
