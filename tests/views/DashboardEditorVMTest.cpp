#include "support/LogCapture.h"
#include "support/PaintedText.h"
#include "support/Shouter.h"
#include "views/EditorRig.h"

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
        EditorRig rig;
        const QString file = rig.file();
        rig.make();
        rig.model->setPath(file);
        rig.make();
        QCOMPARE(rig.model->property("path").toString(), QDir::toNativeSeparators(file));
        QVERIFY(QFile::remove(file));
        rig.make();
        QCOMPARE(rig.model->currentPath(), QString());
        QCOMPARE(storedPath(), QDir::toNativeSeparators(file));
    }

    void theContextStartsThePreview()
    {
        EditorRig rig;
        rig.engine.script.fields = {"dash_b"_q, "dash_a"_q, "Zeta"_q};
        rig.make();
        rig.model->initContext(nullptr);
        QCOMPARE(rig.takeCalls(), QStringList());
        QVERIFY(!rig.timer()->isActive());
        rig.model->initContext(rig.qml->rootContext());
        QCOMPARE(rig.takeCalls(), loading({}));
        QCOMPARE(rig.model->property("dashboardFields").toString(), "Zeta\ndash_a\ndash_b"_q);
        QCOMPARE(rig.published().steeringSmoothing, 1.0F);
        const QSignalSpy changes(rig.model.get(), &DashboardEditorVM::previewChanged);
        QTRY_VERIFY_WITH_TIMEOUT(changes.count() > 2, 30'000);
    }

    void aPathIsLoadedStoredAndOpenedAsCode()
    {
        EditorRig rig;
        rig.run();
        const QSignalSpy pathChanges(rig.model.get(), &DashboardEditorVM::pathChanged);
        const QString file = rig.file("/My Dash/Dash.qml");
        rig.model->setPath(rig.file("/Other.qml"));
        rig.takeCalls();
        QVERIFY(rig.model->setProperty("path", file));
        rig.model->setArgument(this, -1, QDir::toNativeSeparators(file)); // Nothing new.
        rig.model->setArgument(nullptr, 0, QVariant());
        QCOMPARE(rig.takeCalls(), loading(file));
        QCOMPARE(storedPath(), QDir::toNativeSeparators(file));
        QCOMPARE(pathChanges.count(), 2);
        rig.model->openCode();
        const QVariantMap argument{{"path"_q, QDir::toNativeSeparators(file)},
                                   {"dir"_q, rig.home.path("/My Dash")}};
        QCOMPARE(rig.navigation.shown.size(), 1U);
        QVERIFY(rig.navigation.shown[0] ==
                std::tuple(nullptr, "StartVisualStudioCode"_q, argument));
        DashboardEditorVM(&rig.engine, nullptr).openCode();
    }

    void aPathThatNamesNoFileIsLoadedAndDoesNoHarm()
    {
        EditorRig rig;
        rig.run();
        const LogCapture log;
        for (const QString &path :
             {"/tmp/a\0b.qml"_q, "/"_q, "relative.qml"_q, "http://host/D.qml"_q,
              QString(100'000, u'x'), QString(QChar(0xD800)), QString()}) {
            rig.model->setPath(path);
            QCOMPARE(rig.takeCalls(), loading(path));
            rig.model->openCode();
        }
        QVERIFY(rig.navigation.shown.empty());
        QCOMPARE(log.lines, QStringList());
    }

    void pedalsAndRpmAreClamped()
    {
        EditorRig rig;
        rig.run();
        for (const auto &[given, limit, pedal, rpm] : {std::array{-Largest, 8000, 0, 0},
                                                       {-1, 8000, 0, 0},
                                                       {42, 8000, 42, 42},
                                                       {101, 100, 100, 100},
                                                       {Largest, 8000, 100, 8000},
                                                       {100, -7, 100, 0}}) {
            rig.model->setBrakePedal(given);
            rig.model->setRotation(given);
            rig.model->setRpm(given, limit);
            const VehicleTelemetry vehicle = rig.published().vehicle;
            QCOMPARE(QVector<int>({vehicle.brakePedalPercent, vehicle.steeringPercent,
                                   int(vehicle.rpm), int(vehicle.maxRpm)}),
                     QVector<int>({pedal, given, rpm, limit}));
        }
    }

    void telemetryStandsStillWhileTheWindowIsHidden()
    {
        EditorRig rig;
        rig.run();
        const QPointer<QWindow> window = std::make_unique<QWindow>().release();
        rig.model->setWindow(window);
        window->hide();
        window->show();
        QVERIFY(rig.timer()->isActive());
        rig.model->ok();
        QVERIFY(!window->isVisible() && !rig.timer()->isActive());
        QTRY_VERIFY_WITH_TIMEOUT(window.isNull(), 30'000);
        rig.model->ok();
    }

    void withoutARendererTheMessageStandsInThePreview()
    {
        EditorRig rig(false);
        const Shouter shouter("DashboardEditorVM");
        rig.run();
        QCOMPARE(rig.model->fieldNames(), "NOT AVAILABLE WITHOUT HARDWARE ACCELERATION"_q);
        for (const auto &[width, height, font] :
             {std::array{480, 272, 19}, {25, 14, 10}, {275, 155, 11}, {854, 483, 34}}) {
            QSize size;
            QCOMPARE(rig.request(width, &size),
                     paintedText(width, height, "DASHBOARD REQUIRES HARDWARE ACCELERATION"_q, font,
                                 Qt::AlignCenter | Qt::TextWordWrap));
            QCOMPARE(size, QSize(width, height));
        }
        QCOMPARE(rig.request(-1).size(), QSize(480, 272));
        QVERIFY(rig.request(Largest).isNull());

        const QSignalSpy changes(rig.model.get(), &DashboardEditorVM::previewChanged);
        QWindow window;
        rig.model->setWindow(&window);
        window.show();
        QVERIFY(!rig.timer()->isActive());
        rig.model->setPath(rig.file());
        QCOMPARE(changes.count(), 1);
    }

    void thePreviewIsRenderedAtTheRequestedWidth()
    {
        EditorRig rig;
        rig.run();
        rig.engine.script.bytes = 4; // The largest would be too much for a test.
        for (const auto &[width, rendered] : {std::pair(0, QSize(480, 272)),
                                              {-1, QSize(480, 272)},
                                              {1, QSize(1, 0)},
                                              {854, QSize(854, 483)},
                                              {Largest, QSize(Largest, 1'216'907'392)}}) {
            QSize size;
            QVERIFY(rig.request(width, &size).isNull());
            const RenderCall &call = rig.engine.script.renderCalls.back();
            QCOMPARE(QSize(call.width, call.height), rendered);
            QCOMPARE(size, QSize(480, 272));
        }
    }

    void aFailureGivesOnePixelUntilTheNextSuccess()
    {
        EditorRig rig;
        rig.run();
        RendererScript &script = rig.engine.script;
        const std::function<void()> failures[] = {[&] { script.renders = false; },
                                                  [] { throw std::bad_alloc(); },
                                                  [] { throw std::length_error(""); }};
        for (const auto &failure : failures) {
            script.duringRender = failure;
            QCOMPARE(rig.request(48).size(), QSize(1, 1));
            script.duringRender = [&] { script.renders = true; };
            QCOMPARE(rig.request(48).size(), QSize(48, 27));
        }
        script.bytes = frameBytes(48, 27) - 1;
        script.fill = 9;
        QCOMPARE(rig.request(48).pixel(47, 26), 0x01010101U); // The last whole picture stands.
    }

    // A dropped lock shows best under the thread sanitizer.
    void theEndWaitsForARequestThatIsRendering()
    {
        EditorRig rig;
        rig.run();
        std::atomic<bool> rendering{false};
        int ended = 0;
        rig.engine.script.duringRender = [&] {
            rendering = true;
            std::this_thread::yield();
            ended += rig.engine.script.destroyed;
        };
        std::thread other([&] {
            while (rig.request().size() != QSize(1, 1)) {}
        });
        while (!rendering)
            std::this_thread::yield();
        rig.model.reset();
        other.join();
        QCOMPARE(ended, 0);
    }
};

QTEST_MAIN(DashboardEditorVMTest)
#include "DashboardEditorVMTest.moc"
