#include "FeedRig.h"
#include "telemetry/contracts/SilenceLimits.h"
#include "telemetry/feeds/ByteReader.h"
#include "telemetry/recordings/PlaybackSource.h"

#include <QtTest/QtTest>

#include <algorithm>

using namespace std::chrono_literals;
using std::chrono::nanoseconds;
using Numbers = std::vector<int>;
using Times = std::vector<nanoseconds>;

namespace {

/// A drive in memory. Each datagram has its number, from 1 on, as the rpm, and only the first one
/// has fuel. From `foreign` on they are in no known format.
class Drive final : public DatagramReader
{
public:
    explicit Drive(Times times, std::size_t foreign = 1'000'000)
        : times(std::move(times))
        , foreign(foreign)
    {
    }
    std::optional<Datagram> next() override
    {
        if (at == times.size())
            return std::nullopt;
        const nanoseconds time = times[at++];
        if (at >= foreign)
            return Datagram{time, {}, "foreign"};
        return Datagram{time, {}, Senders::dataOut().reals(16, at).reals(276, at == 1 ? 0.5 : 0)};
    }
    void rewind() override { at = 0; }
    QStringList remarks() const override { return {QStringLiteral("dusty")}; }

private:
    const Times times;
    const std::size_t foreign;
    std::size_t at = 0;
};

Playback play(Times times, const Playback::Settings &settings = {})
{
    return {std::make_unique<Drive>(std::move(times)), settings};
}

DrivePlayer player(Times times, const Playback::Settings &settings = {})
{
    return {std::make_unique<Drive>(std::move(times)), twoFeeds(), settings};
}

/// The numbers of the datagrams that are due by then.
Numbers due(Playback &playback, nanoseconds elapsed)
{
    Numbers numbers;
    while (const std::optional<Datagram> datagram = playback.take(elapsed))
        numbers.push_back(int(ByteReader(datagram->payload).real(16)));
    return numbers;
}

} // namespace

class PlaybackTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void datagramsComeAtTheirOwnPace()
    {
        Playback playback = play({100s, 100s + 16ms, 100s + 33ms});
        QCOMPARE(due(playback, 0s), Numbers{1});
        QCOMPARE(playback.nextDue().value_or(0s), nanoseconds(16ms));
        QCOMPARE(due(playback, 16ms - 1ns), Numbers{});
        QCOMPARE(due(playback, 16ms), Numbers{2});
        QVERIFY(!playback.atEnd());
        QCOMPARE(due(playback, 1s), Numbers{3});
        QVERIFY(playback.atEnd());
        for (const auto &[speed, length] :
             {std::pair{0.5, 2000ms}, {1e9, 10ms}, {-3.0, 10'000ms}, {std::nan(""), 1000ms}}) {
            Playback scaled = play({0s, 1s}, {speed, 0s, false});
            due(scaled, 0s);
            QCOMPARE(scaled.nextDue().value_or(0s), nanoseconds(length));
        }
    }

    void whatLiesBeforeTheStartIsDueAtOnce()
    {
        Playback playback = play({0s, 1s, 2s, 3s}, {2.0, 1500ms, false});
        QCOMPARE(due(playback, 0s), (Numbers{1, 2}));
        QCOMPARE(due(playback, 249ms), Numbers{});
        QCOMPARE(due(playback, 250ms), Numbers{3});
        QCOMPARE(due(playback, 750ms), Numbers{4});
    }

    void aLoopGoesOnWithoutRunningBack()
    {
        Playback playback = play({5s, 6s}, {1, 0s, true});
        QCOMPARE(due(playback, 1s), (Numbers{1, 2}));
        QVERIFY(!playback.atEnd());
        QCOMPARE(due(playback, 1s + Playback::LoopGap), Numbers{1});
        QCOMPARE(due(playback, 2s + Playback::LoopGap), Numbers{2});
        QVERIFY(play({}, {1, 0s, true}).atEnd());
    }

    void gapsAndStepsBackInTheFileAreTamed()
    {
        Playback playback =
            play({1h, 1h - 1s, 1h, nanoseconds::max(), nanoseconds::min(), nanoseconds::max()});
        Times places;
        while (const std::optional<Datagram> datagram = playback.take(1h))
            places.push_back(datagram->time);
        constexpr nanoseconds Gap = Playback::LongestGap;
        QVERIFY((places == Times{0s, 0s, 1s, 1s + Gap, 1s + Gap, 1s + 2 * Gap}));
    }

    void aDriveIsDecodedAsIfItWasLive()
    {
        DrivePlayer drive = player({0s, 16ms, 17ms, 2s});
        FakeSink sink;
        QCOMPARE(drive.advance(0s, sink).value_or(0s), nanoseconds(16ms));
        // Of several the newest is shown.
        QCOMPARE(drive.advance(20ms, sink).value_or(0s), nanoseconds(517ms));
        QCOMPARE(drive.advance(517ms, sink).value_or(0s), nanoseconds(2s));
        QTest::ignoreMessage(QtWarningMsg, "The drive: dusty");
        QTest::ignoreMessage(QtWarningMsg, "The drive is over after 2.0 seconds.");
        drive.advance(2s, sink);
        QVERIFY(drive.advance(2500ms, sink));
        QVERIFY(!drive.advance(7s, sink));
        QCOMPARE(sink.told, (Numbers{1, 3, -1, 4, -1}));
    }

    void aSlowDriveIsNoPause()
    {
        DrivePlayer drive = player({0s, 100ms, 1s}, {0.1, 0s, false});
        FakeSink sink;
        nanoseconds last = 0s;
        for (std::optional<nanoseconds> now = 0s; now && *now <= 10s;) {
            // Until the drive itself is silent for half a second nobody waits that long.
            QVERIFY(sink.silences > 0 || *now - last < SilenceLimits::Paused);
            last = *now;
            now = drive.advance(*now, sink);
        }
        const auto silence = std::find(sink.told.begin(), sink.told.end(), -1);
        QCOMPARE(Numbers(silence, sink.told.end()), (Numbers{-1, 3}));
        QCOMPARE(Numbers(sink.told.begin(), sink.told.begin() + 5), (Numbers{1, 1, 1, 1, 2}));
    }

    void silenceIsNoticedAmongForeignDatagrams()
    {
        DrivePlayer drive(std::make_unique<Drive>(Times{0s, 600ms}, 2), twoFeeds(), {});
        FakeSink sink;
        drive.advance(0s, sink);
        drive.advance(700ms, sink);
        QCOMPARE(sink.told, (Numbers{1, -1}));
    }

    void theWayToTheStartIsDecodedButNotShown()
    {
        Times times;
        for (int i = 0; i < 25'000; ++i)
            times.emplace_back(std::chrono::milliseconds(i));
        DrivePlayer drive = player(times, {100, 24'900ms, false});
        FakeSink sink;
        int turns = 0;
        while (drive.advance(0s, sink) == nanoseconds(0))
            ++turns;
        QVERIFY(turns > 1); // So that the program can end meanwhile.
        QCOMPARE(sink.told, Numbers{24'901});
        // Without the first datagram fuel would count as a field that the game never fills.
        QVERIFY((sink.last.vehicle.availabilityMask & Available::FuelLevel) != 0);
    }

    void aStartBeyondTheEndAndForeignDrivesAreTold()
    {
        FakeSink sink;
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("lasts only 1.0 s")));
        player({0s, 1s}, {1, 90s, true}).advance(0s, sink);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("no telemetry")));
        DrivePlayer(std::make_unique<Drive>(Times{0s}, 1), twoFeeds(), {}).advance(1s, sink);
    }

    void aDrivePlaysOnAThreadOfItsOwn()
    {
        FakeSink sink;
        PlaybackSource source(std::make_unique<Drive>(Times{0s, 10ms}), twoFeeds(), {10, 0s, true});
        source.start(sink);
        QTRY_VERIFY(sink.updates > 20);
    }
};

QTEST_GUILESS_MAIN(PlaybackTest)
#include "PlaybackTest.moc"
