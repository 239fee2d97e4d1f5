#include "Playback.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

using Nanoseconds = Playback::Nanoseconds;

/// How long to wait from one datagram to the next. A file's times may be anything; after a step
/// back the next datagram is due at once.
Nanoseconds stepBetween(Nanoseconds earlier, Nanoseconds later)
{
    if (later <= earlier)
        return Nanoseconds(0);
    const quint64 step =
        static_cast<quint64>(later.count()) - static_cast<quint64>(earlier.count());
    return Nanoseconds(
        static_cast<qint64>(std::min(step, static_cast<quint64>(Playback::LongestGap.count()))));
}

double inLimits(double speed)
{
    return std::isfinite(speed) ? std::clamp(speed, Playback::SlowestSpeed, Playback::FastestSpeed)
                                : 1.0;
}

} // namespace

Playback::Playback(std::unique_ptr<DatagramReader> reader, const Settings &settings)
    : reader(std::move(reader))
    , settings{inLimits(settings.speed), std::max(settings.startAt, Nanoseconds(0)), settings.loop}
{
}

std::optional<Datagram> Playback::take(Nanoseconds elapsed)
{
    const std::optional<Nanoseconds> due = nextDue();
    if (!due || *due > elapsed)
        return std::nullopt;
    return std::exchange(pending, std::nullopt);
}

std::optional<Playback::Nanoseconds> Playback::nextDue()
{
    const Datagram *datagram = upcoming();
    if (datagram == nullptr)
        return std::nullopt;
    return elapsedAt(datagram->time);
}

bool Playback::isSkipping()
{
    const Datagram *datagram = upcoming();
    return datagram != nullptr && datagram->time < settings.startAt;
}

Nanoseconds Playback::placeAt(Nanoseconds elapsed) const
{
    return settings.startAt + std::chrono::duration_cast<Nanoseconds>(elapsed * settings.speed);
}

Nanoseconds Playback::elapsedAt(Nanoseconds target) const
{
    const Nanoseconds ahead = std::max(target - settings.startAt, Nanoseconds(0));
    return std::chrono::duration_cast<Nanoseconds>(ahead / settings.speed);
}

bool Playback::atEnd()
{
    return upcoming() == nullptr;
}

bool Playback::startsBeyondEnd()
{
    return atEnd() && place < settings.startAt;
}

/// The datagram that is to be taken next; null at the end.
const Datagram *Playback::upcoming()
{
    if (pending || ended)
        return pending ? &*pending : nullptr;
    pending = reader->next();
    if (pending) {
        place += begun ? stepBetween(fileTime, pending->time) : Nanoseconds(0);
    } else {
        beginAgain();
        if (ended)
            return nullptr;
    }
    begun = true;
    fileTime = pending->time;
    pending->time = place;
    return &*pending;
}

void Playback::beginAgain()
{
    roundOver = true;
    remarkLines = reader->remarks();
    if (settings.loop && begun && place >= settings.startAt) {
        reader->rewind();
        pending = reader->next();
        place += LoopGap;
    }
    ended = !pending;
}
