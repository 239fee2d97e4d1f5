#include "support/DocumentFolder.h"
#include "support/EngineRig.h"
#include "support/LogCapture.h"
#include "support/RecordBytes.h"

#include <QtCore/QFileSystemWatcher>

#include <numeric>
#include <thread>

namespace {

const QString Document = QStringLiteral("/no/such/Dash.qml");
const QString Load = QStringLiteral("load /no/such/Dash.qml 480x272");

/// A record whose bytes count up from `seed`.
template<typename Record> Record patterned(unsigned char seed)
{
    std::array<unsigned char, sizeof(Record)> bytes;
    std::iota(bytes.begin(), bytes.end(), seed);
    return recordOf<Record>(bytes);
}

template<typename Record> QByteArray bytesOf(const Record &record)
{
    return {reinterpret_cast<const char *>(&record), int{sizeof record}};
}

} // namespace

/// What the engine takes in and hands on, and when it loads, wakes and sleeps.
class EngineTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void makesRenderersOnlyWithAcceleration()
    {
        EngineRig plain(false);
        QVERIFY(plain.engine->createRenderer() == nullptr);
        const LogCapture log;
        EngineRig accelerated(true);
        QCOMPARE(log.lines, QStringList({"info: DASH: Creating renderer..."_q,
                                         "info: DASH: Renderer created"_q}));
        QVERIFY(accelerated.engine->createRenderer() != nullptr);
    }

    void publishesTheNewestRecordsWhole()
    {
        EngineRig rig(true, true);
        rig.show();
        for (const unsigned char seed : {1, 2, 3}) {
            rig.engine->updateTelemetry(patterned<VehicleTelemetry>(seed),
                                        patterned<DisplayLimits>(seed),
                                        patterned<ExtendedTelemetry>(seed), seed == 3);
        }
        rig.tick();
        const PublishedRecords &published = rig.script.publications.at(0);
        QCOMPARE(bytesOf(published.vehicle), bytesOf(patterned<VehicleTelemetry>(3)));
        QCOMPARE(bytesOf(published.limits), bytesOf(patterned<DisplayLimits>(3)));
        QCOMPARE(bytesOf(published.extended), bytesOf(patterned<ExtendedTelemetry>(3)));
        QVERIFY(published.steeringSmoothing == 0.2F);
        QVERIFY(published.useMph && !published.showMarkers && published.paused);
    }

    void namesAndTunesGoOutWithTheNextTickAndWakeNobody()
    {
        EngineRig rig;
        rig.show();
        rig.engine->setTuneInfo("Old"_q, "Old"_q, {});
        rig.engine->setTuneInfo("Motion"_q, "Heave"_q, {"Gain"_q, 1, 9, 5, true, false, true});
        rig.tick();
        rig.engine->setMotionProfileName("Rough road"_q);
        rig.tick();
        QCOMPARE(rig.wakeUps.count(), 0);
        QCOMPARE(rig.consumer.deliveries.size(), 2U);
        QCOMPARE(rig.script.publications.at(0).tune.changeCounter, 2U);
        const PublishedRecords &published = rig.script.publications.at(1);
        const TuneInfo &tune = published.tune;
        QCOMPARE(QStringList({published.motionProfileName, tune.group, tune.name, tune.valueName}),
                 QStringList({"Rough road"_q, "Motion"_q, "Heave"_q, "Gain"_q}));
        QVERIFY(tune.valueMin == 1 && tune.valueMax == 9 && tune.valueCurrent == 5);
        QVERIFY(tune.valueIsInteger && !tune.reservedFlagA && tune.reservedFlagB);
        QVERIFY(!published.useMph && !published.paused);
        QCOMPARE(tune.changeCounter, 2U);
    }

    void holdsNoLockWhileItLoadsAndPublishes()
    {
        RunningEngineRig rig;
        FakeConsumer another;
        rig.engine->setDashboardFile("/first.qml"_q);
        rig.script.duringLoad = [&] {
            rig.script.duringLoad = nullptr;
            std::thread([&] {
                rig.engine->setDashboardFile("/second.qml"_q);
                rig.engine->addConsumer(&another);
                rig.update(11);
            }).join();
        };
        rig.script.duringPublish = [&] {
            rig.script.duringPublish = nullptr;
            std::thread([&] { rig.update(77); }).join();
        };
        rig.tick(2);
        QCOMPARE(rig.script.calls.filter("load"_q),
                 QStringList({"load /first.qml 480x272"_q, "load /second.qml 480x272"_q}));
        QCOMPARE(rig.script.publications.at(1).vehicle.speedKmh, 11.0F);
        QCOMPARE(rig.script.publications.at(2).vehicle.speedKmh, 77.0F);
        QCOMPARE(another.deliveries.size(), 2U);
    }

    void registersConsumers()
    {
        EngineRig rig;
        FakeConsumer stranger;
        rig.engine->addConsumer(nullptr);
        QVERIFY(!rig.engine->hasConsumers());
        for (int i = 0; i < 2; ++i) {
            rig.show(); // Adding it again keeps its buffer.
            rig.freshTick();
            QCOMPARE(rig.script.renderCalls.back().sizeBefore, i == 0 ? 0U : 48U);
        }
        rig.engine->removeConsumer(nullptr);
        rig.engine->removeConsumer(&stranger);
        QVERIFY(rig.engine->hasConsumers());
        rig.engine->removeConsumer(&rig.consumer);
        QVERIFY(!rig.engine->hasConsumers());
    }

    void wakesOnTheFirstUpdateAndLoadsPublishesAndDeliversInOneTick()
    {
        EngineRig rig;
        rig.engine->setDashboardFile(Document);
        rig.update(); // Dropped, since nobody could see it.
        rig.show();
        rig.engine->setDashboardFile(QString());
        rig.update();
        rig.show();
        rig.tick();
        QCOMPARE(rig.script.calls, QStringList(Load));
        rig.update(10, true); // A paused update is stored, but wakes nobody.
        QCOMPARE(rig.wakeUps.count(), 0);
        rig.update(20);
        rig.update(30);
        QCOMPARE(rig.wakeUps.count(), 2); // It counts as running only once the first has arrived.
        rig.deliverQueued();
        rig.update(40);
        QCOMPARE(rig.wakeUps.count(), 2);
        rig.engine->setDashboardFile(Document);
        rig.tick(2);
        QCOMPARE(rig.script.calls, QStringList({Load, Load, "publish"_q, "render 4x3"_q}));
        QCOMPARE(rig.consumer.deliveries.size(), 1U);
    }

    void theTimerRunsTheTickAndASecondStartLeavesItAlone()
    {
        RunningEngineRig rig;
        while (rig.timer->remainingTime() > 20)
            std::this_thread::yield();
        rig.start();
        QVERIFY(rig.timer->remainingTime() <= 20);
        rig.update();
        QTRY_COMPARE(rig.script.calls, QStringList({"publish"_q, "render 4x3"_q}));
    }

    void fallsAsleepAtTheFiftyFirstTickWithoutNews()
    {
        for (const bool acceleration : {true, false}) {
            RunningEngineRig rig(acceleration);
            rig.tick(50);
            QVERIFY(rig.timer->isActive());
            rig.tick();
            QVERIFY(!rig.timer->isActive());
            QCOMPARE(rig.consumer.deliveries.size(), 1U);

            // The count stays full until something new comes.
            rig.start();
            rig.tick();
            QVERIFY(!rig.timer->isActive());
            rig.update();
            rig.deliverQueued();
            rig.tick(51);
            QVERIFY(rig.timer->isActive());
            rig.tick();

            // Or a new document, which doesn't start the timer itself.
            rig.engine->setDashboardFile(Document);
            rig.deliverQueued();
            QVERIFY(!rig.timer->isActive());
            rig.start();
            rig.tick(50);
            QVERIFY(rig.timer->isActive());
        }
    }

    void everyReasonToStopPutsItToSleep()
    {
        const LogCapture log;
        for (const QString &reason : {"no document"_q, "failed load"_q, "no consumer"_q}) {
            RunningEngineRig rig;
            rig.update();
            rig.script.loads = reason != "failed load"_q;
            rig.engine->setDashboardFile(reason == "no document"_q ? QString() : Document);
            if (reason == "no consumer"_q)
                rig.engine->removeConsumer(&rig.consumer);
            rig.tick();
            QVERIFY(!rig.timer->isActive());
            // Without consumers it still publishes what it has.
            QCOMPARE(rig.script.count("publish"_q), reason == "no consumer"_q ? 1 : 0);
            rig.script.loads = true;
            rig.show();
            rig.update();
            rig.deliverQueued();
            QVERIFY(rig.timer->isActive());
        }
    }

    void aFailedLoadIsLoggedOnceAndNotTriedAgain()
    {
        RunningEngineRig rig;
        rig.script.loads = false;
        rig.script.errors = QStringList({"Dash.qml:3 x is odd"_q, "second  line"_q});
        const QStringList lines(
            {"critical: Dashboard: Failed to load: "_q + QDir::toNativeSeparators(Document),
             "critical: Dash.qml:3 x is odd"_q, "critical: second  line"_q});
        const LogCapture log;
        rig.engine->setDashboardFile(Document);
        rig.freshTick();
        QCOMPARE(log.critical(), lines);
        rig.freshTick(); // From here on consumers get the renderer's picture of the errors.
        QCOMPARE(log.critical(), lines);
        QCOMPARE(rig.script.calls, QStringList({Load, "publish"_q, "render 4x3"_q}));
        rig.engine->setDashboardFile(Document); // The same again is tried again.
        rig.tick();
        QCOMPARE(log.critical(), lines + lines);
    }

    void loadsARewrittenFileAgainAwakeOrAsleep()
    {
        const DocumentFolder folder;
        const QString path = folder.write("Dash.qml"_q, "Item {}");
        for (const int ticks : {1, 52}) {
            RunningEngineRig rig;
            rig.engine->setDashboardFile(path);
            rig.tick(ticks);
            auto *watcher = rig.engine->findChild<QFileSystemWatcher *>();
            QSignalSpy changes(watcher, &QFileSystemWatcher::fileChanged);
            folder.write("Dash.qml"_q, "Item { id: root }");
            QTRY_VERIFY_WITH_TIMEOUT(changes.count() > 0, 30'000);
            rig.tick();
            QVERIFY(rig.script.count("load"_q) > 1);
        }
    }

    void watchesTheNewestFileOrFolderAndNoOther()
    {
        const DocumentFolder folder;
        const QString first = folder.write("First.qml"_q, "Item {}");
        const QString second = folder.write("Second.qml"_q, "Item {}");
        EngineRig rig;
        auto *watcher = rig.engine->findChild<QFileSystemWatcher *>();
        const auto setElsewhere = [&rig](const QString &path) {
            std::thread([&] { rig.engine->setDashboardFile(path); }).join();
        };
        const auto watched = [&] { return watcher->files() + watcher->directories(); };
        for (const QString &path : {first, second, second, folder.path(), first}) {
            rig.engine->setDashboardFile(path);
            QCOMPARE(watched(), QStringList(path));
        }
        // Set on another thread, it is watched on the engine's.
        setElsewhere(folder.filePath("Missing.qml"_q));
        QCOMPARE(watched(), QStringList(first));
        rig.deliverQueued();
        QCOMPARE(watched(), QStringList());
        setElsewhere(second);
        setElsewhere(first);
        rig.deliverQueued();
        QCOMPARE(watched(), QStringList(first));
    }

    void afterShutdownNothingMovesAnyMore()
    {
        RunningEngineRig rig;
        rig.engine->shutdown();
        QVERIFY(!rig.timer->isActive());
        rig.start(); // One that was under way comes too late.
        QVERIFY(!rig.timer->isActive());
        rig.engine->setDashboardFile(QCoreApplication::applicationFilePath());
        QVERIFY(rig.engine->findChild<QFileSystemWatcher *>()->files().isEmpty());
        rig.update();
        QCOMPARE(rig.wakeUps.count(), 0);
    }

    void diesWithThingsStillQueued()
    {
        EngineRig rig;
        std::thread([&] { rig.show(); }).join();
        rig.update();
        rig.engine.reset();
        QCoreApplication::processEvents();
        QCOMPARE(rig.consumer.asked, QStringList());
    }
};

QTEST_MAIN(EngineTest)
#include "EngineTest.moc"
