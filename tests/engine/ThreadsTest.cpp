#include "engine/DashboardEngine.h"
#include "plugin/IDashboardConsumer.h"
#include "support/FakeRenderer.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtCore/QEvent>
#include <QtTest/QtTest>

#include <algorithm>
#include <array>
#include <atomic>
#include <thread>
#include <vector>

namespace {

constexpr int Threads = 8;

/// What is known of a consumer beyond its life.
struct Traces
{
    std::atomic<int> inside{0};       ///< Calls that are running now.
    std::atomic<bool> removed{false}; ///< `removeConsumer` has returned.
    std::atomic<int> violations{0};   ///< Calls found where none may be.
    std::atomic<int> deliveries{0};
};

/// A consumer that takes its time inside every call, so that a removal which doesn't wait meets
/// one.
class HastyConsumer final : public IDashboardConsumer
{
public:
    HastyConsumer(Traces &traces, int size)
        : traces(traces)
        , size(size)
    {
    }

    int frameWidth() override
    {
        const Visit visit(traces);
        return size;
    }
    int frameHeight() override
    {
        const Visit visit(traces);
        return size / 2;
    }
    bool isUpsideDown() override
    {
        const Visit visit(traces);
        return size % 2 != 0;
    }
    quint64 lastActivity() override
    {
        const Visit visit(traces);
        return 0;
    }
    void deliverFrame(Frame &buffer, int) override
    {
        const Visit visit(traces);
        buffer.swap(own);
        std::this_thread::yield();
        ++traces.deliveries;
    }

private:
    class Visit
    {
    public:
        explicit Visit(Traces &traces)
            : traces(traces)
        {
            ++traces.inside;
            check();
        }
        ~Visit()
        {
            check();
            --traces.inside;
        }
        Visit(const Visit &) = delete;
        Visit &operator=(const Visit &) = delete;

    private:
        void check() const
        {
            if (traces.removed)
                ++traces.violations;
        }

        Traces &traces;
    };

    Traces &traces;
    int size;
    Frame own;
};

} // namespace

class ThreadsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eightThreadsCanNotDisturbATickingEngine()
    {
        bool given = false;
        const int asked = qEnvironmentVariableIntValue("GAUGE_STRESS_SECONDS", &given);
        const qint64 milliseconds = qint64{given ? asked : 10} * 1000;

        // No signal spy here: it would collect from all threads at once, which it can't.
        RendererScript script;
        DashboardEngine engine(false, true,
                               {[] { return quint64(1); },
                                [&script] { return std::make_unique<FakeRenderer>(script); }});
        engine.setDashboardFile(QStringLiteral("/first.qml"));
        std::array<Traces, Threads> traces;
        std::array<int, Threads> rounds{};
        std::atomic<bool> go{false};
        std::atomic<bool> finished{false};
        std::vector<std::thread> threads;
        threads.reserve(Threads);
        for (int number = 0; number < Threads; ++number) {
            threads.emplace_back([&, number] {
                while (!go)
                    std::this_thread::yield();
                while (!finished)
                    hammer(engine, traces[number], number, rounds[number]++);
            });
        }

        QElapsedTimer time;
        time.start();
        go = true;
        int ticks = 0;
        // Until every thread has been served, however few processors there are.
        while (time.elapsed() < milliseconds || !allServed(traces)) {
            tick(engine);
            QCoreApplication::processEvents();
            script.calls.clear();
            script.publications.clear();
            script.renderCalls.clear();
            ++ticks;
            if (time.elapsed() > 120'000)
                break;
        }
        finished = true;
        for (std::thread &thread : threads)
            thread.join();

        for (const Traces &trace : traces) {
            QCOMPARE(trace.violations.load(), 0);
            QVERIFY(trace.deliveries > 0);
        }
        for (const int count : rounds)
            QVERIFY(count > 0);
        QVERIFY(ticks > 0);
        QVERIFY(!engine.hasConsumers());

        // The last word of all that talk is still heard.
        Traces last;
        HastyConsumer consumer(last, 10);
        engine.setDashboardFile(QStringLiteral("/last.qml"));
        engine.addConsumer(&consumer);
        QCoreApplication::sendPostedEvents(&engine, QEvent::MetaCall);
        VehicleTelemetry vehicle{};
        vehicle.speedKmh = 42;
        engine.updateTelemetry(vehicle, {}, {}, false);
        tick(engine);
        QVERIFY(script.calls.contains(QStringLiteral("load /last.qml 480x272")));
        QCOMPARE(script.publications.back().vehicle.speedKmh, 42.0F);
        QCOMPARE(last.deliveries.load(), 1);
        engine.removeConsumer(&consumer);
    }

private:
    static void tick(DashboardEngine &engine)
    {
        QMetaObject::invokeMethod(&engine, "render", Qt::DirectConnection);
    }

    static bool allServed(const std::array<Traces, Threads> &traces)
    {
        return std::all_of(traces.cbegin(), traces.cend(),
                           [](const Traces &trace) { return trace.deliveries > 0; });
    }

    /// One round of everything that other threads may do, with a consumer that lives no longer.
    static void hammer(IDashboardEngine &engine, Traces &traces, int number, int round)
    {
        traces.removed = false;
        auto consumer = std::make_unique<HastyConsumer>(traces, 8 + number);
        engine.addConsumer(consumer.get());

        VehicleTelemetry vehicle{};
        vehicle.rpm = static_cast<quint32>(round);
        const QString name = QString::number(round);
        engine.updateTelemetry(vehicle, {}, {}, round % 5 == 0);
        engine.setMotionProfileName(name);
        engine.setTuneInfo(name, name, {name, 0, 1, 0.5F, false, true, false});
        if (round % 3 == 0)
            engine.setDashboardFile(QStringLiteral("/%1.qml").arg(round % 7));
        if (round % 11 == 0)
            engine.setDashboardFile(QString());
        engine.hasConsumers();
        // Now and then long enough for a pass to find the consumer.
        for (int spins = 0; round % 4 == 0 && spins < 50; ++spins)
            std::this_thread::yield();

        engine.removeConsumer(consumer.get());
        traces.removed = true;
        if (traces.inside != 0)
            ++traces.violations;
        consumer.reset();
    }
};

QTEST_GUILESS_MAIN(ThreadsTest)
#include "ThreadsTest.moc"
