#pragma once

#include "FeedDescription.h"
#include "telemetry/feeds/Feed.h"
#include "telemetry/feeds/RevLimits.h"

/// A feed that the user describes, for simulators that the host doesn't know.
class DescribedFeed final : public Feed
{
public:
    explicit DescribedFeed(FeedDescription given);

    QString name() const override { return description.name; }
    std::vector<quint16> usualPorts() const override { return {description.port}; }
    bool accepts(const QByteArray &payload) const override;
    std::optional<FeedSample> decode(const QByteArray &payload, TimePoint time) override;
    void restart() override;

private:
    void learnMaximum(FeedSample &sample, TimePoint time);
    std::optional<double> read(const QByteArray &payload,
                               const FeedDescription::Number &number) const;
    QString vehicleIn(const QByteArray &payload) const;

    const FeedDescription description;
    const bool learns; ///< The description leaves the highest engine speed out.
    RevLimitLearner learner;
    QString learntOf; ///< The vehicle that the learner knows.
};
