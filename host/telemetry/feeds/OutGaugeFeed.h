#pragma once

#include "Feed.h"
#include "FilledFields.h"
#include "RevLimits.h"

#include <memory>

class RevLimitStore;

/// OutGauge, with what takes more than one datagram to know: the limits of the car's engine.
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
    FilledFields filledFields{
        Available::FuelLevel}; ///< Servers can keep the fuel of cars to themselves.
    QString car;
    bool hasCar = false;
    QString vehicle;
    QString storedAs; ///< Empty if the code tells nothing of the car.
};
