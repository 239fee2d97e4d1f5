#include "support/EngineBench.h"
#include "support/FakeConsumer.h"
#include "support/LogCapture.h"

#include <QtCore/QAbstractEventDispatcher>
#include <QtCore/QDir>
#include <QtCore/QFileSystemWatcher>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTimer>
#include <QtTest/QtTest>

#include <cstring>
#include <thread>

namespace {

const QString Document = QStringLiteral("/no/such/Dash.qml");

/// Catches the engine's private timer at its first real event.
class TimerCatcher : public QObject
{
public:
    TimerCatcher() { QCoreApplication::instance()->installEventFilter(this); }

    QTimer *timer = nullptr;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto *candidate = qobject_cast<QTimer *>(watched);
        if (event->type() == QEvent::Timer && candidate != nullptr && candidate->interval() == 40)
            timer = candidate;
        return false;
    }
};

/// An engine with a document and a consumer, whose timer is known and runs. Nothing is pending.
class RunningBench : public EngineBench
{
public:
    explicit RunningBench(bool hardwareAcceleration = true)
        : EngineBench(hardwareAcceleration)
    {
        engine->setDashboardFile(Document);
        engine->addConsumer(&consumer);
        startTimer();
        TimerCatcher catcher;
        if (QTest::qWaitFor([&catcher] { return catcher.timer != nullptr; }, 30'000))
            timer = catcher.timer;
        freshTick();
        script.calls.clear();
        wakeUps.clear();
    }

    FakeConsumer consumer;
    QTimer *timer = nullptr;
};

template<typename Record> Record patterned(int seed)
{
    Record record;
    unsigned char bytes[sizeof(Record)];
    for (std::size_t i = 0; i < sizeof(Record); ++i)
        bytes[i] = static_cast<unsigned char>(seed + static_cast<int>(i) * 7);
    std::memcpy(&record, bytes, sizeof(Record));
    return record;
}

template<typename Record> bool sameBytes(const Record &a, const Record &b)
{
    return std::memcmp(&a, &b, sizeof(Record)) == 0;
}

void fromAnotherThread(const std::function<void()> &work)
{
    std::thread(work).join();
}

} // namespace

class EngineTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void presentsItselfToQt()
    {
        const EngineBench bench;
        const QMetaObject *meta = bench.engine->metaObject();
        QCOMPARE(meta->className(), "DashboardEngine");
        QCOMPARE(meta->propertyCount(), meta->propertyOffset());
        QCOMPARE(meta->methodCount() - meta->methodOffset(), 3);
        QCOMPARE(meta->method(meta->indexOfSignal("startTimerAsync()")).access(),
                 QMetaMethod::Public);
        QCOMPARE(meta->method(meta->indexOfSlot("render()")).access(), QMetaMethod::Private);
        QCOMPARE(meta->method(meta->indexOfSlot("startTimer()")).access(), QMetaMethod::Private);
        QCOMPARE(bench.engine->qt_metacast("DashboardEngine"), bench.engine.get());
        QCOMPARE(bench.engine->qt_metacast("IDashboardEngine"),
                 static_cast<IDashboardEngine *>(bench.engine.get()));
    }

    void makesItsRendererOnlyWithAcceleration()
    {
        const LogCapture log;
        EngineBench plain(false);
        QCOMPARE(log.lines, QStringList());
        QVERIFY(plain.engine->createRenderer() == nullptr);
        QCOMPARE(plain.script.made, 0);

        EngineBench accelerated(true);
        QCOMPARE(log.lines, QStringList({QStringLiteral("info: DASH: Creating renderer..."),
                                         QStringLiteral("info: DASH: Renderer created")}));
        QCOMPARE(accelerated.script.made, 1);
        accelerated.engine->shutdown();
        const auto first = accelerated.engine->createRenderer();
        const auto second = accelerated.engine->createRenderer();
        QVERIFY(first != nullptr && second != nullptr && first != second);
        QCOMPARE(accelerated.script.made, 3);
    }

    void dropsTelemetryThatNobodyCouldSee_data()
    {
        QTest::addColumn<bool>("hasFile");
        QTest::addColumn<bool>("hasConsumer");
        QTest::newRow("nothing") << false << false;
        QTest::newRow("no consumer") << true << false;
        QTest::newRow("no document") << false << true;
    }
    void dropsTelemetryThatNobodyCouldSee()
    {
        QFETCH(bool, hasFile);
        QFETCH(bool, hasConsumer);
        EngineBench bench;
        FakeConsumer consumer;
        if (hasFile)
            bench.engine->setDashboardFile(Document);
        if (hasConsumer)
            bench.engine->addConsumer(&consumer);
        bench.update();
        QCOMPARE(bench.wakeUps.count(), 0);

        bench.engine->setDashboardFile(Document);
        bench.engine->addConsumer(&consumer);
        bench.tick();
        QCOMPARE(bench.script.count(QStringLiteral("publish")), 0);
        bench.freshTick();
        QCOMPARE(bench.script.count(QStringLiteral("publish")), 1);
    }

    void wakesOnTheFirstUpdateAndLoadsPublishesAndDeliversInOneTick()
    {
        EngineBench bench;
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
        RunningBench bench;
        QVERIFY(bench.timer != nullptr);
        QVERIFY(bench.timer->isActive());
        QVERIFY(!bench.timer->isSingleShot());
        QCOMPARE(bench.timer->timerType(), QTimer().timerType());
        const int id = bench.timer->timerId();
        bench.startTimer();
        QCOMPARE(bench.timer->timerId(), id);

        bench.update();
        QTRY_COMPARE(bench.script.calls,
                     QStringList({QStringLiteral("publish"), QStringLiteral("render 4x3")}));
    }

    void publishesTheNewestRecordsWhole()
    {
        for (const bool useMph : {false, true}) {
            EngineBench bench(true, useMph);
            FakeConsumer consumer;
            bench.engine->setDashboardFile(Document);
            bench.engine->addConsumer(&consumer);
            for (const int seed : {1, 2, 3}) {
                bench.engine->updateTelemetry(patterned<VehicleTelemetry>(seed),
                                              patterned<DisplayLimits>(seed + 10),
                                              patterned<ExtendedTelemetry>(seed + 20), seed == 3);
            }
            bench.tick();
            QCOMPARE(bench.script.publications.size(), 1U);
            const Publication &published = bench.script.publications.front();
            QVERIFY(sameBytes(published.vehicle, patterned<VehicleTelemetry>(3)));
            QVERIFY(sameBytes(published.limits, patterned<DisplayLimits>(13)));
            QVERIFY(sameBytes(published.extended, patterned<ExtendedTelemetry>(23)));
            quint32 smoothing = 0;
            std::memcpy(&smoothing, &published.steeringSmoothing, sizeof smoothing);
            QCOMPARE(smoothing, 0x3E4CCCCDU);
            QCOMPARE(published.useMph, useMph);
            QCOMPARE(published.showMarkers, false);
            QCOMPARE(published.paused, true);
        }
    }

    void aPausedUpdateIsStoredButWakesNobody()
    {
        EngineBench bench;
        FakeConsumer consumer;
        bench.engine->setDashboardFile(Document);
        bench.engine->addConsumer(&consumer);
        bench.update(10, true);
        QCOMPARE(bench.wakeUps.count(), 0);
        bench.update(20, false);
        QCOMPARE(bench.wakeUps.count(), 1);
        bench.deliverQueued();
        bench.tick();
        QCOMPARE(bench.script.publications.size(), 1U);
        QCOMPARE(bench.script.publications[0].vehicle.speedKmh, 20.0F);
        QCOMPARE(bench.script.publications[0].paused, false);

        bench.update(30, true);
        bench.tick();
        QCOMPARE(bench.script.publications.size(), 2U);
        QCOMPARE(bench.script.publications[1].paused, true);
        QCOMPARE(consumer.deliveries.size(), 2U);
    }

    void namesAndTunesGoOutWithTheNextTickAndWakeNobody()
    {
        EngineBench bench;
        FakeConsumer consumer;
        const TuneValue value{QStringLiteral("Gain"), 1, 9, 5, true, false, true};
        bench.engine->setMotionProfileName(QStringLiteral("Rough road"));
        bench.engine->setTuneInfo(QStringLiteral("Old"), QStringLiteral("Old"), {});
        bench.engine->setTuneInfo(QStringLiteral("Motion"), QStringLiteral("Heave"), value);
        bench.engine->setDashboardFile(Document);
        bench.engine->addConsumer(&consumer);
        QCOMPARE(bench.wakeUps.count(), 0);
        bench.tick();
        QCOMPARE(bench.script.publications.size(), 1U);
        const Publication published = bench.script.publications[0];
        QCOMPARE(published.motionProfileName, QStringLiteral("Rough road"));
        QCOMPARE(published.tune.group, QStringLiteral("Motion"));
        QCOMPARE(published.tune.name, QStringLiteral("Heave"));
        QCOMPARE(published.tune.valueName, QStringLiteral("Gain"));
        QCOMPARE(published.tune.valueMin, 1.0F);
        QCOMPARE(published.tune.valueMax, 9.0F);
        QCOMPARE(published.tune.valueCurrent, 5.0F);
        QCOMPARE(published.tune.valueIsInteger, true);
        QCOMPARE(published.tune.reservedFlagA, false);
        QCOMPARE(published.tune.reservedFlagB, true);
        QCOMPARE(published.tune.changeCounter, 2U);
        QCOMPARE(consumer.deliveries.size(), 1U);

        bench.engine->setMotionProfileName(QString());
        bench.tick();
        QCOMPARE(bench.script.publications.size(), 2U);
        QCOMPARE(bench.script.publications[1].motionProfileName, QString());
        QCOMPARE(bench.script.publications[1].tune.changeCounter, 2U);
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
        RunningBench bench(acceleration);
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
        RunningBench bench;
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
        RunningBench bench;
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
        RunningBench bench;
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
        RunningBench bench;
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

    void reloadsWheneverADocumentIsSet()
    {
        RunningBench bench;
        const QString load = QStringLiteral("load /no/such/Dash.qml 480x272");
        bench.engine->setDashboardFile(Document);
        bench.tick();
        QCOMPARE(bench.script.calls, QStringList({load})); // Nothing new, so nothing is rendered.
        bench.engine->setDashboardFile(Document);
        bench.engine->setDashboardFile(Document);
        bench.freshTick();
        QCOMPARE(bench.script.calls, QStringList({load, load, QStringLiteral("publish"),
                                                  QStringLiteral("render 4x3")}));

        bench.engine->setDashboardFile(QString());
        QVERIFY(bench.takenToRun());
        bench.ticks(2);
        QCOMPARE(bench.script.calls.size(), 4);
        QCOMPARE(bench.script.destroyed, 0);
    }

    void aFailedLoadIsLoggedOnceAndNotTriedAgain()
    {
        RunningBench bench;
        bench.script.loads = false;
        bench.script.errors = QStringList(
            {QStringLiteral("Dash.qml:3 \"x\" is odd"), QStringLiteral("second  line")});
        const QStringList lines({QStringLiteral("critical: Dashboard: Failed to load: ") +
                                     QDir::toNativeSeparators(QStringLiteral("/a b/Dash.qml")),
                                 QStringLiteral("critical: Dash.qml:3 \"x\" is odd"),
                                 QStringLiteral("critical: second  line")});
        bench.engine->setDashboardFile(QStringLiteral("/a b/Dash.qml"));
        const LogCapture log;
        bench.freshTick();
        QCOMPARE(log.critical(), lines);
        QCOMPARE(bench.script.calls, QStringList({QStringLiteral("load /a b/Dash.qml 480x272")}));

        // Consumers get the renderer's picture of the errors from here on.
        bench.deliverQueued();
        bench.tick();
        bench.freshTick();
        QCOMPARE(log.critical(), lines);
        QCOMPARE(bench.script.count(QStringLiteral("load")), 1);
        QCOMPARE(bench.script.count(QStringLiteral("publish")), 2);
        QCOMPARE(bench.script.count(QStringLiteral("render")), 2);

        bench.engine->setDashboardFile(QStringLiteral("/a b/Dash.qml"));
        bench.tick();
        QCOMPARE(log.critical(), lines + lines);
    }

    void holdsNoLockWhileADocumentLoadsAndFinishesWithTheOldOne()
    {
        RunningBench bench;
        FakeConsumer another;
        bench.engine->setDashboardFile(QStringLiteral("/first.qml"));
        bench.script.duringLoad = [&] {
            bench.script.duringLoad = nullptr;
            fromAnotherThread([&] {
                bench.engine->setDashboardFile(QStringLiteral("/second.qml"));
                bench.engine->addConsumer(&another);
                bench.update(77);
            });
        };
        bench.tick();
        QCOMPARE(bench.script.publications.back().vehicle.speedKmh, 77.0F);
        QCOMPARE(another.deliveries.size(), 1U);
        bench.tick();
        QCOMPARE(bench.script.calls.filter(QStringLiteral("load")),
                 QStringList({QStringLiteral("load /first.qml 480x272"),
                              QStringLiteral("load /second.qml 480x272")}));
    }

    void reloadsAFileThatWasRewritten()
    {
        const QTemporaryDir directory;
        const QString path = writeDocument(directory, "Dash.qml");
        for (const bool asleep : {false, true}) {
            RunningBench bench;
            bench.engine->setDashboardFile(path);
            bench.tick();
            QCOMPARE(bench.script.count(QStringLiteral("load")), 1);
            if (asleep)
                bench.ticks(51);
            auto *watcher = bench.engine->findChild<QFileSystemWatcher *>();
            QVERIFY(watcher != nullptr);
            QSignalSpy changes(watcher, &QFileSystemWatcher::fileChanged);
            appendTo(path);
            QTRY_COMPARE_WITH_TIMEOUT(changes.count(), 1, 30'000);
            bench.ticks(3);
            QCOMPARE(bench.script.count(QStringLiteral("load")), 2);
        }
    }

    void watchesTheNewestFileAndNoOther()
    {
        const QTemporaryDir directory;
        const QString first = writeDocument(directory, "First.qml");
        const QString second = writeDocument(directory, "Second.qml");
        EngineBench bench;
        auto *watcher = bench.engine->findChild<QFileSystemWatcher *>();
        QVERIFY(watcher != nullptr);
        bench.engine->setDashboardFile(first);
        QCOMPARE(watcher->files(), QStringList(first));
        bench.engine->setDashboardFile(second);
        QCOMPARE(watcher->files(), QStringList(second));
        bench.engine->setDashboardFile(second);
        QCOMPARE(watcher->files(), QStringList(second));
        bench.engine->setDashboardFile(directory.filePath(QStringLiteral("Missing.qml")));
        QCOMPARE(watcher->files(), QStringList());
        bench.engine->setDashboardFile(first);
        bench.engine->setDashboardFile(QString());
        QCOMPARE(watcher->files(), QStringList());
    }

    void aDocumentSetOnAnotherThreadIsWatchedOnTheEngines()
    {
        const QTemporaryDir directory;
        const QString first = writeDocument(directory, "First.qml");
        const QString second = writeDocument(directory, "Second.qml");
        EngineBench bench;
        FakeConsumer consumer;
        bench.engine->addConsumer(&consumer);
        auto *watcher = bench.engine->findChild<QFileSystemWatcher *>();
        QVERIFY(watcher != nullptr);
        const auto setElsewhere = [&](const QString &path) {
            fromAnotherThread([&] { bench.engine->setDashboardFile(path); });
        };

        setElsewhere(first);
        QCOMPARE(watcher->files(), QStringList());
        bench.freshTick(); // The document itself counts at once.
        QCOMPARE(bench.script.count(QStringLiteral("load %1 ").arg(first)), 1);
        bench.deliverQueued();
        QCOMPARE(watcher->files(), QStringList(first));

        setElsewhere(second);
        setElsewhere(first);
        bench.engine->setDashboardFile(second);
        QCOMPARE(watcher->files(), QStringList(second));
        bench.deliverQueued();
        QCOMPARE(watcher->files(), QStringList(second));

        bench.engine->setDashboardFile(first);
        setElsewhere(second);
        bench.deliverQueued();
        QSignalSpy changes(watcher, &QFileSystemWatcher::fileChanged);
        appendTo(first);
        appendTo(second);
        QTRY_COMPARE_WITH_TIMEOUT(changes.count(), 1, 30'000);
        QCOMPARE(changes[0][0].toString(), second);

        setElsewhere(QString());
        bench.deliverQueued();
        QCOMPARE(watcher->files(), QStringList());
        QVERIFY(bench.takenToRun() && bench.wakeUps.count() == 1); // No document, so dropped.
    }

    void registersConsumers()
    {
        EngineBench bench;
        FakeConsumer consumer;
        FakeConsumer stranger;
        bench.engine->addConsumer(nullptr);
        QVERIFY(!bench.engine->hasConsumers());
        bench.engine->addConsumer(&consumer);
        bench.engine->removeConsumer(nullptr);
        bench.engine->removeConsumer(&stranger);
        QVERIFY(bench.engine->hasConsumers());

        bench.engine->setDashboardFile(Document);
        bench.freshTick();
        bench.engine->addConsumer(&consumer);
        bench.freshTick();
        QCOMPARE(consumer.deliveries.size(), 2U);
        QCOMPARE(bench.script.renderCalls[1].sizeBefore, 48U); // The buffer was kept.
        bench.engine->removeConsumer(&consumer);
        QVERIFY(!bench.engine->hasConsumers());

        bench.engine->shutdown();
        bench.engine->addConsumer(&consumer);
        QVERIFY(bench.engine->hasConsumers());
        bench.engine->removeConsumer(&consumer);
        QVERIFY(!bench.engine->hasConsumers());
    }

    void afterShutdownNothingMovesAnyMore()
    {
        const QTemporaryDir directory;
        const QString path = writeDocument(directory, "Dash.qml");
        RunningBench bench;
        QVERIFY(bench.timer != nullptr);
        bench.ticks(51);
        bench.update();
        QCOMPARE(bench.wakeUps.count(), 1);
        bench.engine->shutdown();
        bench.deliverQueued(); // The start that was under way comes too late.
        QVERIFY(!bench.timer->isActive());
        bench.engine->setDashboardFile(path);
        QCOMPARE(bench.engine->findChild<QFileSystemWatcher *>()->files(), QStringList());
        bench.update();
        bench.engine->setMotionProfileName(QStringLiteral("Calm"));
        bench.engine->setTuneInfo({}, {}, {});
        QCOMPARE(bench.wakeUps.count(), 1);
        QCOMPARE(bench.script.calls, QStringList());
        QVERIFY(bench.engine->createWaitingImage(1) != nullptr);
    }

    void diesWithThingsStillQueued()
    {
        EngineBench bench;
        FakeConsumer consumer;
        bench.engine->addConsumer(&consumer);
        fromAnotherThread([&] {
            bench.engine->setDashboardFile(Document);
            bench.update();
        });
        QCOMPARE(bench.wakeUps.count(), 1);
        bench.engine.reset();
        QCOMPARE(bench.script.destroyed, 1);
        QCoreApplication::processEvents();
        QCOMPARE(consumer.deliveries.size(), 0U);
        QCOMPARE(bench.script.calls, QStringList());
    }

private:
    static QString writeDocument(const QTemporaryDir &directory, const char *name)
    {
        const QString path = directory.filePath(QString::fromLatin1(name));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write("import QtQuick 2.15\nItem {}\n") < 0)
            qFatal("no document");
        return path;
    }

    /// One write, so one event.
    static void appendTo(const QString &path)
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Append) || file.write("// more\n") < 0)
            qFatal("no document");
    }
};

QTEST_MAIN(EngineTest)
#include "EngineTest.moc"
