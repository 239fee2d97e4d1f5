#include "engine/DashboardEngine.h"
#include "support/Files.h"
#include "support/LogCapture.h"
#include "support/PaintedText.h"
#include "support/Shouter.h"
#include "views/EditorRig.h"

#include <QtCore/QFileSystemWatcher>
#include <QtNetwork/QTcpServer>
#include <QtTest/QtTest>

#include <atomic>
#include <limits>
#include <new>
#include <stdexcept>
#include <thread>

namespace {

constexpr int Largest = std::numeric_limits<int>::max();

/// The renderer's calls when a path is loaded.
QStringList loading(const QString &path)
{
    return {"load "_q + QDir::toNativeSeparators(path) + " 480x272"_q, "publish"_q};
}

} // namespace

class DashboardEditorVMTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void takesUpTheRecentFileWhileItIsThere()
    {
        EditorRig rig;
        const QString file = QDir::toNativeSeparators(rig.file());
        rig.model->setPath(file);
        rig.make();
        QCOMPARE(rig.model->property("path").toString(), file);
        QVERIFY(QFile::remove(file));
        rig.make();
        QCOMPARE(rig.model->currentPath(), QString());
        const QSettings settings("Orvalentix"_q, "Halvorin"_q);
        QCOMPARE(settings.value("DashboardEditor/RecentQmlFile"_q).toString(), file);
    }

    void theContextStartsThePreview()
    {
        EditorRig rig;
        rig.engine.script.fields = {"dash_b"_q, "dash_a"_q, "Zeta"_q};
        rig.make();
        rig.model->initContext(nullptr);
        QVERIFY(rig.takeCalls().isEmpty() && !rig.timer()->isActive());
        rig.model->initContext(rig.qml->rootContext());
        QCOMPARE(rig.takeCalls(), loading({}));
        QCOMPARE(rig.model->property("dashboardFields").toString(), "Zeta\ndash_a\ndash_b"_q);
        QCOMPARE(rig.published().steeringSmoothing, 1.0F);
        QTRY_VERIFY_WITH_TIMEOUT(rig.engine.script.publications.size() > 4, 30'000);
    }

    void aPathIsLoadedStoredAndOpenedAsCode()
    {
        EditorRig rig;
        const QSignalSpy pathChanges(rig.model.get(), &DashboardEditorVM::pathChanged);
        const QString file = rig.file("/My Dash/Dash.qml");
        rig.model->setArgument(this, -1, rig.file("/Other.qml"));
        rig.takeCalls();
        QVERIFY(rig.model->setProperty("path", file));
        rig.model->setPath(QDir::toNativeSeparators(file)); // Nothing new.
        rig.model->setArgument(nullptr, 0, QVariant());
        QCOMPARE(rig.takeCalls(), loading(file));
        QCOMPARE(pathChanges.count(), 2);
        rig.model->openCode();
        const QVariantMap argument{{"path"_q, QDir::toNativeSeparators(file)},
                                   {"dir"_q, rig.home.path("/My Dash")}};
        QVERIFY(rig.navigation.shown.back() ==
                std::tuple(nullptr, "StartVisualStudioCode"_q, argument));
        DashboardEditorVM(&rig.engine, nullptr).openCode();

        // A path that names no file does no harm.
        rig.navigation.shown.clear();
        rig.engine.script.duringLoad = nullptr; // It would read the file.
        const LogCapture log;
        for (const QString &path : {"/tmp/a\0b.qml"_q, "/"_q, "http://host/D.qml"_q, QString()}) {
            rig.model->setPath(path);
            QCOMPARE(rig.takeCalls(), loading(path));
            rig.model->openCode();
        }
        QVERIFY(rig.navigation.shown.empty());
        QCOMPARE(log.lines, QStringList());
    }

    void aReplacedFileIsFollowedAgainAndAgain()
    {
        EditorRig rig;
        const QString path = rig.file();
        rig.model->setPath(path);
        QFile old(path);
        for (const char *content : {"second", "third", "fourth"}) {
            // Many programs save like this.
            QVERIFY(moveFile(rig.file("/new", content), path, true));
            QVERIFY2(rig.loads(content), content);
#ifndef Q_OS_WIN // Windows can't replace an open file.
            QVERIFY(old.isOpen() || old.open(QIODevice::ReadOnly));
#endif
        }
    }

    void aFileIsAwaitedWhereItIsGoneOrNotYetThere()
    {
        EditorRig rig;
        const QString path = rig.home.path("/not/yet/Dash.qml");
        rig.model->setPath(path);
        QVERIFY(!rig.timer(false)->isActive()); // Nothing polls the disk.
        for (const char *content : {"there", "and again"}) {
            writeFile(path, content);
            QVERIFY2(rig.loads(content), content);
            QVERIFY(QFile::remove(path));
            QVERIFY(rig.loads({}));
        }
    }

    void onlyTheChosenFileIsFollowed()
    {
        EditorRig rig;
        const QString first = rig.file();
        const QString second = rig.file("/Second.qml");
        rig.model->setPath(first);
        QTimer *wait = rig.timer(false);
        wait->setInterval(1'000'000);
        writeFile(first, "changed before the other is chosen");
        QTRY_VERIFY_WITH_TIMEOUT(wait->isActive(), 30'000);
        rig.model->setPath(second);
        QVERIFY(!wait->isActive());
        wait->setInterval(0);
        rig.takeCalls();
        QVERIFY(QFile::remove(first));
        writeFile(second, "changed");
        QVERIFY(rig.loads("changed"));
        QVERIFY(rig.takeCalls().filter(first).isEmpty());
    }

    void aBurstOfSavesIsOneReloadThatNoSavePutsOff()
    {
        EditorRig rig;
        const QString path = rig.file();
        rig.model->setPath(path);
        rig.timer()->stop();
        rig.takeCalls();
        QTimer *wait = rig.timer(false);
        wait->setTimerType(Qt::PreciseTimer);
        wait->setInterval(1'000'000); // Until the test ends it.
        writeFile(path, "first");
        QTRY_VERIFY_WITH_TIMEOUT(wait->isActive() && wait->remainingTime() < 999'700, 30'000);
        const QSignalSpy heard(rig.model->findChild<QFileSystemWatcher *>(),
                               &QFileSystemWatcher::fileChanged);
        writeFile(path, "last");
        QTRY_VERIFY_WITH_TIMEOUT(!heard.isEmpty(), 30'000);
        // It wasn't restarted.
        QVERIFY(wait->remainingTime() < 999'700 && rig.takeCalls().isEmpty());
        wait->setInterval(0);
        QVERIFY(rig.loads("last"));
        QCOMPARE(rig.takeCalls(), loading(path));
    }

    void pedalsAndRpmAreClamped()
    {
        EditorRig rig;
        // The value set, the limit of rpm, and the pedal and the rpm that follow.
        const int rows[][4] = {{-Largest, 8000, 0, 0},     {-1, 8000, 0, 0},
                               {42, 8000, 42, 42},         {101, 100, 100, 100},
                               {Largest, 8000, 100, 8000}, {100, -7, 100, 0}};
        for (const auto &[given, limit, pedal, rpm] : rows) {
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
        const QPointer<QWindow> window = std::make_unique<QWindow>().release();
        rig.model->setWindow(window);
        window->show();
        QVERIFY(rig.timer()->isActive());
        rig.model->ok();
        QVERIFY(!window->isVisible() && !rig.timer()->isActive());
        QTRY_VERIFY_WITH_TIMEOUT(window.isNull(), 30'000);
        rig.model->ok();
    }

    void withoutARendererTheMessageStandsInThePreview()
    {
        const Shouter translator("DashboardEditorVM");
        EditorRig rig(false);
        QCOMPARE(rig.model->fieldNames(), "NOT AVAILABLE WITHOUT HARDWARE ACCELERATION"_q);
        const int rows[][3] = {{480, 272, 19}, {25, 14, 10}, {275, 155, 11}, {854, 483, 34}};
        for (const auto &[width, height, font] : rows) {
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
        rig.engine.script.bytes = 4; // The largest picture wouldn't fit into memory.
        const int rows[][3] = {{0, 480, 272},
                               {-1, 480, 272},
                               {1, 1, 0},
                               {854, 854, 483},
                               {Largest, Largest, 1'216'907'392}};
        for (const auto &[width, renderedWidth, renderedHeight] : rows) {
            QSize size;
            QVERIFY(rig.request(width, &size).isNull());
            const RenderCall &call = rig.engine.script.renderCalls.back();
            QVERIFY(!call.upsideDown);
            QCOMPARE(QSize(call.width, call.height), QSize(renderedWidth, renderedHeight));
            QCOMPARE(size, QSize(480, 272));
        }
    }

    void aFailureGivesOnePixelUntilTheNextSuccess()
    {
        EditorRig rig;
        RendererScript &script = rig.engine.script;
        script.renders = false;
        QCOMPARE(rig.request(48).size(), QSize(1, 1));
        script.renders = true;
        script.duringRender = [] { throw std::bad_alloc(); };
        QCOMPARE(rig.request(48).size(), QSize(1, 1));
        script.duringRender = [] { throw std::length_error("too long"); };
        QCOMPARE(rig.request(48).size(), QSize(1, 1));
        script.duringRender = nullptr;
        QCOMPARE(rig.request(48).size(), QSize(48, 27));
        script.bytes = frameBytes(48, 27) - 1;
        script.fill = 9;
        QCOMPARE(rig.request(48).pixel(47, 26), 0x01010101U); // Keeps the last whole picture.
    }

    void theRealRendererMayEndWhileItLoadsARemotePart()
    {
        QTcpServer server; // Accepts connections and never answers.
        QVERIFY(server.listen(QHostAddress::LocalHost));
        const QByteArray address = "http://127.0.0.1:" + QByteArray::number(server.serverPort());
        const TemporaryHome home;
        DashboardEngine engine(false, true);
        QQmlEngine qml;
        auto model = std::make_unique<DashboardEditorVM>(&engine, nullptr);
        model->initContext(qml.rootContext());
        QCOMPARE(model->fieldNames().count(u'\n'), 128);
        auto *provider = static_cast<QQuickImageProvider *>(qml.imageProvider("dashEditor"_q));
        const auto preview = [&] { return provider->requestImage({}, nullptr, QSize(854, 0)); };
        const std::pair<QByteArray, Qt::GlobalColor> steps[] = {
            {"Rectangle { width: 480; height: 272; color: nothing.at.all }", Qt::black},
            {"Rectangle { width: 480; height: 272; color: 'blue' }", Qt::blue},
            {"import '" + address + "/parts'\nRemote {}", Qt::black}};
        for (const auto &[text, color] : steps) {
            writeFile(home.path("/Dash.qml"), "import QtQuick 2.15\n" + text);
            model->setPath(home.path("/Dash.qml"));
            QTRY_COMPARE_WITH_TIMEOUT(preview().pixelColor(0, 0), QColor(color), 30'000);
        }
        QTRY_VERIFY_WITH_TIMEOUT(server.hasPendingConnections(), 30'000);
        model.reset();
        QCOMPARE(preview().size(), QSize(1, 1));
    }

    // The thread sanitizer sees a dropped lock in every run.
    void theEndWaitsForARequestThatIsRendering()
    {
        EditorRig rig;
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
