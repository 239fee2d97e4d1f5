#include "support/LogCapture.h"
#include "support/RunningEngineRig.h"

#include <QtCore/QAbstractEventDispatcher>
#include <QtTest/QtTest>

namespace {

const QString Document = QStringLiteral("/no/such/Dash.qml");

} // namespace

/// What wakes the engine's timer, and what puts it to sleep.
class SleepTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void wakesOnTheFirstUpdateAndLoadsPublishesAndDeliversInOneTick()
    {
        EngineRig bench;
        FakeConsumer consumer(480, 272);
        bench.engine->addConsumer(&consumer);
        bench.engine->setDashboardFile(Document);
        QCOMPARE(bench.script.calls, QStringList());
        bench.update();
        bench.update();
        QCOMPARE(bench.wakeUps.count(), 2); // It counts as running only once the first has arrived.
        bench.deliverQueued();
        bench.update();
        QCOMPARE(bench.wakeUps.count(), 2);
        bench.tick();
        QCOMPARE(bench.script.calls,
                 QStringList({QStringLiteral("load /no/such/Dash.qml 480x272"),
                              QStringLiteral("publish"), QStringLiteral("render 480x272")}));
        QCOMPARE(consumer.deliveries.size(), 1U);
        bench.tick();
        bench.freshTick();
        QCOMPARE(bench.script.count(QStringLiteral("load")), 1);
        QCOMPARE(consumer.deliveries.size(), 2U);
    }

    void theTimerStrikesTheTickAndASecondStartLeavesItAlone()
    {
        RunningEngineRig bench;
        QVERIFY(bench.timer != nullptr);
        QVERIFY(bench.timer->isActive());
        QVERIFY(!bench.timer->isSingleShot());
        QCOMPARE(bench.timer->timerType(), QTimer().timerType());
        while (bench.timer->remainingTime() > 20)
            std::this_thread::yield();
        bench.startTimer();
        QVERIFY(bench.timer->remainingTime() <= 20);

        bench.update();
        QTRY_COMPARE(bench.script.calls,
                     QStringList({QStringLiteral("publish"), QStringLiteral("render 4x3")}));
    }

    void fallsAsleepAtTheFiftyFirstTickWithoutNews_data()
    {
        QTest::addColumn<bool>("acceleration");
        QTest::newRow("dashboards") << true;
        QTest::newRow("message") << false;
    }
    void fallsAsleepAtTheFiftyFirstTickWithoutNews()
    {
        QFETCH(bool, acceleration);
        RunningEngineRig bench(acceleration);
        QVERIFY(bench.timer != nullptr);
        const std::size_t delivered = bench.consumer.deliveries.size();
        bench.ticks(50);
        QVERIFY(bench.timer->isActive());
        bench.tick();
        QVERIFY(!bench.timer->isActive());
        QCOMPARE(bench.consumer.deliveries.size(), delivered);
        QCOMPARE(bench.script.calls, QStringList());

        // The count stays full until something new comes.
        bench.startTimer();
        bench.tick();
        QVERIFY(!bench.timer->isActive());
        QVERIFY(!bench.takenToRun());
        bench.deliverQueued();
        bench.ticks(51);
        QVERIFY(bench.timer->isActive());
        bench.tick();
        QVERIFY(!bench.timer->isActive());
    }

    void aNewDocumentStartsTheIdleCountOverWithoutStartingTheTimer()
    {
        RunningEngineRig bench;
        QVERIFY(bench.timer != nullptr);
        bench.ticks(51);
        bench.engine->setDashboardFile(Document);
        bench.deliverQueued();
        QVERIFY(!bench.timer->isActive());
        bench.startTimer();
        bench.ticks(50);
        QVERIFY(bench.timer->isActive());
        bench.tick();
        QVERIFY(!bench.timer->isActive());
    }

    void everyReasonToStopPutsItToSleep_data()
    {
        QTest::addColumn<QString>("reason");
        for (const char *reason : {"no document", "failed load", "no consumer", "idle", "shutdown"})
            QTest::newRow(reason) << QString::fromLatin1(reason);
    }
    void everyReasonToStopPutsItToSleep()
    {
        QFETCH(QString, reason);
        const LogCapture log;
        RunningEngineRig bench;
        QVERIFY(bench.timer != nullptr);
        bench.update();
        if (reason == QLatin1String("no document")) {
            bench.engine->setDashboardFile(QString());
        } else if (reason == QLatin1String("failed load")) {
            bench.script.loads = false;
            bench.engine->setDashboardFile(Document);
        } else if (reason == QLatin1String("no consumer")) {
            bench.engine->removeConsumer(&bench.consumer);
        } else if (reason == QLatin1String("idle")) {
            bench.ticks(51);
        } else {
            bench.engine->shutdown();
            QVERIFY(!bench.timer->isActive());
            bench.update();
            bench.startTimer();
            QVERIFY(!bench.timer->isActive());
            QCOMPARE(bench.wakeUps.count(), 0);
            return;
        }
        QVERIFY(bench.timer->isActive());
        bench.tick();
        QVERIFY(!bench.timer->isActive());

        bench.script.loads = true;
        bench.engine->setDashboardFile(Document);
        bench.engine->addConsumer(&bench.consumer);
        QVERIFY(!bench.takenToRun());
        bench.deliverQueued();
        QVERIFY(bench.timer->isActive());
        QVERIFY(bench.takenToRun());
    }

    void withoutConsumersItPublishesWhatIsLeftAndRendersNothing()
    {
        RunningEngineRig bench;
        QVERIFY(bench.timer != nullptr);
        bench.engine->removeConsumer(&bench.consumer);
        bench.tick();
        QVERIFY(bench.timer->isActive());
        bench.engine->setMotionProfileName(QStringLiteral("Calm"));
        bench.tick();
        QVERIFY(!bench.timer->isActive());
        QCOMPARE(bench.script.calls, QStringList({QStringLiteral("publish")}));
    }

    void asleepItHasNoTimerAndWakesNobody()
    {
        RunningEngineRig bench;
        QVERIFY(bench.timer != nullptr);
        bench.ticks(51);
        QAbstractEventDispatcher *dispatcher = QAbstractEventDispatcher::instance();
        QVERIFY(dispatcher->registeredTimers(bench.timer).isEmpty());
        QVERIFY(dispatcher->registeredTimers(bench.engine.get()).isEmpty());

        QCoreApplication::processEvents();
        const QSignalSpy wakeUps(dispatcher, &QAbstractEventDispatcher::awake);
        QEventLoop loop;
        QTimer::singleShot(400, &loop, &QEventLoop::quit);
        loop.exec();
        // Ten ticks would have passed. The loop's own end is the one reason to wake.
        QVERIFY2(wakeUps.count() <= 3, qPrintable(QString::number(wakeUps.count())));
        QCOMPARE(bench.script.calls, QStringList());
    }
};

QTEST_MAIN(SleepTest)
#include "SleepTest.moc"
