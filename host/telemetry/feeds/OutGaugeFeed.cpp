#include "OutGaugeFeed.h"

#include "DefaultDisplayLimits.h"
#include "OutGauge.h"
#include "RevLimitStore.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

/// The code that BeamNG.drive sends for every car.
const QLatin1String AnyBeamCar("beam");

} // namespace

OutGaugeFeed::OutGaugeFeed(std::unique_ptr<RevLimitStore> store)
    : store(std::move(store))
{
}

OutGaugeFeed::~OutGaugeFeed() = default;

bool OutGaugeFeed::accepts(const QByteArray &payload) const
{
    return OutGauge::accepts(payload);
}

std::optional<FeedSample> OutGaugeFeed::decode(const QByteArray &payload, TimePoint time)
{
    const std::optional<OutGauge::Reading> reading = OutGauge::decode(payload);
    if (!reading)
        return std::nullopt;
    if (!hasCar || reading->car != car)
        changeCar(reading->car);
    FeedSample sample{reading->sample, vehicle};
    VehicleTelemetry &now = sample.sample.vehicle;
    filledFields.hideUnfilled(now);
    learner.see(now, reading->shiftLight, time);
    if (!(learner.limits() == kept)) {
        kept = learner.limits();
        store->keep(storedAs, kept);
    }
    now.maxRpm = kept.maximum();
    sample.sample.limits = limits();
    return sample;
}

void OutGaugeFeed::restart()
{
    hasCar = false;
}

void OutGaugeFeed::changeCar(const QString &code)
{
    car = code;
    hasCar = true;
    filledFields.restart();
    vehicle = code.isEmpty() ? QString() : QStringLiteral("OutGauge %1").arg(code);
    storedAs = code == AnyBeamCar ? QString() : code;
    kept = storedAs.isEmpty() ? RevLimits() : store->limitsOf(storedAs);
    learner.restart(kept);
}

DisplayLimits OutGaugeFeed::limits() const
{
    DisplayLimits limits = defaultDisplayLimits();
    const std::uint32_t maximum = kept.maximum();
    if (maximum == 0)
        return limits;
    // Without a shift light only speeds above the highest one seen are too high.
    const auto blinking = kept.shiftLight != 0
                              ? static_cast<int>(std::lround(100.0 * kept.shiftLight / maximum))
                              : 100;
    const auto below = [blinking](int percent) {
        return static_cast<std::uint8_t>(std::max(blinking - percent, 1));
    };
    limits.rpmBlinkingThresholdPercent = below(0);
    limits.rpmRedThresholdPercent = below(3);
    limits.rpmYellowThresholdPercent = below(9);
    limits.rpmGreenThresholdPercent = below(17);
    return limits;
}
