#include "support/EngineRig.h"
#include "support/TestFiles.h"

#include <QtCore/QElapsedTimer>

#include <algorithm>
#include <array>
#include <atomic>
#include <thread>

namespace {

/// What a thread knows of its consumers beyond their lives.
struct Traces
{
    std::atomic<int> inside{0};       ///< Calls that are running now.
    std::atomic<bool> removed{false}; ///< `removeConsumer` has returned.
    std::atomic<int> violations{0};   ///< Calls where none may be.
    std::atomic<int> deliveries{0};
};

/// Does all that other threads may do, round after round, with a consumer for each round.
void hammer(IDashboardEngine &engine, Traces &traces, const std::atomic<bool> &finished)
{
    for (int round = 0; !finished; ++round) {
        traces.removed = false;
        auto consumer = std::make_unique<FakeConsumer>(8, 4, BufferUse::Swap);
        // It takes its time in every call, so that a removal which doesn't wait meets one.
        consumer->during = [&traces](const QString &call) {
            ++traces.inside;
            std::this_thread::yield();
            traces.violations += traces.removed ? 1 : 0;
            traces.deliveries += call == "delivery"_q ? 1 : 0;
            --traces.inside;
        };
        engine.addConsumer(consumer.get());
        const QString name = QString::number(round);
        engine.updateTelemetry({}, {}, {}, round % 5 == 0);
        engine.setMotionProfileName(name);
        engine.setTuneInfo(name, name, {name, 0, 1, 0.5F, false, true, false});
        if (round % 3 == 0)
            engine.setDashboardFile(round % 11 == 0 ? QString() : name);
        engine.hasConsumers();
        // Now and then long enough for a pass to find the consumer.
        for (int spins = 0; round % 4 == 0 && spins < 50; ++spins)
            std::this_thread::yield();
        engine.removeConsumer(consumer.get());
        traces.removed = true;
        traces.violations += traces.inside;
    }
}

} // namespace

class ThreadsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eightThreadsCanNotDisturbATickingEngine()
    {
        const int asked = qEnvironmentVariableIntValue("GAUGE_STRESS_SECONDS");
        const qint64 milliseconds = qint64{asked > 0 ? asked : 5} * 1000;
        EngineRig rig;
        rig.engine->disconnect(&rig.wakeUps); // A spy can't collect from all threads at once.
        std::array<Traces, 8> traces;
        std::atomic<bool> finished{false};
        std::vector<std::thread> threads;
        threads.reserve(traces.size());
        for (Traces &trace : traces)
            threads.emplace_back([&] { hammer(*rig.engine, trace, finished); });
        // Until every thread has been served, however few processors there are.
        const auto served = [](const Traces &trace) { return trace.deliveries > 0; };
        const auto allServed = [&] { return std::all_of(traces.begin(), traces.end(), served); };
        QElapsedTimer time;
        time.start();
        while (time.elapsed() < milliseconds || (!allServed() && time.elapsed() < 120'000)) {
            rig.tick();
            QCoreApplication::processEvents();
            rig.script = {};
        }
        finished = true;
        for (std::thread &thread : threads)
            thread.join();
        for (const Traces &trace : traces)
            QCOMPARE(trace.violations.load(), 0);
        QVERIFY(allServed());
        QVERIFY(!rig.engine->hasConsumers());

        // After all this, the engine still delivers an update.
        rig.show();
        rig.deliverQueued();
        rig.freshTick();
        QVERIFY(rig.script.calls.contains("load /no/such/Dash.qml 480x272"_q));
        QCOMPARE(rig.consumer.deliveries.size(), 1U);
    }
};

QTEST_GUILESS_MAIN(ThreadsTest)
#include "ThreadsTest.moc"
