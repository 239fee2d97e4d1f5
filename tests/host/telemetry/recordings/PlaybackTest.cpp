#include "telemetry/recordings/Playback.h"

#include <QtTest/QtTest>

#include <limits>
#include <utility>
#include <vector>

using namespace std::chrono_literals;
using std::chrono::nanoseconds;

namespace {

/// A drive in memory; each datagram's port is its number.
class Drive final : public DatagramReader
{
public:
    explicit Drive(std::vector<nanoseconds> times)
        : times(std::move(times))
    {
    }

    std::optional<Datagram> next() override
    {
        if (at == times.size())
            return std::nullopt;
        const std::size_t number = at++;
        return Datagram{times[number], static_cast<quint16>(number), {}};
    }

    void rewind() override { at = 0; }

    QStringList remarks() const override { return {QStringLiteral("dusty")}; }

private:
    const std::vector<nanoseconds> times;
    std::size_t at = 0;
};

Playback play(std::vector<nanoseconds> times, const Playback::Settings &settings = {})
{
    return {std::make_unique<Drive>(std::move(times)), settings};
}

/// The numbers of the datagrams that are due by then.
std::vector<int> due(Playback &playback, nanoseconds elapsed)
{
    std::vector<int> numbers;
    while (const std::optional<Datagram> datagram = playback.take(elapsed))
        numbers.push_back(datagram->port);
    return numbers;
}

using Numbers = std::vector<int>;

} // namespace

class PlaybackTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void datagramsComeAtTheirOwnPace()
    {
        Playback playback = play({100s, 100s + 16ms, 100s + 33ms});
        QVERIFY(playback.remarks().isEmpty());
        QCOMPARE(due(playback, 0s), Numbers{0});
        QCOMPARE(playback.nextDue().value_or(0s), nanoseconds(16ms));
        QCOMPARE(due(playback, 16ms - 1ns), Numbers{});
        QCOMPARE(due(playback, 16ms), Numbers{1});
        QVERIFY(!playback.atEnd());
        QCOMPARE(due(playback, 1s), Numbers{2});
        QVERIFY(playback.atEnd());
        QVERIFY(!playback.startsBeyondEnd());
        QCOMPARE(playback.length(), nanoseconds(33ms));
        QCOMPARE(playback.remarks(), QStringList{QStringLiteral("dusty")});
    }

    void speedScalesThePaceWithinItsLimits_data()
    {
        QTest::addColumn<double>("speed");
        QTest::addColumn<double>("seconds");
        QTest::newRow("half") << 0.5 << 2.0;
        QTest::newRow("fast") << 100.0 << 0.01;
        QTest::newRow("too fast") << 1e9 << 0.01;
        QTest::newRow("too slow") << -3.0 << 10.0;
        QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN() << 1.0;
    }

    void speedScalesThePaceWithinItsLimits()
    {
        QFETCH(double, speed);
        QFETCH(double, seconds);
        Playback playback = play({0s, 1s}, {speed, 0s, false});
        due(playback, 0s);
        QCOMPARE(std::chrono::duration<double>(playback.nextDue().value_or(0s)).count(), seconds);
    }

    void whatLiesBeforeTheStartIsDueAtOnce()
    {
        Playback playback = play({0s, 1s, 2s, 3s}, {2.0, 1500ms, false});
        QCOMPARE(due(playback, 0s), (Numbers{0, 1}));
        QCOMPARE(due(playback, 249ms), Numbers{});
        QCOMPARE(due(playback, 250ms), Numbers{2});
        QCOMPARE(due(playback, 750ms), Numbers{3});
        QVERIFY(!playback.startsBeyondEnd());

        Playback late = play({0s, 1s}, {1, 90s, true});
        QCOMPARE(due(late, 0s), (Numbers{0, 1}));
        QVERIFY(late.startsBeyondEnd());
        QCOMPARE(late.length(), nanoseconds(1s));
    }

    void aLoopGoesOnWithoutRunningBack()
    {
        Playback playback = play({5s, 6s}, {1, 0s, true});
        QCOMPARE(due(playback, 1s), (Numbers{0, 1}));
        QVERIFY(!playback.atEnd());
        QCOMPARE(due(playback, 1s + Playback::LoopGap), Numbers{0});
        QCOMPARE(due(playback, 2s + Playback::LoopGap), Numbers{1});

        Playback single = play({5s}, {1, 0s, true});
        QCOMPARE(due(single, 10 * Playback::LoopGap), Numbers(11, 0));
        Playback empty = play({}, {1, 0s, true});
        QVERIFY(empty.atEnd());
        QVERIFY(!empty.nextDue());
    }

    void gapsAndStepsBackInTheFileAreTamed()
    {
        constexpr nanoseconds Longest = nanoseconds::max();
        constexpr nanoseconds Least = nanoseconds::min();
        Playback playback = play({1h, 1h - 1s, 1h, Longest, Least, Longest});
        nanoseconds last{-1};
        std::vector<nanoseconds> places;
        while (const std::optional<Datagram> datagram = playback.take(1h)) {
            QVERIFY(datagram->time >= last);
            last = datagram->time;
            places.push_back(last);
        }
        const std::vector<nanoseconds> expected{0s,
                                                0s,
                                                1s,
                                                1s + Playback::LongestGap,
                                                1s + Playback::LongestGap,
                                                1s + 2 * Playback::LongestGap};
        QVERIFY(places == expected);
    }
};

QTEST_GUILESS_MAIN(PlaybackTest)
#include "PlaybackTest.moc"
