#include "IDashboardEngine.h"
#include "RealMouse.h"
#include "ViewBench.h"
#include "support/FakeConsumer.h"
#include "support/LogCapture.h"

#include <QtCore/QPointer>
#include <QtGui/QGuiApplication>
#include <QtTest/QtTest>

namespace {

const QString View = QStringLiteral("DashboardWindow");

/// Four fields of one colour each, which survive smooth scaling.
constexpr const char *FourFields = R"(import QtQuick 2.15
Grid {
    width: 480; height: 272; columns: 2
    Repeater { model: ["#c02020", "#20c020", "#2020c0", "#c0c020"]
        Rectangle { width: 240; height: 136; color: modelData } }
})";

} // namespace

Q_DECLARE_METATYPE(QMargins)

class LiveWindowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { bench = std::make_unique<ViewBench>(); }
    void cleanupTestCase() { bench.reset(); }

    void init()
    {
        bench->engine->setDashboardFile(bench->makeDocument(FourFields));
        bench->startTelemetry();
        // The mouse is nowhere near the window.
        QVERIFY(RealMouse::moveTo({5, 5}));
    }
    void cleanup()
    {
        QVERIFY(RealMouse::release());
        bench->tidyUp();
    }

    void itOpensInTheMiddleWithoutAWarning()
    {
        const LogCapture log;
        const ViewWindow *window = bench->open(View);
        QVERIFY(window != nullptr);
        QCOMPARE(window->title(), QStringLiteral("Dashboard"));
        QCOMPARE(window->size(), QSize(480, 272));
        QCOMPARE(window->minimumSize(), QSize(480, 272));
        QVERIFY(window->flags() & Qt::FramelessWindowHint);
        QTRY_VERIFY((window->geometry().center() - QPoint(640, 450)).manhattanLength() < 40);
        QCOMPARE(log.lines, QStringList());
    }

    void itShowsTheFrameThatTheEngineDelivers()
    {
        ViewWindow *window = bench->open(View);
        QVERIFY(window != nullptr);
        FakeConsumer consumer(480, 272);
        bench->engine->addConsumer(&consumer);
        QTRY_VERIFY(consumer.deliveries.size() > 3);
        bench->engine->removeConsumer(&consumer);
        const Frame &frame = consumer.deliveries.back().frame;
        const QImage delivered(frame.data(), 480, 272, QImage::Format_ARGB32_Premultiplied);
        QTRY_COMPARE(window->grabWindow().pixelColor(100, 60), QColor(0xc0, 0x20, 0x20));
        const QImage shown = window->grabWindow();
        QCOMPARE(shown.size(), delivered.size());
        // Between the fields smoothing may differ, not inside of them.
        for (const QPoint point :
             {QPoint(4, 4), QPoint(470, 10), QPoint(10, 260), QPoint(470, 262)})
            QCOMPARE(shown.pixelColor(point), delivered.pixelColor(point));
    }

    void controlsShowWhileTheMouseIsOverTheWindow()
    {
        ViewWindow *window = bench->open(View);
        QVERIFY(window != nullptr);
        const QQuickItem *close =
            ViewBench::find(window->rootObject(), "toolTip", QStringLiteral("Close this window"));
        if (close == nullptr)
            QFAIL("There is no close button.");
        QVERIFY(!close->isVisible());
        QVERIFY(RealMouse::moveTo(window->geometry().center()));
        QTRY_VERIFY(close->isVisible());
        // Over the button itself, too, which covers the area that had shown it.
        QVERIFY(RealMouse::moveTo(ViewBench::middle(close)));
        QTRY_VERIFY(close->property("containsMouse").toBool());
        QVERIFY(close->isVisible());
        QVERIFY(RealMouse::moveTo({5, 5}));
        QTRY_VERIFY(!close->isVisible());
    }

    void aDragMovesTheWindowByTheCursorsWay()
    {
        ViewWindow *window = bench->open(View);
        QVERIFY(window != nullptr);
        const QPoint before = window->position();
        const QPoint grip = window->geometry().center();
        QVERIFY(pressAt(window, grip));
        QVERIFY(RealMouse::moveTo(grip + QPoint(50, 20)));
        QVERIFY(RealMouse::moveTo(grip + QPoint(120, -70)));
        QTRY_COMPARE(window->position(), before + QPoint(120, -70));
        QVERIFY(RealMouse::release());
        QTRY_VERIFY(!dragArea(window)->property("pressed").toBool());
        QVERIFY(RealMouse::moveTo(grip + QPoint(100, -60)));
        QTRY_COMPARE(dragArea(window)->property("mouseX").toInt(),
                     (grip + QPoint(100, -60) - window->position()).x());
        QCOMPARE(window->position(), before + QPoint(120, -70));

        // The place outlives the window.
        QTRY_COMPARE(WindowPlace::load(View).geometry.topLeft(), before + QPoint(120, -70));
        window->close();
        window = bench->open(View);
        QVERIFY(window != nullptr);
        QTRY_COMPARE(window->position(), before + QPoint(120, -70));
    }

    void itsEdgesResizeIt_data()
    {
        QTest::addColumn<QPoint>("grip"); // In the window; negative from the far edge.
        QTest::addColumn<QPoint>("way");
        QTest::addColumn<QMargins>("growth");
        QTest::newRow("right") << QPoint(-2, 136) << QPoint(90, 30) << QMargins(0, 0, 90, 0);
        QTest::newRow("bottom right") << QPoint(-2, -2) << QPoint(80, 60) << QMargins(0, 0, 80, 60);
        QTest::newRow("top left") << QPoint(2, 2) << QPoint(-70, -50) << QMargins(70, 50, 0, 0);
    }

    void itsEdgesResizeIt()
    {
        QFETCH(QPoint, grip);
        QFETCH(const QPoint, way);
        QFETCH(const QMargins, growth);
        ViewWindow *window = bench->open(View);
        QVERIFY(window != nullptr);
        const QRect before = window->geometry();
        if (grip.x() < 0)
            grip.rx() += window->width();
        if (grip.y() < 0)
            grip.ry() += window->height();
        const QPoint from = window->mapToGlobal(grip);
        QVERIFY(RealMouse::moveTo(from));
        QTRY_VERIFY(window->cursor().shape() != Qt::ArrowCursor);
        QVERIFY(RealMouse::press());
        QTRY_COMPARE(QGuiApplication::mouseButtons(), Qt::LeftButton);
        // The window manager takes over some time after it has heard of it.
        QVERIFY(QTest::qWaitFor([&] {
            return !RealMouse::moveTo(from + way / 2) || !RealMouse::moveTo(from + way) ||
                   window->geometry() != before;
        }));
        // A window manager owes the place only when the drag is over; until then the size tells.
        QTRY_COMPARE(window->size(), (before + growth).size());
        QVERIFY(RealMouse::moveTo(from - way));
        QTRY_COMPARE(window->size(), before.size()); // It was as small as it gets.
        QVERIFY(RealMouse::moveTo(from + way));
        QTRY_COMPARE(window->size(), (before + growth).size());
        QVERIFY(RealMouse::release());
        QTRY_COMPARE(window->geometry(), before + growth);

        // The mouse is the document's again, and what it does there isn't taken for a resize.
        const QPoint middle = window->geometry().center();
        QVERIFY(pressAt(window, middle));
        QVERIFY(RealMouse::moveTo(middle + QPoint(40, 30)));
        QTRY_COMPARE(window->geometry(), (before + growth).translated(40, 30));
        QVERIFY(RealMouse::release());
        QTRY_COMPARE(QGuiApplication::mouseButtons(), Qt::MouseButtons());
    }

    void aDoubleClickSwitchesFullScreenWhichNothingMoves()
    {
        ViewWindow *window = bench->open(View);
        QVERIFY(window != nullptr);
        const QRect before = window->geometry();
        QVERIFY(RealMouse::moveTo(before.center()) && RealMouse::doubleClick());
        QTRY_COMPARE(window->geometry(), QRect(0, 0, 1280, 900));
        QVERIFY(window->rootObject()->property("fullScreen").toBool());

        QVERIFY(pressAt(window, {300, 300}));
        QVERIFY(RealMouse::moveTo({500, 500}));
        QTRY_COMPARE(dragArea(window)->property("mouseX").toInt(), 500);
        QVERIFY(RealMouse::release());
        QTRY_VERIFY(!dragArea(window)->property("pressed").toBool());
        QCOMPARE(window->geometry(), QRect(0, 0, 1280, 900));

        // It comes back in full screen, and from there to its old place.
        window->close();
        window = bench->open(View);
        QVERIFY(window != nullptr);
        QTRY_COMPARE(window->geometry(), QRect(0, 0, 1280, 900));
        QVERIFY(RealMouse::moveTo({640, 450}) && RealMouse::doubleClick());
        QTRY_VERIFY(!window->windowStates().testFlag(Qt::WindowFullScreen));
        QTRY_COMPARE(window->geometry(), before);
    }

    void keysSwitchFullScreenAndClose()
    {
        QPointer<ViewWindow> window = bench->open(View);
        QVERIFY(window != nullptr);
        QTest::keyClick(window.data(), Qt::Key_F11);
        QTRY_VERIFY(window->windowStates().testFlag(Qt::WindowFullScreen));
        QVERIFY(window->rootObject()->property("fullScreen").toBool());
        QTest::keyClick(window.data(), Qt::Key_Escape);
        QTRY_VERIFY(!window->windowStates().testFlag(Qt::WindowFullScreen));
        QVERIFY(!window->rootObject()->property("fullScreen").toBool());

        // The window manager does without telling the document.
        for (const Qt::WindowState state : {Qt::WindowFullScreen, Qt::WindowNoState}) {
            window->setWindowStates(state);
            const bool on = state == Qt::WindowFullScreen;
            QTRY_COMPARE(window->rootObject()->property("fullScreen").toBool(), on);
            QCOMPARE(WindowPlace::load(View).fullScreen, on);
        }
        QTest::keyPress(window.data(), Qt::Key_Escape); // Nothing is left to release it in.
        QTRY_VERIFY(window == nullptr);
        QVERIFY(!bench->engine->hasConsumers());
    }

    void stayOnTopIsRememberedAndMovesNothing()
    {
        ViewWindow *window = bench->open(View);
        QVERIFY(window != nullptr);
        const QRect before = window->geometry();
        QVERIFY(!window->isStayOnTop());
        QTest::keyClick(window, Qt::Key_T);
        QVERIFY(window->isStayOnTop());
        QTest::qWait(50);
        QVERIFY(window->isVisible());
        QCOMPARE(window->geometry(), before);
        window->close();
        window = bench->open(View);
        QVERIFY(window != nullptr);
        QVERIFY(window->isStayOnTop());
    }

    void theCloseButtonClosesTheWindowAndNotTheProgram()
    {
        const QPointer<ViewWindow> window = bench->open(View);
        QVERIFY(window != nullptr);
        const QSignalSpy quit(QCoreApplication::instance(), &QCoreApplication::aboutToQuit);
        const QQuickItem *close =
            ViewBench::find(window->rootObject(), "toolTip", QStringLiteral("Close this window"));
        QVERIFY(RealMouse::moveTo(ViewBench::middle(close)));
        QTRY_VERIFY(close->isVisible());
        QVERIFY(RealMouse::press() && RealMouse::release());
        QTRY_VERIFY(window == nullptr);
        QCOMPARE(quit.count(), 0);
        QCOMPARE(bench->navigation->openViews(), QStringList());
    }

    void aHiddenWindowCostsNoFrames()
    {
        ViewWindow *window = bench->open(View);
        QVERIFY(window != nullptr);
        QVERIFY(bench->engine->hasConsumers());
        window->hide();
        QVERIFY(!bench->engine->hasConsumers());
        window->show();
        QVERIFY(bench->engine->hasConsumers());
    }

    void aRequestDuringTheEndOpensItAnew_data()
    {
        QTest::addColumn<bool>("before");
        QTest::newRow("as it is asked to close") << true;
        QTest::newRow("as it has closed") << false;
    }

    void aRequestDuringTheEndOpensItAnew()
    {
        QFETCH(const bool, before);
        const QPointer<ViewWindow> window = bench->open(View);
        QVERIFY(window != nullptr);
        const auto ask = [this] { bench->navigation->showView(View); };
        if (before)
            connect(window.data(), &HostWindow::closeRequested, this, ask);
        else
            connect(window.data(), &HostWindow::closed, this, ask);
        window->close();
        ViewWindow *next = bench->navigation->window(View);
        QVERIFY(next != nullptr && next != window);
        QVERIFY(QTest::qWaitForWindowActive(next));
        QTRY_VERIFY(window == nullptr);
        QCOMPARE(bench->navigation->openViews(), QStringList{View});

        // None of the two is left for the engine's end, however soon it comes.
        const QPointer<ViewWindow> last = next;
        last->close();
        bench->navigation->closeViews();
        QVERIFY(last == nullptr);
        QVERIFY(!bench->engine->hasConsumers());
    }

    void aPlaceThatIsOnNoScreenIsForgotten()
    {
        WindowPlace place;
        place.geometry = QRect(9000, 9000, 500, 300);
        place.save(View);
        const ViewWindow *window = bench->open(View);
        QVERIFY(window != nullptr);
        QTRY_VERIFY(QRect(0, 0, 1280, 900).contains(window->geometry()));
        QCOMPARE(window->size(), QSize(480, 272));
    }

    void sizesFollowInStepsAndEveryOrderOfTheEndIsSafe()
    {
        for (int round = 0; round < 4; ++round) {
            QPointer<ViewWindow> window = bench->open(View);
            QVERIFY(window != nullptr);
            for (int step = 0; step < 12; ++step) {
                window->resize(480 + 31 * step, 272 + 17 * step);
                QCoreApplication::processEvents();
            }
            QTRY_VERIFY(!window->grabWindow().isNull());
            if (round == 0)
                bench->navigation->closeViews();
            else if (round == 1)
                window->close();
            else if (round == 2)
                delete window;
            else
                bench->stop();
        }
    }

private:
    static const QQuickItem *dragArea(const ViewWindow *window)
    {
        return ViewBench::find(window->rootObject(), "acceptedButtons", Qt::LeftButton);
    }

    /// The document asks for the cursor when it hears of the press, so the mouse must wait.
    static bool pressAt(const ViewWindow *window, const QPoint &position)
    {
        const QQuickItem *area = dragArea(window);
        return RealMouse::moveTo(position) && RealMouse::press() &&
               QTest::qWaitFor([area] { return area->property("pressed").toBool(); });
    }

    std::unique_ptr<ViewBench> bench;
};

int main(int argc, char **argv)
{
    return runUnderWindowManager<LiveWindowTest>(argc, argv);
}

#include "LiveWindowTest.moc"
