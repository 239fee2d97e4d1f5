#include "FeedRig.h"
#include "telemetry/contracts/SilenceLimits.h"
#include "telemetry/recordings/PlaybackSource.h"

#include <QtTest/QtTest>

using namespace std::chrono_literals;
using std::chrono::nanoseconds;
using Times = std::vector<nanoseconds>;

namespace {

/// A drive in memory. Each datagram has its number, from 1 on, as the rpm, and only the first one
/// has fuel. From `foreign` on they are in no known format.
class Drive final : public DatagramReader
{
public:
    explicit Drive(Times times, int foreign = 1'000'000)
        : times(std::move(times))
        , foreign(foreign)
    {
    }
    std::optional<Datagram> next() override
    {
        if (at == int(times.size()))
            return std::nullopt;
        const nanoseconds time = times[std::size_t(at++)];
        if (at >= foreign)
            return Datagram{time, {}, "foreign"};
        return Datagram{time, {}, Senders::dataOut().reals(16, at).reals(276, at == 1 ? 0.5 : 0)};
    }
    void rewind() override { at = 0; }
    QStringList remarks() const override { return {QStringLiteral("dusty")}; }

private:
    const Times times;
    const int foreign;
    int at = 0;
};

DrivePlayer player(Times times, const Playback::Settings &settings = {})
{
    return {std::make_unique<Drive>(std::move(times)), twoFeeds(), settings};
}

/// What is told when the player is called at these moments.
Numbers told(DrivePlayer &&player, const Times &moments)
{
    FakeSink sink;
    for (const nanoseconds moment : moments)
        player.advance(moment, sink);
    return sink.told;
}

} // namespace

class PlaybackTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aDriveIsDecodedAsIfItWasLive()
    {
        DrivePlayer drive = player({100s, 100s + 16ms, 100s + 17ms, 102s});
        FakeSink sink;
        QCOMPARE(drive.advance(0s, sink).value_or(0s), nanoseconds(16ms));
        QCOMPARE(drive.advance(16ms - 1ns, sink).value_or(0s), nanoseconds(18ms - 1ns));
        // Of several the newest is shown.
        QCOMPARE(drive.advance(20ms, sink).value_or(0s), nanoseconds(517ms));
        QCOMPARE(drive.advance(517ms, sink).value_or(0s), nanoseconds(2s));
        QTest::ignoreMessage(QtWarningMsg, "The drive: dusty");
        QTest::ignoreMessage(QtWarningMsg, "The drive ended after 2.0 seconds.");
        drive.advance(2s, sink);
        QVERIFY(drive.advance(2500ms, sink));
        QVERIFY(!drive.advance(7s, sink));
        QCOMPARE(sink.told, (Numbers{1, 3, -1, 4, -1}));
    }

    void speedAndStartScaleThePace()
    {
        FakeSink sink;
        for (const auto &[speed, next] : {std::pair{2.0, 150ms}, {1e9, 3ms}, {std::nan(""), 300ms}})
            QCOMPARE(player({0s, 300ms}, {speed, 0s, false}).advance(0s, sink).value_or(0s),
                     nanoseconds(next));
        QCOMPARE(told(player({0s, 100ms, 200ms, 300ms}, {2.0, 150ms, false}),
                      {0s, 24ms, 25ms, 74ms, 75ms}),
                 (Numbers{2, 3, 4}));
    }

    void aLoopGoesOnWithoutRunningBack()
    {
        QCOMPARE(told(player({5s, 5100ms}, {1, 0s, true}), {0s, 100ms, 199ms, 200ms, 300ms}),
                 (Numbers{1, 2, 1, 2}));
        QVERIFY(!player({}, {1, 0s, true}).advance(0s, *std::make_unique<FakeSink>()));
    }

    void gapsAndStepsBackInTheFileAreTamed()
    {
        constexpr nanoseconds Gap = Playback::LongestGap;
        constexpr auto Most = nanoseconds::max();
        QCOMPARE(told(player({1h, 1h - 1s, 1h, Most, nanoseconds::min(), Most}),
                      {0s, 999ms, 1s, Gap, 1s + Gap, 2 * Gap, 1s + 2 * Gap}),
                 (Numbers{2, -1, 3, -1, 5, -1, 6}));
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
        QCOMPARE(Numbers(sink.told.begin(), sink.told.begin() + 5), (Numbers{1, 1, 1, 1, 2}));
        QCOMPARE(Numbers(sink.told.end() - 3, sink.told.end()), (Numbers{2, -1, 3}));
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

    void aStartBeyondTheEndAndForeignDatagramsAreTold()
    {
        const auto foreign = [](int from) {
            return DrivePlayer(std::make_unique<Drive>(Times{0s, 600ms}, from), twoFeeds(), {});
        };
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("lasts only 1.0 s")));
        told(player({0s, 1s}, {1, 90s, true}), {0s});
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("no telemetry")));
        told(foreign(1), {1s});
        QCOMPARE(told(foreign(2), {0s, 700ms}), (Numbers{1, -1})); // They don't end a silence.
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
