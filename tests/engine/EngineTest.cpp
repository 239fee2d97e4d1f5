#include "support/LogCapture.h"
#include "support/RecordBytes.h"
#include "support/RunningEngineRig.h"

#include <QtCore/QFileSystemWatcher>
#include <QtTest/QtTest>

#include <cstring>

namespace {

const QString Document = QStringLiteral("/no/such/Dash.qml");

/// Records whose every byte tells its place and `seed`.
RecordBytes patterned(int seed)
{
    RecordBytes records;
    const auto fill = [&seed](auto &bytes) {
        for (unsigned char &byte : bytes)
            byte = static_cast<unsigned char>(seed += 7);
    };
    fill(records.vehicle);
    fill(records.limits);
    fill(records.extended);
    return records;
}

template<typename Record> QByteArray bytesOf(const Record &record)
{
    return {reinterpret_cast<const char *>(&record), int{sizeof(Record)}};
}

} // namespace

class EngineTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void presentsItselfToQt()
    {
        const EngineRig bench;
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
        EngineRig plain(false);
        QCOMPARE(log.lines, QStringList());
        QVERIFY(plain.engine->createRenderer() == nullptr);
        QCOMPARE(plain.script.made, 0);

        EngineRig accelerated(true);
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
        EngineRig bench;
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

    void publishesTheNewestRecordsWhole()
    {
        for (const bool useMph : {false, true}) {
            EngineRig bench(true, useMph);
            FakeConsumer consumer;
            bench.engine->setDashboardFile(Document);
            bench.engine->addConsumer(&consumer);
            for (const int seed : {1, 2, 3}) {
                const RecordBytes records = patterned(seed);
                bench.engine->updateTelemetry(records.vehicleRecord(), records.limitsRecord(),
                                              records.extendedRecord(), seed == 3);
            }
            bench.tick();
            QCOMPARE(bench.script.publications.size(), 1U);
            const PublishedRecords &published = bench.script.publications.front();
            const RecordBytes newest = patterned(3);
            QCOMPARE(bytesOf(published.vehicle), bytesOf(newest.vehicle));
            QCOMPARE(bytesOf(published.limits), bytesOf(newest.limits));
            QCOMPARE(bytesOf(published.extended), bytesOf(newest.extended));
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
        EngineRig bench;
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
        EngineRig bench;
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
        const PublishedRecords published = bench.script.publications[0];
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

        bench.engine->setTuneInfo({}, {}, {});
        bench.tick();
        QCOMPARE(bench.script.publications.size(), 3U);
        QCOMPARE(bench.script.publications[2].tune.changeCounter, 3U);
    }

    void holdsNoLockWhileItPublishes()
    {
        RunningEngineRig bench;
        bench.script.duringPublish = [&bench] {
            bench.script.duringPublish = nullptr;
            fromAnotherThread([&bench] { bench.update(77); });
        };
        bench.update(11);
        bench.tick();
        QCOMPARE(bench.script.publications.back().vehicle.speedKmh, 11.0F);
        bench.tick();
        QCOMPARE(bench.script.publications.back().vehicle.speedKmh, 77.0F);
    }

    void registersConsumers()
    {
        EngineRig bench;
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
        RunningEngineRig bench;
        QVERIFY(bench.timer != nullptr);
        bench.ticks(51);
        bench.update();
        QCOMPARE(bench.wakeUps.count(), 1);
        bench.engine->shutdown();
        bench.deliverQueued(); // The start that was under way comes too late.
        QVERIFY(!bench.timer->isActive());
        bench.engine->setDashboardFile(QCoreApplication::applicationFilePath());
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
        EngineRig bench;
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

    void theTimerDiesBeforeTheRenderer()
    {
        RunningEngineRig bench;
        const QPointer<QTimer> timer(bench.timer);
        QVERIFY(timer != nullptr);
        bool outlived = true;
        bench.script.duringDestruction = [&] { outlived = timer != nullptr; };
        bench.engine.reset();
        QCOMPARE(bench.script.destroyed, 1);
        QVERIFY(!outlived);
    }
};

QTEST_MAIN(EngineTest)
#include "EngineTest.moc"
