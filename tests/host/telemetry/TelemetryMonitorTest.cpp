#include "telemetry/TelemetryMonitor.h"

#include <QtTest/QtTest>

using namespace std::chrono_literals;
using State = TelemetryMonitor::State;

namespace {

const TelemetryMonitor::TimePoint Start{1h};

/// Updates at an even pace from the start on; the last comes just before `length` is over.
void feed(TelemetryMonitor &monitor, std::chrono::milliseconds length,
          std::chrono::milliseconds period)
{
    for (auto moment = 0ms; moment < length; moment += period)
        monitor.update(false, Start + moment);
}

} // namespace

class TelemetryMonitorTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void waitsUntilTheFirstUpdate()
    {
        TelemetryMonitor monitor;
        QCOMPARE(monitor.reading(Start).state, State::Waiting);
        monitor.update(false, Start);
        QCOMPARE(monitor.reading(Start).state, State::Live);
    }

    void silencePausesAndThenLoses()
    {
        TelemetryMonitor monitor;
        monitor.update(false, Start);
        QCOMPARE(monitor.reading(Start + 499ms).state, State::Live);
        QCOMPARE(monitor.reading(Start + 500ms).state, State::Paused);
        QCOMPARE(monitor.reading(Start + 4999ms).state, State::Paused);
        QCOMPARE(monitor.reading(Start + 5s).state, State::Lost);
        monitor.update(false, Start + 6s);
        QCOMPARE(monitor.reading(Start + 6s).state, State::Live);
    }

    void theGamesOwnPauseCounts()
    {
        TelemetryMonitor monitor;
        monitor.update(true, Start);
        QCOMPARE(monitor.reading(Start).state, State::Paused);
        monitor.update(false, Start + 20ms);
        QCOMPARE(monitor.reading(Start + 20ms).state, State::Live);
    }

    void rateIsTheLastTwoSeconds()
    {
        TelemetryMonitor monitor;
        feed(monitor, 1000ms, 20ms);
        QCOMPARE(monitor.reading(Start + 1000ms).rate, 50.0);
        TelemetryMonitor later;
        feed(later, 60'000ms, 10ms);
        QCOMPARE(later.reading(Start + 60'000ms).rate, 100.0);
        // A quarter of silence is one of eight.
        QCOMPARE(later.reading(Start + 60'250ms).rate, 87.5);
    }
};

QTEST_GUILESS_MAIN(TelemetryMonitorTest)
#include "TelemetryMonitorTest.moc"
