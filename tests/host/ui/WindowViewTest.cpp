#include "host/ui/Desktop.h"
#include "host/ui/UserBench.h"

#include "IDashboardConsumer.h"

#include <QtGui/QStyleHints>

#include <cmath>

namespace {

/// Gets the same frames as the window.
class Witness final : public IDashboardConsumer
{
public:
    explicit Witness(const QSize &size)
        : size(size)
    {
    }

    int frameWidth() override { return size.width(); }
    int frameHeight() override { return size.height(); }
    bool isUpsideDown() override { return false; }
    quint64 lastActivity() override { return 0; }
    void deliverFrame(Frame &buffer, int /*width*/) override { frame = buffer; }

    QImage image() const
    {
        return QImage(frame.data(), size.width(), size.height(),
                      QImage::Format_ARGB32_Premultiplied)
            .convertToFormat(QImage::Format_RGB32);
    }

    const QSize size;
    Frame frame;
};

QImage onScreen(const QWindow *window)
{
    const QRect part = window->geometry();
    return QGuiApplication::primaryScreen()
        ->grabWindow(0, part.x(), part.y(), part.width(), part.height())
        .toImage()
        .convertToFormat(QImage::Format_RGB32);
}

/// The largest difference of a channel between two pictures of one size, 0 to 255.
int difference(const QImage &one, const QImage &other)
{
    if (one.size() != other.size() || one.isNull())
        return 255;
    int largest = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            const QRgb a = one.pixel(x, y);
            const QRgb b = other.pixel(x, y);
            largest = std::max({largest, std::abs(qRed(a) - qRed(b)),
                                std::abs(qGreen(a) - qGreen(b)), std::abs(qBlue(a) - qBlue(b))});
        }
    }
    return largest;
}

const QPoint Outside(Desktop::Width - 5, Desktop::Height - 5);

} // namespace

class WindowViewTest : public QObject
{
    Q_OBJECT

public:
    explicit WindowViewTest(const Desktop &desktop)
        : desktop(desktop)
    {
    }

private Q_SLOTS:
    void init();
    void cleanup();

    void opensFramelessWithoutAComplaint();
    void showsTheFramesThatTheEngineDelivers();
    void showsItsButtonsOnlyUnderTheMouse();
    void followsTheMouseByItsOwnWay();
    void fullScreenStandsStillAndEnds();
    void staysOnTopWithoutMoving();
    void closesItselfAndNotTheProgram();
    void costsNothingWhileHidden();
    void isResizedByItsEdges();
    void comesBackWhereItWas();
    void comesBackIntoFullScreen();
    void comesBackOntoTheScreen();

private:
    void hover() const { desktop.moveTo(window->geometry().center()); }
    QQuickItem *button(const char *toolTip) const
    {
        return UserBench::item(window, QLatin1String(toolTip), "toolTip");
    }
    void reopen();

    const Desktop &desktop;
    std::unique_ptr<UserBench> bench;
    HostWindow *window = nullptr;
};

void WindowViewTest::init()
{
    desktop.moveTo(Outside);
    bench = std::make_unique<UserBench>();
    bench->engine->setDashboardFile(bench->document(
        "Rectangle { width: 480; height: 272; color: '#204060'; Rectangle { width: 240; height: "
        "136; "
        "gradient: Gradient { GradientStop { position: 0; color: 'red' } GradientStop { "
        "position: 1; color: 'yellow' } } } }"));
    window = bench->show("DashboardWindow");
    QVERIFY(window != nullptr);
}

void WindowViewTest::cleanup()
{
    desktop.release();
    bench.reset();
}

void WindowViewTest::reopen()
{
    window->close();
    QTRY_VERIFY(bench->navigation->openViews().isEmpty());
    window = bench->show("DashboardWindow");
    QVERIFY(window != nullptr);
}

void WindowViewTest::opensFramelessWithoutAComplaint()
{
    const Complaints complaints;
    reopen();
    QTest::qWait(100); // Whatever is late may still complain.
    QCOMPARE(Complaints::texts, QStringList());
    QCOMPARE(window->minimumSize(), QSize(480, 272));
    QVERIFY(window->flags().testFlag(Qt::FramelessWindowHint));
    QCOMPARE(window->frameGeometry(), window->geometry());

    HostWindow *before = window;
    bench->navigation->showView(QStringLiteral("DashboardWindow"));
    QCOMPARE(UserBench::window(QStringLiteral("Dashboard")), before);
}

void WindowViewTest::showsTheFramesThatTheEngineDelivers()
{
    // Same size, same telemetry, same scene: nothing is left to a tolerance but the rounding of
    // the graphics driver.
    window->resize(700, 400);
    QTRY_COMPARE(window->size(), QSize(700, 400));
    Witness witness(window->size());
    bench->engine->addConsumer(&witness);
    QTRY_VERIFY_WITH_TIMEOUT(!witness.frame.empty(), 30'000);
    QTRY_VERIFY_WITH_TIMEOUT(difference(onScreen(window), witness.image()) <= 2, 30'000);
    bench->engine->removeConsumer(&witness);
    QVERIFY(qRed(witness.image().pixel(10, 10)) > 200);
}

void WindowViewTest::showsItsButtonsOnlyUnderTheMouse()
{
    const auto shown = [this] {
        return button("Close this window") != nullptr && button("Toggle stay on top") != nullptr &&
               UserBench::item(window, QStringLiteral("Double click to switch to/from fullscreen"));
    };
    QVERIFY(!shown());
    hover();
    QTRY_VERIFY(shown());

    // On a button and from one to the other they stay, although the mouse has left the picture.
    for (const char *toolTip : {"Close this window", "Toggle stay on top", "Close this window"}) {
        desktop.moveTo(UserBench::middle(button(toolTip)));
        QTRY_VERIFY(button(toolTip) != nullptr &&
                    button(toolTip)->property("containsMouse").toBool());
        QVERIFY(shown());
    }
    desktop.moveTo(Outside);
    QTRY_VERIFY(!shown());
}

void WindowViewTest::followsTheMouseByItsOwnWay()
{
    const QPoint start = window->position();
    const QPoint grip = window->geometry().center();
    desktop.moveTo(grip);
    desktop.press();
    for (const QPoint way : {QPoint(60, -40), QPoint(-150, 30), QPoint(201, 97)}) {
        desktop.moveTo(grip + way);
        QTRY_COMPARE(window->position(), start + way);
    }
    desktop.release();
    desktop.moveTo(grip);
    QTest::qWait(100);
    QCOMPARE(window->position(), start + QPoint(201, 97));
}

void WindowViewTest::fullScreenStandsStillAndEnds()
{
    const QRect before = window->geometry();
    desktop.doubleClick(before.center());
    const QRect whole(0, 0, Desktop::Width, Desktop::Height);
    QTRY_COMPARE(window->geometry(), whole);
    QTRY_VERIFY(Desktop::windowState(window->winId()).contains(QLatin1String("FULLSCREEN")));

    desktop.press();
    desktop.moveTo(before.center() + QPoint(80, 80));
    desktop.release();
    QTest::qWait(100);
    QCOMPARE(window->geometry(), whole);

    // A moment later, so that it counts as another pair of clicks.
    QTest::qWait(QGuiApplication::styleHints()->mouseDoubleClickInterval());
    desktop.doubleClick(before.center());
    QTRY_COMPARE(window->geometry(), before);
    desktop.moveTo(before.center() + QPoint(50, 0));
    QTest::qWait(100);
    QCOMPARE(window->geometry(), before);
}

void WindowViewTest::staysOnTopWithoutMoving()
{
    const QRect before = window->geometry();
    const WId id = window->winId();
    const auto above = [id] {
        return Desktop::windowState(id).contains(QLatin1String("_NET_WM_STATE_ABOVE"));
    };
    const QSignalSpy hidden(window, &QWindow::visibleChanged);
    QVERIFY(!above());
    for (const bool on : {true, false, true}) {
        hover();
        QTRY_VERIFY(button("Toggle stay on top") != nullptr);
        desktop.click(UserBench::middle(button("Toggle stay on top")));
        QTRY_COMPARE(above(), on);
        const QString icon =
            on ? QStringLiteral("qrc:/orvx/stayontop_on") : QStringLiteral("qrc:/orvx/stayontop");
        QTRY_VERIFY(UserBench::item(window, icon, "source") != nullptr);
    }
    QCOMPARE(hidden.count(), 0);
    QCOMPARE(window->winId(), id);
    QCOMPARE(window->geometry(), before);

    reopen();
    QVERIFY(Desktop::windowState(window->winId()).contains(QLatin1String("_NET_WM_STATE_ABOVE")));
}

void WindowViewTest::closesItselfAndNotTheProgram()
{
    QWindow other;
    other.setGeometry(10, 10, 100, 100);
    other.show();
    hover();
    QTRY_VERIFY(button("Close this window") != nullptr);
    desktop.click(UserBench::middle(button("Close this window")));
    constexpr int Mine = 7;
    QPointer<HostWindow> closing(window);
    QTimer poll;
    connect(&poll, &QTimer::timeout, this, [&closing] {
        if (closing == nullptr)
            QCoreApplication::exit(Mine);
    });
    poll.start(10);
    QCOMPARE(QCoreApplication::exec(), Mine);
    QVERIFY(bench->navigation->openViews().isEmpty());
    QVERIFY(!bench->engine->hasConsumers());
}

void WindowViewTest::costsNothingWhileHidden()
{
    QVERIFY(bench->engine->hasConsumers());
    window->hide();
    QTRY_VERIFY(!bench->engine->hasConsumers());
    window->show();
    QTRY_VERIFY(bench->engine->hasConsumers());
    const QPoint corner = window->geometry().topLeft() + QPoint(20, 5);
    QTRY_VERIFY_WITH_TIMEOUT(UserBench::pixel(corner).red() > 200, 30'000);
}

void WindowViewTest::isResizedByItsEdges()
{
    // The edge lies within the window, so the document must not take the press for a move.
    const QRect before = window->geometry();
    desktop.moveTo(before.bottomRight() - QPoint(1, 1));
    QTRY_COMPARE(window->cursor().shape(), Qt::SizeFDiagCursor);
    desktop.press();
    // Only the window manager knows when it has taken over, so the mouse wanders until then.
    int step = 0;
    QTRY_VERIFY((desktop.moveTo(before.bottomRight() + ++step * QPoint(4, 3)),
                 window->width() > before.width() + 60 && window->height() > before.height() + 30));
    desktop.release();
    QCOMPARE(window->position(), before.topLeft());

    // Within, the mouse moves it as before.
    hover();
    QTRY_COMPARE(window->cursor().shape(), Qt::ArrowCursor);
    QTest::qWait(200);
    const QRect larger = window->geometry();
    desktop.moveTo(larger.center());
    desktop.press();
    desktop.moveTo(larger.center() + QPoint(40, 0));
    QTRY_COMPARE(window->geometry(), larger.translated(40, 0));
    desktop.release();
}

void WindowViewTest::comesBackWhereItWas()
{
    const QRect place(211, 123, 800, 500);
    window->setGeometry(place);
    QTRY_COMPARE(window->geometry(), place);
    reopen();
    QTRY_COMPARE(window->geometry(), place);
}

void WindowViewTest::comesBackIntoFullScreen()
{
    const QRect before = window->geometry();
    desktop.doubleClick(before.center());
    const QRect whole(0, 0, Desktop::Width, Desktop::Height);
    QTRY_COMPARE(window->geometry(), whole);
    reopen();
    QTRY_COMPARE(window->geometry(), whole);

    // The document knows it, too: one double click ends it, at the old place.
    QTest::qWait(QGuiApplication::styleHints()->mouseDoubleClickInterval());
    desktop.doubleClick(before.center());
    QTRY_COMPARE(window->geometry(), before);
}

void WindowViewTest::comesBackOntoTheScreen()
{
    const QRect screen(0, 0, Desktop::Width, Desktop::Height);
    window->setGeometry(QRect(5000, 4000, 600, 400));
    QTest::qWait(100);
    reopen();
    QVERIFY(screen.contains(window->geometry()));

    // A place that no screen is large enough for.
    window->close();
    QTRY_VERIFY(bench->navigation->openViews().isEmpty());
    {
        QSettings settings;
        settings.setValue(QStringLiteral("windows/DashboardWindow/geometry"),
                          QRect(1500, 900, 4000, 3000));
    }
    window = bench->show("DashboardWindow");
    QVERIFY(window != nullptr);
    QVERIFY(screen.contains(window->geometry()));
}

int main(int argc, char *argv[])
{
    const Desktop desktop;
    QGuiApplication::setOrganizationName(QStringLiteral("gauge"));
    QGuiApplication::setApplicationName(QStringLiteral("host-test"));
    QGuiApplication application(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    WindowViewTest test(desktop);
    return QTest::qExec(&test, argc, argv);
}

#include "WindowViewTest.moc"
