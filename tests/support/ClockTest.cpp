#include "support/FakeCounter.h"
#include "support/MonotonicClock.h"
#include "support/Stopwatch.h"

#include <QtTest/QtTest>

#include <limits>

class ClockTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void countsBecomeWholeMillisecondsWithoutOverflow()
    {
        FakeCounter counter;
        counter.countsPerSecond = 3'000'000;
        counter.count = 1'000'000'000;
        const Stopwatch stopwatch(counter);
        counter.count += 3'002'999;
        QCOMPARE(stopwatch.elapsedMs(), 1000);
        counter.count = std::numeric_limits<std::int64_t>::max();
        QCOMPARE(stopwatch.elapsedMs(), (counter.count - 1'000'000'000) / 3'000);
        QCOMPARE(MonotonicClock(counter).milliseconds(), std::uint64_t(counter.count / 3'000));
    }

    void withoutACounterTheStopwatchStopsAndTheClockIsCoarse()
    {
        FakeCounter counter;
        counter.hasFrequency = false;
        const Stopwatch stopwatch(counter);
        const MonotonicClock clock(counter);
        counter.hasFrequency = true;
        const Stopwatch other(counter);
        counter.count = 5000;
        QCOMPARE(stopwatch.elapsedMs(), 0);
        QCOMPARE(clock.milliseconds(), counter.ticks);
        counter.readable = false;
        QCOMPARE(other.elapsedMs(), 0);
        QCOMPARE(MonotonicClock(counter).milliseconds(), counter.ticks);
        counter.readable = true;
        counter.countsPerSecond = 0;
        QCOMPARE(MonotonicClock(counter).milliseconds(), 0U);
    }

    void theSystemsClocksCountMilliseconds()
    {
        QElapsedTimer oracle;
        oracle.start();
        const qint64 minutes = oracle.msecsSinceReference() / 60'000;
        QVERIFY(qAbs(qint64(monotonicMilliseconds()) / 60'000 - minutes) < 2);
        QVERIFY(qAbs(qint64(platform::systemCounter().tickCount()) / 60'000 - minutes) < 2);
    }
};

QTEST_GUILESS_MAIN(ClockTest)
#include "ClockTest.moc"
