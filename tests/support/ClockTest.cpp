#include "support/FakeCounter.h"
#include "support/MonotonicClock.h"
#include "support/Stopwatch.h"
#include "support/platform/Platform.h"

#include <QtTest/QtTest>

#include <limits>

namespace {

constexpr std::int64_t Largest = std::numeric_limits<std::int64_t>::max();

} // namespace

class ClockTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void stopwatchCountsWholeMillisecondsSinceItsConstruction()
    {
        FakeCounter counter;
        counter.countsPerSecond = 3'000'000;
        counter.count = 1'000'000'000;
        const Stopwatch stopwatch(counter);
        QCOMPARE(stopwatch.elapsedMs(), 0);
        counter.count += 2'999;
        QCOMPARE(stopwatch.elapsedMs(), 0);
        counter.count += 1;
        QCOMPARE(stopwatch.elapsedMs(), 1);
        counter.count += 3'000'000;
        QCOMPARE(stopwatch.elapsedMs(), 1001);
    }

    void stopwatchStandsAtZeroWithoutAFrequencyOrAReading()
    {
        FakeCounter counter;
        counter.countsPerSecond = 0;
        const Stopwatch noFrequency(counter);
        counter.countsPerSecond = 1000;
        counter.hasFrequency = false;
        const Stopwatch refusedFrequency(counter);
        counter.hasFrequency = true;
        const Stopwatch unreadable(counter);
        counter.count = 5000;
        QCOMPARE(noFrequency.elapsedMs(), 0);
        QCOMPARE(refusedFrequency.elapsedMs(), 0);
        counter.readable = false;
        QCOMPARE(unreadable.elapsedMs(), 0);
    }

    void countsNearTheEndOfTheirRangeDoNotOverflow()
    {
        FakeCounter counter;
        counter.countsPerSecond = 1'000'000'000;
        const Stopwatch stopwatch(counter);
        counter.count = Largest;
        QCOMPARE(stopwatch.elapsedMs(), Largest / 1'000'000);

        const MonotonicClock clock(counter);
        QCOMPARE(clock.milliseconds(), static_cast<std::uint64_t>(Largest / 1'000'000));
    }

    void clockFallsBackToTheTickCount()
    {
        FakeCounter counter;
        counter.hasFrequency = false;
        QCOMPARE(MonotonicClock(counter).milliseconds(), 77U);
        counter.hasFrequency = true;
        counter.readable = false;
        QCOMPARE(MonotonicClock(counter).milliseconds(), 77U);
        counter.readable = true;
        counter.countsPerSecond = 0;
        QCOMPARE(MonotonicClock(counter).milliseconds(), 0U);
    }

    void theSystemsTwoClocksAgree()
    {
        const platform::Counter &counter = platform::systemCounter();
        std::int64_t perSecond = 0;
        std::int64_t count = 0;
        QVERIFY(counter.frequency(perSecond) && perSecond > 0);
        const auto before = static_cast<std::int64_t>(counter.tickCount());
        QVERIFY(counter.read(count));
        const auto after = static_cast<std::int64_t>(counter.tickCount());
        const std::int64_t seconds = count / perSecond;
        QVERIFY(before / 1000 - 1 <= seconds);
        QVERIFY(after / 1000 + 1 >= seconds);
    }

    void theSystemsClockNeverGoesBack()
    {
        std::uint64_t last = monotonicMilliseconds();
        for (int i = 0; i < 100'000; ++i) {
            const std::uint64_t now = monotonicMilliseconds();
            QVERIFY(now >= last);
            last = now;
        }
    }
};

QTEST_GUILESS_MAIN(ClockTest)
#include "ClockTest.moc"
