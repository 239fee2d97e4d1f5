#pragma once

#include "Feed.h"
#include "FilledFields.h"
#include "RevLimits.h"

#include <memory>

class RevLimitStore;

/// The feed OutGauge. Learns the limits of each car's engine, which games don't send.
class OutGaugeFeed final : public Feed
{
public:
    /// `store` remembers the limits of cars.
    explicit OutGaugeFeed(std::unique_ptr<RevLimitStore> store);
    ~OutGaugeFeed() override;

    QString name() const override { return QStringLiteral("OutGauge"); }
    std::vector<quint16> usualPorts() const override { return {4444, 30000}; }
    bool accepts(const QByteArray &payload) const override;
    std::optional<FeedSample> decode(const QByteArray &payload, TimePoint time) override;
    void restart() override;

private:
    void changeCar(const QString &code);
    DisplayLimits limits() const;

    std::unique_ptr<RevLimitStore> store;
    RevLimitLearner learner;
    RevLimits kept;
    FilledFields filledFields{Available::FuelLevel}; ///< Which a server may hide.
    QString car;
    bool hasCar = false;
    QString vehicle;
    QString storedAs; ///< Empty if the code doesn't tell cars apart.
};
