#include "render/DashboardFadeInOut.h"

#include <QtQml/qqml.h>

#include <algorithm>
#include <limits>

namespace {

// Two lengths always fit into 32 bits, three may not. Wrapping around would cut the fade short.
std::uint32_t saturatingSum(std::uint32_t a, std::uint32_t b)
{
    constexpr std::uint32_t Largest = std::numeric_limits<std::uint32_t>::max();
    return a > Largest - b ? Largest : a + b;
}

float part(std::uint64_t elapsed, std::uint32_t length)
{
    return static_cast<float>(elapsed) / static_cast<float>(length);
}

} // namespace

DashboardFadeInOut::DashboardFadeInOut(QObject *parent)
    : DashboardFadeInOut(platform::systemCounter(), parent)
{
}

DashboardFadeInOut::DashboardFadeInOut(const platform::Counter &counter, QObject *parent)
    : QObject(parent)
    , clock(counter)
{
    shownAt = now();
    lastUpdateAt = shownAt;
}

void DashboardFadeInOut::registerType()
{
    qmlRegisterType<DashboardFadeInOut>("DashboardFadeInOut", 1, 0, "DashboardFadeInOut");
}

void DashboardFadeInOut::show()
{
    shownAt = now();
    if (visible)
        return;
    visible = true;
    Q_EMIT visibleChanged();
}

void DashboardFadeInOut::update()
{
    // Taken while hidden too, so that the first step of a fade-in includes no idle time.
    const std::uint64_t time = now();
    const std::uint64_t step = time - lastUpdateAt;
    lastUpdateAt = time;
    if (!visible)
        return;

    const auto in = static_cast<std::uint32_t>(std::max(fadeIn, 1));
    const auto out = static_cast<std::uint32_t>(std::max(fadeOut, 1));
    const auto hold = static_cast<std::uint32_t>(std::max(duration, 0));
    const std::uint32_t holdEnd = saturatingSum(in, hold);
    const std::uint32_t end = saturatingSum(holdEnd, out);
    const std::uint64_t elapsed = time - shownAt;

    if (elapsed < in) {
        setOpacity(std::min(1.0F, opacity + part(step, in)));
    } else if (elapsed > end) {
        visible = false;
        setOpacity(0.0F);
        Q_EMIT visibleChanged();
    } else if (elapsed > holdEnd) {
        setOpacity(std::max(0.0F, opacity - part(step, out)));
    } else if (opacity != 1.0F) {
        setOpacity(1.0F);
    }
}

std::uint64_t DashboardFadeInOut::now() const
{
    return static_cast<std::uint64_t>(clock.elapsedMs());
}

void DashboardFadeInOut::setOpacity(float value)
{
    opacity = value;
    Q_EMIT opacityChanged();
}
