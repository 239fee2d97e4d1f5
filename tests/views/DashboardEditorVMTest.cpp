#include "support/LogCapture.h"
#include "support/PaintedText.h"
#include "support/Shouter.h"
#include "views/EditorBench.h"

#include <QtTest/QtTest>

#include <array>
#include <atomic>
#include <limits>
#include <new>
#include <stdexcept>
#include <thread>

namespace {

constexpr int Largest = std::numeric_limits<int>::max();

/// The calls of the renderer that a load makes.
QStringList loading(const QString &path)
{
    return {"load "_q + QDir::toNativeSeparators(path) + " 480x272"_q, "publish"_q};
}

QString storedPath()
{
    const QSettings settings("Orvalentix"_q, "Halvorin"_q);
    return settings.value("DashboardEditor/RecentQmlFile"_q).toString();
}

} // namespace

class DashboardEditorVMTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void takesUpTheRecentFileIfItIsStillThere()
    {
        EditorBench bench;
        const QString file = bench.file();
        bench.make();
        bench.model->setPath(file);
        bench.make();
        QCOMPARE(bench.model->property("path").toString(), QDir::toNativeSeparators(file));
        QVERIFY(QFile::remove(file));
        bench.make();
        QCOMPARE(bench.model->currentPath(), QString());
        QCOMPARE(storedPath(), QDir::toNativeSeparators(file));
    }

    void theContextStartsThePreview()
    {
        EditorBench bench;
        bench.engine.script.fields = {"dash_b"_q, "dash_a"_q, "Zeta"_q};
        bench.make();
        bench.model->initContext(nullptr);
        QCOMPARE(bench.takeCalls(), QStringList());
        QVERIFY(!bench.timer()->isActive());
        bench.model->initContext(bench.qml->rootContext());
        QCOMPARE(bench.takeCalls(), loading({}));
        QCOMPARE(bench.model->property("dashboardFields").toString(), "Zeta\ndash_a\ndash_b"_q);
        QCOMPARE(bench.published().steeringSmoothing, 1.0F);
        const QSignalSpy changes(bench.model.get(), &DashboardEditorVM::previewChanged);
        QTRY_VERIFY_WITH_TIMEOUT(changes.count() > 2, 30'000);
    }

    void aPathIsLoadedStoredAndOpenedAsCode()
    {
        EditorBench bench;
        bench.run();
        const QSignalSpy pathChanges(bench.model.get(), &DashboardEditorVM::pathChanged);
        const QString file = bench.file("/My Dash/Dash.qml");
        bench.model->setPath(bench.file("/Other.qml"));
        bench.takeCalls();
        QVERIFY(bench.model->setProperty("path", file));
        bench.model->setArgument(this, -1, QDir::toNativeSeparators(file)); // Nothing new.
        bench.model->setArgument(nullptr, 0, QVariant());
        QCOMPARE(bench.takeCalls(), loading(file));
        QCOMPARE(storedPath(), QDir::toNativeSeparators(file));
        QCOMPARE(pathChanges.count(), 2);
        bench.model->openCode();
        const QVariantMap argument{{"path"_q, QDir::toNativeSeparators(file)},
                                   {"dir"_q, bench.home.path("/My Dash")}};
        QCOMPARE(bench.navigation.shown.size(), 1U);
        QVERIFY(bench.navigation.shown[0] ==
                std::tuple(nullptr, "StartVisualStudioCode"_q, argument));
        DashboardEditorVM(&bench.engine, nullptr).openCode();
    }

    void aPathThatNamesNoFileIsLoadedAndDoesNoHarm()
    {
        EditorBench bench;
        bench.run();
        const LogCapture log;
        for (const QString &path :
             {"/tmp/a\0b.qml"_q, "/"_q, "relative.qml"_q, "http://host/D.qml"_q,
              QString(100'000, u'x'), QString(QChar(0xD800)), QString()}) {
            bench.model->setPath(path);
            QCOMPARE(bench.takeCalls(), loading(path));
            bench.model->openCode();
        }
        QVERIFY(bench.navigation.shown.empty());
        QCOMPARE(log.lines, QStringList());
    }

    void pedalsAndRpmAreClamped()
    {
        EditorBench bench;
        bench.run();
        for (const auto &[given, limit, pedal, rpm] : {std::array{-Largest, 8000, 0, 0},
                                                       {-1, 8000, 0, 0},
                                                       {42, 8000, 42, 42},
                                                       {101, 100, 100, 100},
                                                       {Largest, 8000, 100, 8000},
                                                       {100, -7, 100, 0}}) {
            bench.model->setBrakePedal(given);
            bench.model->setRotation(given);
            bench.model->setRpm(given, limit);
            const VehicleTelemetry vehicle = bench.published().vehicle;
            QCOMPARE(QVector<int>({vehicle.brakePedalPercent, vehicle.steeringPercent,
                                   int(vehicle.rpm), int(vehicle.maxRpm)}),
                     QVector<int>({pedal, given, rpm, limit}));
        }
    }

    void telemetryStandsStillWhileTheWindowIsHidden()
    {
        EditorBench bench;
        bench.run();
        const QPointer<QWindow> window = std::make_unique<QWindow>().release();
        bench.model->setWindow(window);
        window->hide();
        window->show();
        QVERIFY(bench.timer()->isActive());
        bench.model->ok();
        QVERIFY(!window->isVisible() && !bench.timer()->isActive());
        QTRY_VERIFY_WITH_TIMEOUT(window.isNull(), 30'000);
        bench.model->ok();
    }

    void withoutARendererTheMessageStandsInThePreview()
    {
        EditorBench bench(false);
        const Shouter shouter("DashboardEditorVM");
        bench.run();
        QCOMPARE(bench.model->fieldNames(), "NOT AVAILABLE WITHOUT HARDWARE ACCELERATION"_q);
        for (const auto &[width, height, font] :
             {std::array{480, 272, 19}, {25, 14, 10}, {275, 155, 11}, {854, 483, 34}}) {
            QSize size;
            QCOMPARE(bench.request(width, &size),
                     paintedText(width, height, "DASHBOARD REQUIRES HARDWARE ACCELERATION"_q, font,
                                 Qt::AlignCenter | Qt::TextWordWrap));
            QCOMPARE(size, QSize(width, height));
        }
        QCOMPARE(bench.request(-1).size(), QSize(480, 272));
        QVERIFY(bench.request(Largest).isNull());

        const QSignalSpy changes(bench.model.get(), &DashboardEditorVM::previewChanged);
        QWindow window;
        bench.model->setWindow(&window);
        window.show();
        QVERIFY(!bench.timer()->isActive());
        bench.model->setPath(bench.file());
        QCOMPARE(changes.count(), 1);
    }

    void thePreviewIsRenderedAtTheRequestedWidth()
    {
        EditorBench bench;
        bench.run();
        bench.engine.script.bytes = 4; // The largest would be too much for a test.
        for (const auto &[width, rendered] : {std::pair(0, QSize(480, 272)),
                                              {-1, QSize(480, 272)},
                                              {1, QSize(1, 0)},
                                              {854, QSize(854, 483)},
                                              {Largest, QSize(Largest, 1'216'907'392)}}) {
            QSize size;
            QVERIFY(bench.request(width, &size).isNull());
            const RenderCall &call = bench.engine.script.renderCalls.back();
            QCOMPARE(QSize(call.width, call.height), rendered);
            QCOMPARE(size, QSize(480, 272));
        }
    }

    void aFailureGivesOnePixelUntilTheNextSuccess()
    {
        EditorBench bench;
        bench.run();
        RendererScript &script = bench.engine.script;
        const std::function<void()> failures[] = {[&] { script.renders = false; },
                                                  [] { throw std::bad_alloc(); },
                                                  [] { throw std::length_error(""); }};
        for (const auto &failure : failures) {
            script.duringRender = failure;
            QCOMPARE(bench.request(48).size(), QSize(1, 1));
            script.duringRender = [&] { script.renders = true; };
            QCOMPARE(bench.request(48).size(), QSize(48, 27));
        }
        script.bytes = frameBytes(48, 27) - 1;
        script.fill = 9;
        QCOMPARE(bench.request(48).pixel(47, 26), 0x01010101U); // The last whole picture stands.
    }

    // A dropped lock shows best under the thread sanitizer.
    void theEndWaitsForARequestThatIsRendering()
    {
        EditorBench bench;
        bench.run();
        std::atomic<bool> rendering{false};
        int ended = 0;
        bench.engine.script.duringRender = [&] {
            rendering = true;
            std::this_thread::yield();
            ended += bench.engine.script.destroyed;
        };
        std::thread other([&] {
            while (bench.request().size() != QSize(1, 1)) {}
        });
        while (!rendering)
            std::this_thread::yield();
        bench.model.reset();
        other.join();
        QCOMPARE(ended, 0);
    }
};

QTEST_MAIN(DashboardEditorVMTest)
#include "DashboardEditorVMTest.moc"
