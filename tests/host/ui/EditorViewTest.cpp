#include "host/ui/Desktop.h"
#include "host/ui/UserBench.h"

#include "IViewModel.h"

#include <QtQml/QQmlEngine>

#include <cmath>
#include <set>

namespace {

// Gas makes it red, brake green; the steering moves nothing.
constexpr char Pedals[] =
    "Rectangle { width: 480; height: 272; color: Qt.rgba(dash_gasPedal_Percent / 100, "
    "dash_brakePedal_Percent / 100, 0, 1) }";

/// A view model without anything behind it.
class EmptyView final : public QObject, public IViewModel
{
public:
    QObject *asQObject() override { return this; }
    void initContext(QQmlContext *) override {}
    void setArgument(void *, int, const QVariant &) override {}
    void setWindow(QWindow *) override {}
    bool viewFlagA() override { return false; }
    bool viewFlagB() override { return true; }
};

QQuickItem *sliderOf(const HostWindow *window, const char *caption)
{
    const QQuickItem *label = UserBench::item(window, QLatin1String(caption));
    const QList<QQuickItem *> cells = label->parentItem()->childItems();
    for (QQuickItem *cell : cells) {
        if (cell->y() == label->y() && cell->x() > label->x())
            return cell;
    }
    return nullptr;
}

const QQuickItem *previewOf(const QQuickItem *below)
{
    const QList<QQuickItem *> children = below->childItems();
    for (const QQuickItem *child : children) {
        if (child->property("source").toString().startsWith(QLatin1String("image:")))
            return child;
        if (const QQuickItem *found = previewOf(child))
            return found;
    }
    return nullptr;
}

QString valueOf(const QQuickItem *slider)
{
    const QList<QQuickItem *> cells = slider->parentItem()->childItems();
    return cells.at(cells.indexOf(const_cast<QQuickItem *>(slider)) + 1)
        ->property("text")
        .toString();
}

} // namespace

class EditorViewTest : public QObject
{
    Q_OBJECT

public:
    explicit EditorViewTest(const Desktop &desktop)
        : desktop(desktop)
    {
    }

private Q_SLOTS:
    void init();
    void cleanup();

    void opensWithoutAComplaint();
    void slidersGiveWholeNumbersAllTheWay();
    void slidersReachThePreview();
    void aLowerLimitTakesTheRpmAlong();
    void asksTheHostForHelpSettingsAndCode();
    void showsTheErrorsOfADocument();
    void closesByEveryRoad_data();
    void closesByEveryRoad();
    void endsWhileItsFileDialogIsOpen_data();
    void endsWhileItsFileDialogIsOpen();

private:
    QQuickItem *button(const char *text) const
    {
        return UserBench::item(window, QLatin1String(text));
    }

    const Desktop &desktop;
    std::unique_ptr<UserBench> bench;
    HostWindow *window = nullptr;
    QStringList targets;
};

void EditorViewTest::init()
{
    desktop.moveTo(QPoint(5, 5));
    targets.clear();
    bench = std::make_unique<UserBench>();
    for (const char *name : {"HelpBrowser", "SoftwareConfiguration", "StartVisualStudioCode"}) {
        bench->navigation->addTarget(QLatin1String(name), [this, name](const QVariant &argument) {
            const QVariantMap map = argument.toMap();
            targets += QLatin1String(name) + QLatin1Char(' ') +
                       (map.isEmpty() ? argument.toString()
                                      : map.value(QStringLiteral("path")).toString());
        });
    }
    window = bench->show("DashboardEditor", bench->document(Pedals));
    QVERIFY(window != nullptr);
}

void EditorViewTest::cleanup()
{
    desktop.release();
    bench.reset();
}

void EditorViewTest::opensWithoutAComplaint()
{
    const Complaints complaints;
    window->close();
    QTRY_VERIFY(bench->navigation->openViews().isEmpty());
    window = bench->show("DashboardEditor");
    QVERIFY(window != nullptr);
    QTest::qWait(100); // Whatever is late may still complain.
    QCOMPARE(Complaints::texts, QStringList());
    QCOMPARE(window->size(), QSize(900, 765));
    QCOMPARE(window->minimumSize(), QSize(900, 765));
    QVERIFY(!window->flags().testFlag(Qt::WindowMinimizeButtonHint));
    QVERIFY(!window->flags().testFlag(Qt::FramelessWindowHint));
}

void EditorViewTest::slidersGiveWholeNumbersAllTheWay()
{
    for (const char *caption : {"Steering rotation:", "Gas pedal:", "RPM:"}) {
        const QQuickItem *slider = sliderOf(window, caption);
        const qreal least = slider->property("minimumValue").toReal();
        const qreal most = slider->property("maximumValue").toReal();
        const QPoint middle = UserBench::middle(slider);
        const int half = qRound(slider->width() / 2);
        const auto now = [slider] { return slider->property("value").toReal(); };

        desktop.moveTo(middle);
        desktop.press();
        QTRY_VERIFY(slider->property("pressed").toBool());
        std::set<qreal> seen;
        for (int way = -half - 20; way <= half + 20; way += 2) {
            desktop.moveTo(middle + QPoint(way, 0));
            QTest::qWait(5);
            seen.insert(now());
            QCOMPARE(now(), std::round(now()));
            QVERIFY2(!valueOf(slider).contains(QLatin1Char('.')), qPrintable(valueOf(slider)));
        }
        QTRY_COMPARE(now(), most);
        desktop.release();
        QCOMPARE(*seen.begin(), least);
        QVERIFY(seen.size() > 30);
    }

    // The keyboard reaches each.
    auto *steering = sliderOf(window, "Steering rotation:");
    steering->forceActiveFocus(Qt::TabFocusReason);
    desktop.keys({QStringLiteral("Home"), QStringLiteral("Right"), QStringLiteral("Right")});
    QTRY_COMPARE(valueOf(steering), QStringLiteral("-98 [%]"));
}

void EditorViewTest::slidersReachThePreview()
{
    const QQuickItem *picture = previewOf(window->contentItem());
    QVERIFY(picture != nullptr);
    const QPoint preview = UserBench::middle(picture);
    QTRY_COMPARE(UserBench::pixel(preview), QColor(0, 0, 0));
    const auto end = [this](const char *caption) {
        const QQuickItem *slider = sliderOf(window, caption);
        desktop.click(UserBench::middle(slider) + QPoint(qRound(slider->width() / 2) - 2, 0));
    };
    end("Gas pedal:");
    QTRY_COMPARE(UserBench::pixel(preview), QColor(255, 0, 0));
    end("Brake pedal:");
    QTRY_COMPARE(UserBench::pixel(preview), QColor(255, 255, 0));
}

void EditorViewTest::aLowerLimitTakesTheRpmAlong()
{
    auto *rpm = sliderOf(window, "RPM:");
    auto *limit = sliderOf(window, "Max RPM:");
    QCOMPARE(valueOf(rpm), QStringLiteral("700"));
    QCOMPARE(valueOf(limit), QStringLiteral("13000"));
    rpm->forceActiveFocus(Qt::TabFocusReason);
    desktop.keys({QStringLiteral("End")});
    QTRY_COMPARE(valueOf(rpm), QStringLiteral("13000"));
    limit->forceActiveFocus(Qt::TabFocusReason);
    desktop.keys({QStringLiteral("Home")});
    QTRY_COMPARE(valueOf(limit), QStringLiteral("4000"));
    QCOMPARE(valueOf(rpm), QStringLiteral("4000"));
}

void EditorViewTest::asksTheHostForHelpSettingsAndCode()
{
    desktop.keys({QStringLiteral("F1")});
    QTRY_COMPARE(targets, QStringList{QStringLiteral("HelpBrowser dashboards")});
    desktop.click(UserBench::middle(button("Help")));
    QTRY_COMPARE(targets.size(), 2);
    QCOMPARE(targets.at(1), targets.at(0));

    desktop.click(UserBench::middle(button("Code")));
    QTRY_COMPARE(targets.size(), 3);
    QVERIFY(targets.at(2).startsWith(QLatin1String("StartVisualStudioCode /")));
    QVERIFY(targets.at(2).endsWith(QLatin1String("/dash/Dash.qml")));

    // The mouse finds the link wherever the text has put it.
    QQuickItem *note = nullptr;
    std::function<void(QQuickItem *)> search = [&](QQuickItem *item) {
        if (item->property("text").toString().contains(QLatin1String("<a href")))
            note = item;
        const QList<QQuickItem *> children = item->childItems();
        for (QQuickItem *child : children)
            search(child);
    };
    search(window->contentItem());
    QVERIFY(note != nullptr);
    note->forceActiveFocus(Qt::TabFocusReason);
    desktop.keys({QStringLiteral("Return")});
    QTRY_COMPARE(targets.size(), 4);
    QCOMPARE(targets.at(3), QStringLiteral("SoftwareConfiguration "));
}

void EditorViewTest::showsTheErrorsOfADocument()
{
    const Complaints complaints;
    bench->navigation->registerView(QStringLiteral("Broken"), QStringLiteral(":/no/such/View.qml"),
                                    [] { return std::make_unique<EmptyView>().release(); });
    bench->navigation->showView(QStringLiteral("Broken"));
    const HostWindow *broken = UserBench::window(QStringLiteral("Error"));
    QVERIFY(broken != nullptr);
    QVERIFY(broken->documentErrors().contains(QLatin1String("/no/such/View.qml")));
    QVERIFY(UserBench::item(broken, broken->documentErrors()) != nullptr);
    QVERIFY(Complaints::texts.join(QLatin1Char(' ')).contains(QLatin1String("/no/such/View.qml")));
}

void EditorViewTest::closesByEveryRoad_data()
{
    QTest::addColumn<QString>("road");
    for (const char *road : {"button", "frame", "quit", "close and delete", "views", "navigation"})
        QTest::newRow(road) << QString::fromLatin1(road);
}

void EditorViewTest::closesByEveryRoad()
{
    QFETCH(const QString, road);
    const Complaints complaints;
    const QPointer<HostWindow> gone(window);
    if (road == QLatin1String("button"))
        desktop.click(UserBench::middle(button("OK")));
    else if (road == QLatin1String("frame"))
        desktop.keys({QStringLiteral("alt+F4")});
    else if (road == QLatin1String("quit"))
        Q_EMIT window->engine()->quit();
    else if (road == QLatin1String("views"))
        bench->navigation->closeViews();
    else if (road == QLatin1String("navigation"))
        bench->navigation.reset();
    if (road == QLatin1String("close and delete")) {
        window->close();
        window->deleteLater();
        QCoreApplication::sendPostedEvents(window, QEvent::DeferredDelete);
    }
    QTRY_VERIFY(gone == nullptr);
    QCOMPARE(Complaints::texts, QStringList());
}

void EditorViewTest::endsWhileItsFileDialogIsOpen_data()
{
    QTest::addColumn<QString>("road");
    for (const char *road : {"escape", "frame", "hide", "views", "quit"})
        QTest::newRow(road) << QString::fromLatin1(road);
}

void EditorViewTest::endsWhileItsFileDialogIsOpen()
{
    QFETCH(const QString, road);
    const QPointer<HostWindow> editor(window);
    editor->setPosition(60, 120);
    bool opened = false;
    QPoint offset;
    QTimer act;
    connect(&act, &QTimer::timeout, this, [&] {
        HostWindow *dialog = UserBench::window(QStringLiteral("Select main dashboard QML file"));
        if (dialog == nullptr || !dialog->isActive())
            return;
        act.stop();
        opened = true;
        offset = dialog->geometry().center() - editor->geometry().center();
        if (road == QLatin1String("escape"))
            desktop.keys({QStringLiteral("Escape")});
        else if (road == QLatin1String("frame"))
            desktop.keys({QStringLiteral("alt+F4")});
        else if (road == QLatin1String("hide"))
            editor->hide();
        else if (road == QLatin1String("views"))
            bench->navigation->closeViews();
        else
            QCoreApplication::exit(3);
    });
    act.start(20);
    // The program's own loop runs below the dialog's, as it does in life.
    QTimer::singleShot(0, this, [&] { desktop.click(UserBench::middle(button("..."))); });
    QTimer poll;
    connect(&poll, &QTimer::timeout, this, [&] {
        const bool closed =
            UserBench::window(QStringLiteral("Select main dashboard QML file")) == nullptr;
        if (opened && closed && road != QLatin1String("quit"))
            QCoreApplication::exit(2);
    });
    poll.start(20);
    QCOMPARE(QCoreApplication::exec(), road == QLatin1String("quit") ? 3 : 2);
    QVERIFY(opened);
    QVERIFY(offset.manhattanLength() <= 2);
    QTRY_COMPARE(editor == nullptr, road == QLatin1String("views"));
    if (editor != nullptr) {
        editor->show();
        QVERIFY(button("Code") != nullptr && button("Code")->isEnabled());
    }
}

int main(int argc, char *argv[])
{
    const Desktop desktop;
    QGuiApplication::setOrganizationName(QStringLiteral("gauge"));
    QGuiApplication::setApplicationName(QStringLiteral("host-test"));
    QGuiApplication application(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    EditorViewTest test(desktop);
    return QTest::qExec(&test, argc, argv);
}

#include "EditorViewTest.moc"
