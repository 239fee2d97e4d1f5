#include "DataOutFeed.h"

#include "DataOut.h"
#include "DefaultDisplayLimits.h"

bool DataOutFeed::accepts(const QByteArray &payload) const
{
    return DataOut::accepts(payload);
}

std::optional<FeedSample> DataOutFeed::decode(const QByteArray &payload, TimePoint /*time*/)
{
    const std::optional<DataOut::Reading> reading = DataOut::decode(payload);
    if (!reading)
        return std::nullopt;
    if (reading->sample.paused) {
        // Menus send zeros: the dashboard keeps what it showed.
        last.sample.paused = true;
        last.sample.limits = defaultDisplayLimits();
        return last;
    }
    if (reading->car != car) {
        restart();
        car = reading->car;
        last.vehicle = car != 0 ? QStringLiteral("Data Out car %1").arg(car) : QString();
    }
    last.sample = reading->sample;
    last.sample.limits = defaultDisplayLimits();
    VehicleTelemetry &vehicle = last.sample.vehicle;
    filledFields.hideUnfilled(vehicle);
    // 0 laps are a first lap, unless the driver roams freely, without position and lap time.
    if ((vehicle.availabilityMask & (Available::Position | Available::CurrentTime)) == 0)
        vehicle.availabilityMask &= ~Available::CompletedLaps;
    return last;
}

void DataOutFeed::restart()
{
    last = FeedSample();
    car = 0;
    filledFields.restart();
}
