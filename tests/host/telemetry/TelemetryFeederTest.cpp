#include "telemetry/TelemetryFeeder.h"
#include "support/FakeEngine.h"
#include "telemetry/TelemetryMonitor.h"
#include "telemetry/VehicleNames.h"

#include <QtTest/QtTest>

using namespace std::chrono_literals;
using State = TelemetryMonitor::State;

namespace {

const TelemetryMonitor::TimePoint Start{1h};

/// Gives its sink to the test.
struct FakeSource final : public TelemetrySource
{
    TelemetrySink *&sink;

    explicit FakeSource(TelemetrySink *&sink)
        : sink(sink)
    {
    }
    void start(TelemetrySink &taker) override { sink = &taker; }
};

} // namespace

class TelemetryFeederTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void silenceRepeatsTheLastTelemetryAsPaused()
    {
        FakeEngine engine;
        VehicleNames vehicles;
        const QSignalSpy changes(&vehicles, &VehicleNames::vehicleChanged);
        TelemetryMonitor monitor;
        TelemetrySink *sink = nullptr;
        const TelemetryFeeder feeder(std::make_unique<FakeSource>(sink), engine, vehicles, monitor);
        TelemetrySample sample;
        sample.vehicle.rpm = 5000;
        sink->update(sample, QStringLiteral("Kart"));
        sink->fallSilent();
        sample.paused = true;
        sink->update(sample, QStringLiteral("Kart"));
        QVERIFY((engine.updates ==
                 decltype(engine.updates){{5000, false}, {5000, true}, {5000, true}}));
        QCOMPARE(feeder.updatesSent(), 3);
        QCOMPARE(changes.size(), 1);
        QCOMPARE(vehicles.recentVehicleName(), QStringLiteral("Kart"));
        QCOMPARE(monitor.reading(std::chrono::steady_clock::now()).state, State::Paused);
    }

    void silencePausesAndThenLoses()
    {
        TelemetryMonitor monitor;
        const auto stateAfter = [&monitor](auto silence) {
            return monitor.reading(Start + silence).state;
        };
        QCOMPARE(stateAfter(0ms), State::Waiting);
        monitor.update(false, Start);
        QVERIFY(stateAfter(499ms) == State::Live && stateAfter(500ms) == State::Paused);
        QVERIFY(stateAfter(4999ms) == State::Paused && stateAfter(5s) == State::Lost);
    }

    void rateIsTheLastTwoSeconds()
    {
        TelemetryMonitor monitor;
        auto moment = 0ms;
        for (; moment < 1000ms; moment += 20ms)
            monitor.update(false, Start + moment);
        QCOMPARE(monitor.reading(Start + 1000ms).rate, 50.0);
        for (; moment < 60'100ms; moment += 10ms)
            monitor.update(false, Start + moment);
        // The quarter of a second that still runs doesn't count.
        QCOMPARE(monitor.reading(Start + 60'100ms).rate, 100.0);
        QCOMPARE(monitor.reading(Start + 60'250ms).rate, (7 * 25 + 10) / 2.0);
    }
};

QTEST_GUILESS_MAIN(TelemetryFeederTest)
#include "TelemetryFeederTest.moc"
