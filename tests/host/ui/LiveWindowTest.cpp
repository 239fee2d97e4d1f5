#include "WindowRig.h"
#include "support/LogCapture.h"

#include <QtCore/QPointer>

namespace {

const QString View = "DashboardWindow"_q;
const QRect Screen(0, 0, 1280, 900);

constexpr const char *FourFields = R"(Grid {
    width: 480; height: 272; columns: 2
    Repeater { model: ["#c02020", "#20c020", "#2020c0", "#c0c020"]
        Rectangle { width: 240; height: 136; color: modelData } }
})";

} // namespace

/// The live dashboard's window, under a window manager.
class LiveWindowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        moveMouse({5, 5});
        rig = std::make_unique<ViewRig>();
        rig->engine->setDashboardFile(rig->document(FourFields));
        window = rig->open(View);
        QVERIFY(window != nullptr);
        QTRY_COMPARE(window->size(), QSize(480, 272));
    }

    void cleanup()
    {
        releaseMouse();
        rig.reset();
    }

    void itOpensInTheMiddleAndShowsTheEnginesFrames()
    {
        const LogCapture log;
        reopen();
        QCOMPARE(window->minimumSize(), QSize(480, 272));
        QCOMPARE(window->frameGeometry(), window->geometry());
        QVERIFY((window->geometry().center() - Screen.center()).manhattanLength() < 40);
        QTRY_COMPARE(window->grabWindow().pixelColor(100, 60), QColor(0xc0, 0x20, 0x20));
        const QImage shown = window->grabWindow();
        QCOMPARE(shown.pixelColor(470, 10), QColor(0x20, 0xc0, 0x20));
        QCOMPARE(shown.pixelColor(10, 260), QColor(0x20, 0x20, 0xc0));
        QCOMPARE(shown.pixelColor(470, 262), QColor(0xc0, 0xc0, 0x20));
        QCOMPARE(log.lines, QStringList());
    }

    void controlsShowWhileTheMouseIsOverTheWindow()
    {
        const auto button = [this](const char *toolTip) {
            return find(window, "toolTip", QString::fromUtf8(toolTip));
        };
        QVERIFY(button("Close this window") == nullptr);
        moveMouse(window->geometry().center());
        QTRY_VERIFY(button("Close this window") != nullptr);
        // The buttons cover the area that had shown them.
        for (const char *name : {"Toggle stay on top", "Close this window"}) {
            moveMouse(window->mapToGlobal(middle(button(name))));
            QTRY_VERIFY(button(name) != nullptr &&
                        button(name)->property("containsMouse").toBool());
        }
        moveMouse({5, 5});
        QTRY_VERIFY(button("Close this window") == nullptr);

        moveMouse(window->geometry().center());
        QTRY_VERIFY(button("Close this window") != nullptr);
        const QSignalSpy quit(QCoreApplication::instance(), &QCoreApplication::aboutToQuit);
        const QPointer<ViewWindow> closing(window);
        click(button("Close this window"));
        QTRY_VERIFY(closing == nullptr);
        QCOMPARE(quit.count(), 0);
        QVERIFY(!rig->engine->hasConsumers());
    }

    void theMouseResizesItAtItsEdgesAndMovesItElsewhere()
    {
        QRect place = window->geometry();
        const auto drag = [&](const QPoint &from, const QPoint &way, const QMargins &growth) {
            const QSize before = place.size();
            place += growth;
            moveMouse(from);
            QTRY_COMPARE(window->cursor().shape(), Qt::SizeFDiagCursor);
            pressMouse();
            QTRY_COMPARE(QGuiApplication::mouseButtons(), Qt::LeftButton);
            // The window manager takes over some time after it has heard of it.
            QTRY_VERIFY(
                (moveMouse(from + way / 2), moveMouse(from + way), window->size() != before));
            QTRY_COMPARE(window->size(), place.size());
            releaseMouse();
            QTRY_COMPARE(window->geometry(), place);
            pressAt(place.center());
            moveMouse(place.center() + QPoint(40, 30));
            place.translate(40, 30);
            QTRY_COMPARE(window->geometry(), place);
            releaseMouse();
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
        moveMouse({500, 500});
        QTRY_COMPARE(dragArea()->property("mouseX").toInt(), 500);
        releaseMouse();
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
        QTRY_VERIFY(isFull() && WindowPlace::load(View).fullScreen);
        window->setWindowStates(Qt::WindowNoState);
        QTRY_VERIFY(!isFull() && !WindowPlace::load(View).fullScreen);
        const QPointer<ViewWindow> closing(window);
        keys(window, {Qt::Key_Escape});
        QTRY_VERIFY(closing == nullptr);
    }

    void aRequestDuringTheEndOpensItAnew()
    {
        for (const auto moment : {&HostWindow::closeRequested, &HostWindow::closed}) {
            const QPointer<ViewWindow> first(window);
            connect(first.data(), moment, this, [this] { rig->navigation.showView(View); });
            first->close();
            window = rig->navigation.window(View);
            QVERIFY(window != nullptr && window != first);
            QVERIFY(QTest::qWaitForWindowActive(window));
            QTRY_VERIFY(first == nullptr);
            QCOMPARE(rig->navigation.openViews(), QStringList{View});
        }
        // One that has just closed isn't left for the engine's end.
        const QPointer<ViewWindow> last(window);
        last->close();
        rig->navigation.closeViews();
        QVERIFY(last == nullptr);
    }

private:
    void reopen()
    {
        window->close();
        window = rig->open(View);
        QVERIFY(window != nullptr);
    }

    QQuickItem *dragArea() const { return find(window, "acceptedButtons", Qt::LeftButton); }

    /// The document asks for the cursor when it hears of the press, so the mouse must wait.
    void pressAt(const QPoint &position) const
    {
        moveMouse(position);
        pressMouse();
        QTRY_VERIFY(dragArea()->property("pressed").toBool());
    }

    std::unique_ptr<ViewRig> rig;
    ViewWindow *window = nullptr;
};

int main(int argc, char **argv)
{
    return runUnderWindowManager<LiveWindowTest>(argc, argv);
}

#include "LiveWindowTest.moc"
