#include "views/EditorBench.h"

#include <QtTest/QtTest>

#include <algorithm>
#include <array>
#include <atomic>
#include <thread>

class EditorLifetimeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyOrderOfEndsIsSafeWhileTelemetryRuns_data()
    {
        QTest::addColumn<bool>("acceleration");
        QTest::newRow("preview") << true;
        QTest::newRow("message") << false;
    }
    void everyOrderOfEndsIsSafeWhileTelemetryRuns()
    {
        QFETCH(bool, acceleration);
        enum Step { Show, Hide, Ok, DestroyWindow, DestroyModel, DestroyQml };
        std::array<Step, 6> steps{Show, Hide, Ok, DestroyWindow, DestroyModel, DestroyQml};
        EditorBench bench(acceleration);
        int orders = 0;
        do {
            bench.qml = std::make_unique<QQmlEngine>();
            bench.run();
            QPointer<QWindow> window = std::make_unique<QWindow>().release();
            bench.model->setWindow(window);
            for (const Step step : steps) {
                if (step == DestroyWindow && window != nullptr)
                    window->deleteLater();
                else if (step == DestroyModel)
                    bench.model.reset();
                else if (step == DestroyQml)
                    bench.qml.reset();
                else if (step == Ok && bench.model != nullptr)
                    bench.model->ok();
                else if ((step == Show || step == Hide) && window != nullptr)
                    window->setVisible(step == Show);
                QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
                QVERIFY(step != DestroyWindow || window.isNull());

                if (bench.model != nullptr) {
                    const QSignalSpy changes(bench.model.get(), &DashboardEditorVM::previewChanged);
                    bench.tick();
                    QCOMPARE(changes.count(), 1);
                }
                if (bench.qml != nullptr) {
                    QSize size;
                    const bool rendered = bench.model != nullptr || !acceleration;
                    QCOMPARE(bench.request(0, &size).size(),
                             rendered ? QSize(480, 272) : QSize(1, 1));
                    QCOMPARE(size, QSize(480, 272));
                }
            }
            ++orders;
            QCOMPARE(bench.script().destroyed, acceleration ? orders : 0);
        } while (std::next_permutation(steps.begin(), steps.end()));
        QCOMPARE(orders, 720);
    }

    void theEndWaitsForARequestThatIsRendering()
    {
        EditorBench bench;
        bench.run();
        std::atomic<bool> rendering{false};
        std::atomic<bool> ending{false};
        std::atomic<int> destroyed{-1};
        bench.script().duringRender = [&] {
            rendering = true;
            while (!ending)
                std::this_thread::yield();
            for (int i = 0; i < 1000; ++i)
                std::this_thread::yield();
            destroyed = bench.script().destroyed;
        };
        std::thread other([&] {
            while (bench.request().size() != QSize(1, 1)) {}
        });
        while (!rendering)
            std::this_thread::yield();
        ending = true;
        bench.model.reset();
        other.join();
        QCOMPARE(destroyed.load(), 0);
        QCOMPARE(bench.script().destroyed, 1);
    }
};

QTEST_MAIN(EditorLifetimeTest)
#include "EditorLifetimeTest.moc"
