#include "DrivePlayer.h"

#include "telemetry/contracts/SilenceLimits.h"
#include "telemetry/contracts/TelemetrySource.h"

#include <QtCore/QDebug>

#include <algorithm>
#include <utility>

namespace {

using Nanoseconds = DrivePlayer::Nanoseconds;

/// Datagrams that one call decodes, so that the caller can stop on a long way to `startAt`.
constexpr int LongestTurn = 10'000;

/// A fast drive has more updates than anything could show.
constexpr std::chrono::milliseconds ShortestWait(2);

/// Well below what counts as a pause in real time.
constexpr std::chrono::milliseconds LongestWait = SilenceLimits::Paused / 2;

GameSelector::TimePoint onDriveClock(Nanoseconds place)
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
        noticeSilence(onDriveClock(playback.placeAt(elapsed)));
    const std::optional<Nanoseconds> repetition = nextRepetition();
    if (isNews || (repetition && *repetition <= elapsed)) {
        sink.update(newest->sample, newest->vehicle);
        isNews = false;
        lastUpdate = elapsed;
    }
    if (silence == Silence::Noticed) {
        sink.fallSilent();
        silence = Silence::Reported;
    }
    report();
    return all ? nextMoment(elapsed) : elapsed;
}

/// Decodes what is due; false if more of it is left.
bool DrivePlayer::takeDue(Nanoseconds elapsed)
{
    for (int i = 0; i < LongestTurn; ++i) {
        const std::optional<Datagram> datagram = playback.take(elapsed);
        if (!datagram)
            return true;
        const GameSelector::TimePoint time = onDriveClock(datagram->time);
        noticeSilence(time);
        if (!games.offer(datagram->payload, datagram->sender, time))
            continue;
        // Every one is decoded, since feeds learn from datagrams.
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
void DrivePlayer::noticeSilence(GameSelector::TimePoint time)
{
    GameSelector::Silence heard = GameSelector::Silence::None;
    while ((heard = games.checkSilence(time)) != GameSelector::Silence::None) {
        if (heard == GameSelector::Silence::Paused && silence == Silence::None)
            silence = Silence::Noticed;
    }
}

/// When to repeat the last update; nothing if not at all.
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

/// Reports what is remarkable about the file, and its end, once each.
void DrivePlayer::report()
{
    if (!reportedRemarks && playback.isRoundOver()) {
        reportedRemarks = true;
        const QStringList remarks = playback.remarks();
        for (const QString &remark : remarks)
            qWarning().noquote() << QStringLiteral("The drive: ") + remark;
        if (!anyUnderstood)
            qWarning("The drive holds no telemetry in a known format.");
    }
    if (reportedEnd || !playback.atEnd())
        return;
    reportedEnd = true;
    if (playback.startsBeyondEnd()) {
        qWarning().noquote() << QStringLiteral("The drive lasts only %1 seconds, so there is "
                                               "nothing to play after --start-at.")
                                    .arg(shown(playback.length()));
    } else {
        qWarning().noquote()
            << QStringLiteral("The drive ended after %1 seconds.").arg(shown(playback.length()));
    }
}
