#include "DrivePlayer.h"

#include "telemetry/contracts/SilenceLimits.h"
#include "telemetry/contracts/TelemetrySource.h"

#include <QtCore/QDebug>

#include <algorithm>
#include <utility>

namespace {

using Nanoseconds = DrivePlayer::Nanoseconds;

/// Datagrams to decode before the caller may stop; the way to `startAt` can be a long one.
constexpr int LongestTurn = 10'000;

/// At many times the drive's pace updates come faster than anything could show them.
constexpr std::chrono::milliseconds ShortestWait(2);

/// Well within what counts as a pause to whoever goes by the clock on the wall.
constexpr std::chrono::milliseconds LongestWait = SilenceLimits::Paused / 2;

GameSelector::TimePoint onTheDrivesClock(Nanoseconds place)
{
    return GameSelector::TimePoint(
        std::chrono::duration_cast<GameSelector::TimePoint::duration>(place));
}

QString shown(Nanoseconds length)
{
    return QString::number(std::chrono::duration<double>(length).count(), 'f', 1);
}

} // namespace

DrivePlayer::DrivePlayer(std::unique_ptr<DatagramReader> reader,
                         std::vector<std::unique_ptr<Feed>> feeds,
                         const Playback::Settings &settings)
    : playback(std::move(reader), settings)
    , games(std::move(feeds))
    , isSlow(settings.speed < 1)
{
}

std::optional<Nanoseconds> DrivePlayer::advance(Nanoseconds elapsed, TelemetrySink &sink)
{
    const bool all = takeDue(elapsed);
    if (!all && playback.isSkipping())
        return elapsed;
    if (all)
        hear(onTheDrivesClock(playback.placeAt(elapsed)));
    const std::optional<Nanoseconds> repetition = nextRepetition();
    if (isNews || (repetition && *repetition <= elapsed)) {
        sink.update(newest->sample, newest->vehicle);
        isNews = false;
        lastUpdate = elapsed;
    }
    if (silence == Silence::Noticed) {
        sink.fallSilent();
        silence = Silence::Told;
    }
    tell();
    return all ? nextMoment(elapsed) : elapsed;
}

/// Decodes what is due; false if there is more of it.
bool DrivePlayer::takeDue(Nanoseconds elapsed)
{
    for (int i = 0; i < LongestTurn; ++i) {
        const std::optional<Datagram> datagram = playback.take(elapsed);
        if (!datagram)
            return true;
        const GameSelector::TimePoint time = onTheDrivesClock(datagram->time);
        hear(time);
        if (!games.offer(datagram->payload, datagram->sender, time))
            continue;
        // Each one is decoded: a feed may learn from it.
        if (std::optional<FeedSample> sample = games.takeNewest()) {
            newest = std::move(sample);
            isNews = true;
            silence = Silence::None;
            anyUnderstood = true;
        }
    }
    return false;
}

/// Notices silence up to a moment, as a listener does between two datagrams.
void DrivePlayer::hear(GameSelector::TimePoint time)
{
    GameSelector::Silence heard = GameSelector::Silence::None;
    while ((heard = games.checkSilence(time)) != GameSelector::Silence::None) {
        if (heard == GameSelector::Silence::Paused && silence == Silence::None)
            silence = Silence::Noticed;
    }
}

/// When the last update is to be repeated; nothing if it isn't.
std::optional<Nanoseconds> DrivePlayer::nextRepetition() const
{
    if (!isSlow || !newest || silence != Silence::None)
        return std::nullopt;
    return lastUpdate + LongestWait;
}

std::optional<Nanoseconds> DrivePlayer::nextMoment(Nanoseconds elapsed)
{
    std::optional<Nanoseconds> next = playback.nextDue();
    if (const std::optional<GameSelector::TimePoint> check = games.nextSilenceCheck()) {
        const Nanoseconds moment = playback.elapsedAt(check->time_since_epoch());
        next = next ? std::min(*next, moment) : moment;
    }
    if (const std::optional<Nanoseconds> repetition = nextRepetition())
        next = next ? std::min(*next, *repetition) : repetition;
    if (!next)
        return std::nullopt;
    return std::max(*next, elapsed + ShortestWait);
}

/// Tells the user once what there is to tell of the file.
void DrivePlayer::tell()
{
    if (!toldRemarks && playback.isRoundOver()) {
        toldRemarks = true;
        const QStringList remarks = playback.remarks();
        for (const QString &remark : remarks)
            qWarning().noquote() << QStringLiteral("The drive: ") + remark;
        if (!anyUnderstood)
            qWarning("The drive holds no telemetry in a format that is known here.");
    }
    if (toldEnd || !playback.atEnd())
        return;
    toldEnd = true;
    if (playback.startsBeyondEnd()) {
        qWarning().noquote() << QStringLiteral("The drive lasts only %1 seconds, so there is "
                                               "nothing to play from --start-at on.")
                                    .arg(shown(playback.length()));
    } else {
        qWarning().noquote()
            << QStringLiteral("The drive is over after %1 seconds.").arg(shown(playback.length()));
    }
}
