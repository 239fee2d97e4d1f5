#include "WindowRig.h"

namespace {

const QRect Screen(0, 0, 1280, 900);

constexpr const char *FourFields = R"(Grid {
    width: 480; height: 272; columns: 2
    Repeater { model: ["#c02020", "#20c020", "#2020c0", "#c0c020"]
        Rectangle { width: 240; height: 136; color: modelData } }
})";

} // namespace

/// The live dashboard's window, under a window manager.
class LiveWindowTest : public ViewTest
{
    Q_OBJECT

public:
    LiveWindowTest()
        : ViewTest("DashboardWindow"_q, FourFields)
    {
    }

private Q_SLOTS:
    void itOpensInTheMiddleAndShowsTheEnginesFrames()
    {
        Desktop::moveTo({5, 5});
        QTRY_COMPARE(window->size(), QSize(480, 272));
        QCOMPARE(window->minimumSize(), window->size());
        QCOMPARE(window->frameGeometry(), window->geometry());
        QVERIFY((window->geometry().center() - Screen.center()).manhattanLength() < 40);
        QTRY_COMPARE(window->grabWindow().pixelColor(100, 60), QColor(0xc0, 0x20, 0x20));
        const QImage shown = window->grabWindow();
        QCOMPARE(shown.pixelColor(470, 10), QColor(0x20, 0xc0, 0x20));
        QCOMPARE(shown.pixelColor(10, 260), QColor(0x20, 0x20, 0xc0));
        QCOMPARE(shown.pixelColor(470, 262), QColor(0xc0, 0xc0, 0x20));
    }

    void controlsShowWhileTheMouseIsOverTheWindow()
    {
        const auto button = [this](const QString &tip) { return item("toolTip", tip); };
        const QString close = "Close this window"_q;
        Desktop::moveTo({5, 5});
        QTRY_VERIFY(button(close) == nullptr);
        Desktop::moveTo(window->geometry().center());
        QTRY_VERIFY(button(close) != nullptr);
        // The buttons cover the area that had shown them.
        for (const QString &tip : {"Toggle stay on top"_q, close}) {
            Desktop::moveTo(window->mapToGlobal(middle(button(tip))));
            QTRY_VERIFY(button(tip) != nullptr && button(tip)->property("containsMouse").toBool());
        }
        const QSignalSpy quit(QCoreApplication::instance(), &QCoreApplication::aboutToQuit);
        click(button(close));
        QTRY_VERIFY(window == nullptr);
        QCOMPARE(quit.count(), 0);
        QVERIFY(!engine->hasConsumers());
    }

    void theMouseResizesItAtItsEdgesAndMovesItElsewhere()
    {
        QRect place = window->geometry();
        const auto drag = [&](const QPoint &from, const QPoint &way, const QMargins &growth) {
            const QSize before = place.size();
            place += growth;
            Desktop::moveTo(from);
            QTRY_COMPARE(window->cursor().shape(), Qt::SizeFDiagCursor);
            Desktop::press();
            QTRY_COMPARE(QGuiApplication::mouseButtons(), Qt::LeftButton);
            // The window manager takes over some time after it has heard of it.
            QTRY_VERIFY((Desktop::moveTo(from + way / 2), Desktop::moveTo(from + way),
                         window->size() != before));
            QTRY_COMPARE(window->size(), place.size());
            Desktop::release();
            QTRY_COMPARE(window->geometry(), place);
            pressAt(place.center());
            Desktop::moveTo(place.center() + QPoint(40, 30));
            place.translate(40, 30);
            QTRY_COMPARE(window->geometry(), place);
            Desktop::release();
            QTRY_COMPARE(QGuiApplication::mouseButtons(), Qt::NoButton);
        };
        drag(place.bottomRight() - QPoint(2, 2), {80, 60}, {0, 0, 80, 60});
        drag(place.topLeft() + QPoint(2, 2), {-70, -50}, {70, 50, 0, 0});
        reopen();
        QTRY_COMPARE(window->geometry(), place);
    }

    void aDoubleClickSwitchesToFullScreenWhichNoDragMoves()
    {
        const QRect before = window->geometry();
        QTest::mouseDClick(window, Qt::LeftButton);
        QTRY_COMPARE(window->geometry(), Screen);
        pressAt({300, 300});
        Desktop::moveTo({500, 500});
        QTRY_COMPARE(dragArea()->property("mouseX").toInt(), 500);
        Desktop::release();
        QTRY_VERIFY(!dragArea()->property("pressed").toBool());
        QCOMPARE(window->geometry(), Screen);

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

    QQuickItem *dragArea() const { return item("acceptedButtons", Qt::LeftButton); }

    /// The document asks for the cursor when it hears of the press, so the mouse must wait.
    void pressAt(const QPoint &position) const
    {
        Desktop::moveTo(position);
        Desktop::press();
        QTRY_VERIFY(dragArea()->property("pressed").toBool());
    }
};

int main(int argc, char **argv)
{
    return runUnderWindowManager<LiveWindowTest>(argc, argv);
}

#include "LiveWindowTest.moc"
