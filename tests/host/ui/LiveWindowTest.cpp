#include "WindowRig.h"

namespace {

const QRect Screen(0, 0, 1280, 900);

constexpr const char *RedWithABlueCorner = R"(Rectangle { width: 480; height: 272; color: "red"
    Rectangle { x: 460; y: 252; width: 20; height: 20; color: "blue" } })";

} // namespace

/// The live dashboard's window, under a window manager.
class LiveWindowTest : public ViewTest
{
    Q_OBJECT

public:
    LiveWindowTest()
        : ViewTest("DashboardWindow"_q, RedWithABlueCorner)
    {
    }

private Q_SLOTS:
    void itOpensInTheMiddleAndShowsTheEnginesFrames()
    {
        moveTo({5, 5});
        QTRY_COMPARE(window->size(), QSize(480, 272));
        QCOMPARE(window->minimumSize(), window->size());
        QCOMPARE(window->frameGeometry(), window->geometry());
        QVERIFY((window->geometry().center() - Screen.center()).manhattanLength() < 40);
        QTRY_COMPARE(window->grabWindow().pixelColor(10, 10), QColor(Qt::red));
        QCOMPARE(window->grabWindow().pixelColor(470, 262), QColor(Qt::blue));
    }

    void controlsShowWhileTheMouseIsOverTheWindow()
    {
        const auto button = [this](const QString &tip) { return item("toolTip", tip); };
        const QString close = "Close this window"_q;
        moveTo({5, 5});
        QTRY_VERIFY(button(close) == nullptr);
        moveTo(window->geometry().center());
        QTRY_VERIFY(button(close) != nullptr);
        // The buttons cover the area that had shown them.
        for (const QString &tip : {"Toggle stay on top"_q, close}) {
            moveTo(window->mapToGlobal(middle(button(tip))));
            QTRY_VERIFY(button(tip) != nullptr && button(tip)->property("containsMouse").toBool());
        }
        click(button(close));
        QTRY_VERIFY(window == nullptr);
        QVERIFY(!engine->hasConsumers());
    }

    void theMouseResizesItAtItsEdgesAndMovesItElsewhere()
    {
        QRect place = window->geometry();
        const auto drag = [&](const QPoint &from, const QPoint &way, const QMargins &growth) {
            const QSize before = place.size();
            place += growth;
            moveTo(from);
            QTRY_COMPARE(window->cursor().shape(), Qt::SizeFDiagCursor);
            xdotool("mousedown 1"_q);
            QTRY_COMPARE(QGuiApplication::mouseButtons(), Qt::LeftButton);
            // The window manager takes over some time after it has heard of it.
            QTRY_VERIFY((moveTo(from + way / 2), moveTo(from + way), window->size() != before));
            QTRY_COMPARE(window->size(), place.size());
            release();
            QTRY_COMPARE(window->geometry(), place);
            pressAt(place.center());
            moveTo(place.center() + QPoint(40, 30));
            place.translate(40, 30);
            QTRY_COMPARE(window->geometry(), place);
            release();
            QTRY_COMPARE(QGuiApplication::mouseButtons(), Qt::NoButton);
        };
        drag(place.bottomRight() - QPoint(2, 2), {80, 60}, {0, 0, 80, 60});
        drag(place.topLeft() + QPoint(2, 2), {-70, -50}, {70, 50, 0, 0});
        reopen();
        QTRY_COMPARE(window->geometry(), place);
    }

    void aDoubleClickSwitchesToFullScreenAndBack()
    {
        const QRect before = window->geometry();
        QTest::mouseDClick(window, Qt::LeftButton);
        QTRY_COMPARE(window->geometry(), Screen);
        // It opens again in full screen, and goes from there to its old place.
        reopen();
        QTRY_COMPARE(window->geometry(), Screen);
        QTest::mouseDClick(window, Qt::LeftButton);
        QTRY_COMPARE(window->geometry(), before);
    }

    void keysSwitchItsStates()
    {
        const QRect before = window->geometry();
        const QSignalSpy hidden(window, &QWindow::visibleChanged);
        keys(window, {Qt::Key_T});
        QCOMPARE(hidden.count(), 0);
        QCOMPARE(window->geometry(), before);
        reopen();
        QVERIFY(window->isStayOnTop());

        const auto isFull = [this] {
            return window->rootObject()->property("fullScreen").toBool();
        };
        keys(window, {Qt::Key_F11});
        QTRY_VERIFY(isFull() && window->windowStates().testFlag(Qt::WindowFullScreen));
        keys(window, {Qt::Key_Escape});
        QTRY_VERIFY(!isFull() && window->windowStates() == Qt::WindowNoState);
        // As the window manager does.
        window->setWindowStates(Qt::WindowFullScreen);
        QTRY_VERIFY(isFull() && WindowPlace::load(view).fullScreen);
        window->setWindowStates(Qt::WindowNoState);
        QTRY_VERIFY(!isFull() && !WindowPlace::load(view).fullScreen);
        keys(window, {Qt::Key_Escape});
        QTRY_VERIFY(window == nullptr);
    }

    void aRequestDuringTheEndOpensItAnew()
    {
        for (const auto moment : {&HostWindow::closeRequested, &HostWindow::closed}) {
            const QPointer<ViewWindow> first(window);
            connect(first.data(), moment, this, [this] { navigation->showView(view); });
            first->close();
            open();
            QVERIFY(window != first);
            QTRY_VERIFY(first == nullptr);
        }
        // One that has just closed isn't left for the engine's end.
        window->close();
        navigation->closeViews();
        QVERIFY(window == nullptr);
    }

private:
    void reopen()
    {
        window->close();
        open();
    }

    static void moveTo(const QPoint &to) { xdotool("mousemove %1 %2"_q.arg(to.x()).arg(to.y())); }
    static void release() { xdotool("mouseup 1"_q); }

    /// The document asks for the cursor when it hears of the press, so the mouse must wait.
    void pressAt(const QPoint &position) const
    {
        moveTo(position);
        xdotool("mousedown 1"_q);
        QTRY_VERIFY(item("acceptedButtons", Qt::LeftButton)->property("pressed").toBool());
    }
};

int main(int argc, char **argv)
{
    return runUnderWindowManager<LiveWindowTest>(argc, argv);
}

#include "LiveWindowTest.moc"
