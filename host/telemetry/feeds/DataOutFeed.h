#pragma once

#include "Feed.h"
#include "FilledFields.h"

/// The feed Data Out. Remembers from datagram to datagram which fields the game fills, and what to
/// show while the driver is in a menu.
class DataOutFeed final : public Feed
{
public:
    QString name() const override { return QStringLiteral("Data Out"); }
    std::vector<quint16> usualPorts() const override { return {9999}; }
    bool accepts(const QByteArray &payload) const override;
    std::optional<FeedSample> decode(const QByteArray &payload, TimePoint time) override;
    void restart() override;

private:
    FeedSample last;
    qint32 car = 0;
    FilledFields filledFields{Available::Position | Available::CurrentTime | Available::LastTime |
                              Available::BestTime | Available::FuelLevel | Available::TyreTemp |
                              Available::TyreWear};
};
