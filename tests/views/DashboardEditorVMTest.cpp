#include "support/LogCapture.h"
#include "views/EditorBench.h"

#include <QtCore/QMetaType>
#include <QtTest/QtTest>

#include <limits>

namespace {

QString loading(const QString &path)
{
    return "load "_q + QDir::toNativeSeparators(path) + " 480x272"_q;
}

constexpr std::uint32_t Boxes = 0x5150;

template<typename Record> bool sameBytes(const Record &a, const Record &b)
{
    const auto bytes = [](const Record &record) {
        return QByteArray(reinterpret_cast<const char *>(&record), sizeof record);
    };
    return bytes(a) == bytes(b);
}

} // namespace

class DashboardEditorVMTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void beginsWithNothingLoadedAndItsTimerStopped()
    {
        EditorBench bench;
        bench.make();
        QCOMPARE(bench.engine.calls, QStringList({"renderer"_q}));
        QCOMPARE(bench.script().calls, QStringList());
        QVERIFY(bench.timer() != nullptr && !bench.timer()->isActive());
        QCOMPARE(bench.model->property("path").toString(), QString());
        QCOMPARE(bench.model->property("dashboardFields").toString(), QString());
        QCOMPARE(bench.storedPath(), "nothing"_q);

        IViewModel &view = *bench.model;
        QCOMPARE(view.asQObject(), bench.model.get());
        QCOMPARE(view.viewFlagA(), false);
        QCOMPARE(view.viewFlagB(), true);
    }

    void takesUpTheRecentFileIfItIsStillThere()
    {
        EditorBench bench;
        const QString file = bench.file();
        EditorBench::storePath(file);
        bench.make();
        QCOMPARE(bench.model->currentPath(), file);
        QCOMPARE(bench.script().calls, QStringList());

        QVERIFY(QFile::remove(file));
        bench.make();
        QCOMPARE(bench.model->currentPath(), QString());
        QCOMPARE(bench.storedPath(), file);
        bench.model->openCode();
        QVERIFY(bench.navigation.shown.empty());
    }

    void theContextStartsThePreview()
    {
        EditorBench bench;
        bench.script().fields = {"dash_b"_q, "dash_a"_q, "Zeta"_q, "dash_A"_q};
        bench.make();
        const QSignalSpy changes(bench.model.get(), &DashboardEditorVM::previewChanged);
        bench.model->initContext(nullptr);
        QCOMPARE(bench.script().calls, QStringList());
        bench.initContext();
        QCOMPARE(bench.script().calls, QStringList({loading({}), "publish"_q}));
        QCOMPARE(changes.count(), 1);
        QVERIFY(bench.timer()->isActive());
        QCOMPARE(bench.model->fieldNames(), "Zeta\ndash_A\ndash_a\ndash_b"_q);
        QVERIFY(!bench.model->setProperty("dashboardFields", "mine"_q));
        QCOMPARE(bench.request().size(), QSize(480, 272));
    }

    void theTimerPublishes()
    {
        EditorBench bench;
        bench.run();
        const QSignalSpy changes(bench.model.get(), &DashboardEditorVM::previewChanged);
        QTRY_VERIFY_WITH_TIMEOUT(changes.count() >= 3, 30'000);
        QVERIFY(bench.script().count("publish"_q) >= 3);
        QCOMPARE(bench.script().count("load"_q), 0);
        QCOMPARE(bench.script().count("render"_q), 0);
    }

    void settingThePathLoadsWatchesAndStores()
    {
        EditorBench bench;
        bench.run();
        const QSignalSpy pathChanges(bench.model.get(), &DashboardEditorVM::pathChanged);
        const QSignalSpy changes(bench.model.get(), &DashboardEditorVM::previewChanged);
        const QString file = bench.file();
        QVERIFY(bench.model->setProperty("path", file));
        QCOMPARE(bench.takeCalls(), QStringList({loading(file), "publish"_q}));
        QCOMPARE(pathChanges.count(), 1);
        QCOMPARE(changes.count(), 1);
        QCOMPARE(bench.storedPath(), QDir::toNativeSeparators(file));

        bench.model->setPath(file);
        bench.model->setPath(QDir::fromNativeSeparators(file));
        QCOMPARE(bench.takeCalls(), QStringList());
        QCOMPARE(pathChanges.count(), 1);

        bench.model->setPath({});
        QCOMPARE(bench.takeCalls(), QStringList({loading({}), "publish"_q}));
        QCOMPARE(bench.storedPath(), QString());
        bench.model->openCode();
        QVERIFY(bench.navigation.shown.empty());
    }

    void anArgumentBeforeTheContextLoadsTwice()
    {
        EditorBench bench;
        const QString file = bench.file();
        bench.make();
        bench.model->setArgument(this, -1, file);
        QCOMPARE(bench.takeCalls(), QStringList({loading(file), "publish"_q}));
        bench.initContext();
        QCOMPARE(bench.takeCalls(), QStringList({loading(file), "publish"_q}));
        bench.model->setArgument(nullptr, 0, QVariant());
        bench.model->setArgument(nullptr, 0, QString());
        QCOMPARE(bench.takeCalls(), QStringList());
        QCOMPARE(bench.model->currentPath(), QDir::toNativeSeparators(file));
    }

    void aPathThatNamesNoFileIsLoadedAndDoesNoHarm()
    {
        EditorBench bench;
        bench.run();
        for (const QString &path :
             {QString(QChar(QChar::Null)), "/tmp/a\0b.qml"_q, "/"_q, "relative.qml"_q,
              ":/dash/qml/DashboardWindow.qml"_q, "http://host/Dash.qml"_q, "a\nb"_q,
              QString(100'000, u'x'), QString(QChar(0xD800))}) {
            const LogCapture log;
            bench.model->setPath(path);
            QCOMPARE(bench.takeCalls(), QStringList({loading(path), "publish"_q}));
            bench.model->openCode();
            QVERIFY(bench.navigation.shown.empty());
            QCOMPARE(log.lines, QStringList());
        }
        const QString file = bench.file();
        bench.model->setPath(file);
        bench.model->openCode();
        QCOMPARE(bench.navigation.shown.size(), 1U);
    }

    void anArgumentOfAnyTypeIsItsText()
    {
        EditorBench bench;
        bench.run();
        int texts = 0;
        for (int type = 0; type <= QMetaType::HighestInternalId; ++type) {
            if (!QMetaType::isRegistered(type) || type == QMetaType::Void)
                continue;
            bench.model->setPath("before"_q);
            const QVariant value(type, nullptr);
            bench.model->setArgument(nullptr, 0, value);
            const QString text = QVariant(value).toString();
            texts += text.isEmpty() ? 0 : 1;
            QCOMPARE(bench.model->currentPath(), text.isEmpty() ? "before"_q : text);
        }
        QVERIFY(texts > 5);
        bench.model->setArgument(nullptr, 0, 5);
        QCOMPARE(bench.model->currentPath(), "5"_q);
        bench.model->setArgument(nullptr, 0, QByteArray("/tmp/A.qml"));
        QCOMPARE(bench.model->currentPath(), QDir::toNativeSeparators("/tmp/A.qml"_q));
        bench.model->setArgument(nullptr, 0, QVariantMap{{"path"_q, "/tmp/B.qml"_q}});
        bench.model->setArgument(nullptr, 0, QStringList{"/a"_q, "/b"_q});
        QCOMPARE(bench.model->currentPath(), QDir::toNativeSeparators("/tmp/A.qml"_q));
    }

    void pedalsAndRpmAreClamped_data()
    {
        QTest::addColumn<int>("given");
        QTest::addColumn<int>("stored");
        constexpr int Least = std::numeric_limits<int>::min();
        constexpr int Largest = std::numeric_limits<int>::max();
        const std::pair<int, int> rows[] = {{Least, 0}, {-1, 0},    {0, 0},     {1, 1},
                                            {100, 100}, {101, 100}, {150, 100}, {Largest, 100}};
        for (const auto &[given, stored] : rows)
            QTest::addRow("%d", given) << given << stored;
    }
    void pedalsAndRpmAreClamped()
    {
        QFETCH(int, given);
        QFETCH(int, stored);
        EditorBench bench;
        bench.run();
        bench.model->setGasPedal(given);
        QCOMPARE(int(bench.published().vehicle.gasPedalPercent), stored);
        bench.model->setBrakePedal(given);
        QCOMPARE(int(bench.published().vehicle.brakePedalPercent), stored);
        bench.model->setClutchPedal(given);
        QCOMPARE(int(bench.published().vehicle.clutchPedalPercent), stored);
        bench.model->setRotation(given);
        const VehicleTelemetry vehicle = bench.published().vehicle;
        QCOMPARE(int(vehicle.steeringPercent), given);
        QCOMPARE(int(vehicle.gasPedalPercent), stored);
    }

    void rpmStaysBetweenNothingAndItsLimit()
    {
        EditorBench bench;
        bench.run();
        const auto set = [&bench](int value, int limit) {
            bench.model->setRpm(value, limit);
            const VehicleTelemetry vehicle = bench.published().vehicle;
            // Copied first: nothing may refer to the fields of a packed record.
            const std::uint32_t rpm = vehicle.rpm;
            const std::uint32_t maxRpm = vehicle.maxRpm;
            return std::pair(rpm, maxRpm);
        };
        using Pair = std::pair<std::uint32_t, std::uint32_t>;
        QVERIFY(set(5000, 8000) == Pair(5000, 8000));
        QVERIFY(set(9000, 8000) == Pair(8000, 8000));
        QVERIFY(set(-5, 8000) == Pair(0, 8000));
        QVERIFY(set(100, 0) == Pair(0, 0));
        QVERIFY(set(100, -7) == Pair(0, 0xFFFFFFF9U));
    }

    void boxesReachTheRendererTogetherWithTheNextStep()
    {
        EditorBench bench;
        bench.run();
        const PublishedRecords before = bench.published();
        QCOMPARE(before.steeringSmoothing, 1.0F);
        QVERIFY(!before.useMph && !before.showMarkers && !before.paused);
        QCOMPARE(before.vehicle.statusFlags & Boxes, 0U);
        QVERIFY(before.motionProfileName.isEmpty());
        bench.takeCalls();

        bench.model->setUseMph(true);
        bench.model->setShowMarkets(true);
        bench.model->setPaused(true);
        bench.model->setSystemPanel(true);
        QCOMPARE(bench.takeCalls(), QStringList());
        const PublishedRecords after = bench.published();
        QVERIFY(after.useMph && after.showMarkers && after.paused);
        QCOMPARE(after.motionProfileName, "Demo Profile"_q);
        QCOMPARE(after.tune.changeCounter, 1U);
        QCOMPARE(int(after.vehicle.tyreWearPercent[0]), int(before.vehicle.tyreWearPercent[0]) + 1);
    }

    void everyStepIsPublishedWhole()
    {
        EditorBench bench;
        bench.run();
        EditorTelemetry expected;
        expected.step(); // The context's.
        for (int step = 0; step < 600; ++step) {
            expected.systemPanel = step % 100 < 50;
            bench.model->setSystemPanel(expected.systemPanel);
            expected.step();
            const PublishedRecords actual = bench.published();
            QVERIFY(sameBytes(actual.vehicle, expected.vehicle));
            QVERIFY(sameBytes(actual.limits, expected.limits));
            QVERIFY(sameBytes(actual.extended, expected.extended));
            QCOMPARE(actual.motionProfileName, expected.motionProfileName());
            QCOMPARE(actual.tune.changeCounter, expected.tune.changeCounter);
            QCOMPARE(actual.tune.valueCurrent, expected.tune.valueCurrent);
            QCOMPARE(actual.tune.name, expected.tune.name);
        }
    }

    void eachFlagHasItsBit()
    {
        EditorBench bench;
        bench.run();
        const std::pair<const char *, std::uint32_t> flags[] = {
            {"setYellowFlag", 0x1000},        {"setBlueFlag", 0x100},    {"setBlackFlag", 0x40},
            {"setBlackAndWhiteFlag", 0x4000}, {"setDrsAvailable", 0x10},
        };
        for (const auto &[setter, bit] : flags) {
            QVERIFY(QMetaObject::invokeMethod(bench.model.get(), setter, Q_ARG(bool, true)));
            QCOMPARE(bench.published().vehicle.statusFlags & Boxes, bit);
            QVERIFY(QMetaObject::invokeMethod(bench.model.get(), setter, Q_ARG(bool, false)));
        }
        QCOMPARE(bench.published().vehicle.statusFlags & Boxes, 0U);
    }

    void aHiddenWindowStopsTheTelemetry()
    {
        EditorBench bench;
        bench.run();
        QWindow window;
        bench.model->setWindow(&window);
        window.show();
        QVERIFY(bench.timer()->isActive());
        window.hide();
        QVERIFY(!bench.timer()->isActive());
        QWindow second;
        bench.model->setWindow(&second);
        window.show();
        QVERIFY(!bench.timer()->isActive());
        second.show();
        QVERIFY(bench.timer()->isActive());
        bench.model->setWindow(nullptr);
        second.hide();
        QVERIFY(bench.timer()->isActive());
    }

    void okClosesTheWindowAndNothingElse()
    {
        EditorBench bench;
        bench.run();
        bench.model->ok();
        auto *window = new QWindow;
        const QPointer<QWindow> watch(window);
        bench.model->setWindow(window);
        window->show();
        bench.model->ok();
        QVERIFY(!watch.isNull() && !window->isVisible());
        QVERIFY(!bench.timer()->isActive());
        QTRY_VERIFY_WITH_TIMEOUT(watch.isNull(), 30'000);
        bench.model->ok();
        QCOMPARE(bench.storedPath(), "nothing"_q);
    }

    void openCodeAsksTheHost()
    {
        EditorBench bench;
        const QString file = bench.file("/My Dash/Dash.qml");
        bench.make();
        bench.model->openCode();
        QVERIFY(bench.navigation.shown.empty());
        bench.model->setPath(file);
        QVERIFY(QMetaObject::invokeMethod(bench.model.get(), "openCode"));
        QCOMPARE(bench.navigation.shown.size(), 1U);
        const FakeNavigation::Shown &shown = bench.navigation.shown.front();
        QVERIFY(shown.context == nullptr);
        QCOMPARE(shown.target, "StartVisualStudioCode"_q);
        const QVariantMap expected{{"path"_q, QDir::toNativeSeparators(file)},
                                   {"dir"_q, bench.home.path("/My Dash")}};
        QCOMPARE(shown.argument.toMap(), expected);

        const QString other = bench.file("/Other.qml");
        bench.model->setPath(other);
        bench.model->openCode();
        QCOMPARE(bench.navigation.shown.back().argument.toMap().value("path"_q).toString(),
                 QDir::toNativeSeparators(other));

        DashboardEditorVM alone(&bench.engine, nullptr);
        alone.openCode();
        QCOMPARE(bench.navigation.shown.size(), 2U);
    }

    void withoutARendererTheRestGoesOn()
    {
        EditorBench bench(false);
        bench.make();
        const QSignalSpy changes(bench.model.get(), &DashboardEditorVM::previewChanged);
        bench.initContext();
        QCOMPARE(bench.model->fieldNames(), "Not available without hardware acceleration"_q);
        QCOMPARE(changes.count(), 1);
        QWindow window;
        bench.model->setWindow(&window);
        window.show();
        QVERIFY(!bench.timer()->isActive());
        bench.model->setPath(bench.file());
        bench.model->setRpm(1, 2);
        bench.tick();
        QCOMPARE(changes.count(), 3);
        QCOMPARE(bench.script().calls, QStringList());
        QCOMPARE(bench.request(960).size(), QSize(960, 544));
    }
};

QTEST_MAIN(DashboardEditorVMTest)
#include "DashboardEditorVMTest.moc"
