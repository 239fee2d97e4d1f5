#include "ui/ToolWindows.h"

#include "FakeStore.h"
#include "WindowRig.h"
#include "settings/HostSettings.h"
#include "settings/Translations.h"
#include "ui/HelpPage.h"

#include <QtGui/QDesktopServices>
#include <QtGui/QScreen>
#include <QtQml/QQmlContext>

/// The settings and the help, opened through the navigation.
class ToolWindowsTest : public QObject
{
    Q_OBJECT

public:
    Q_INVOKABLE void rememberUrl(const QUrl &url) { browsed = url; }

private Q_SLOTS:
    void initTestCase()
    {
        QCoreApplication::setOrganizationName("gauge-test"_q);
        QCoreApplication::setApplicationName("tool-windows"_q);
        QDesktopServices::setUrlHandler("https"_q, this, "rememberUrl");
    }

    void init()
    {
        home.emplace();
        settings.emplace(
            std::vector<TelemetrySourceChoice>{{"demo"_q, "Demo"}, {"other"_q, "Other"}});
        store.emplace();
        store->add("Road"_q);
        mine = store->add("Mine"_q);
        navigation.emplace();
        tools.emplace(*settings, *store, *navigation);
    }

    void cleanup()
    {
        tools.reset();
        QVERIFY(window == nullptr);
    }

    void allSettingsAreReachedByKeyboard()
    {
        open("SoftwareConfiguration");
        press({Qt::Key_Down, Qt::Key_Tab, Qt::Key_Down, Qt::Key_Tab, Qt::Key_Return, Qt::Key_Down,
               Qt::Key_Return, Qt::Key_Tab, Qt::Key_Down});
        QVERIFY(settings->useMph());
        QCOMPARE(settings->telemetrySource(), "other"_q);
        QCOMPARE(settings->startupDashboard(), "Road"_q);
        QCOMPARE(settings->language(), "de"_q);
        QSignalSpy restart(&*tools, &ToolWindows::restartRequested);
        press({Qt::Key_Tab, Qt::Key_Return});
        QTRY_COMPARE(restart.count(), 1);
        settings->setUseMph(false);
        QVERIFY(item("restart") != nullptr);
        settings->setTelemetrySource("demo"_q); // The language needs no restart.
        QTRY_VERIFY(item("restart") == nullptr);
        settings->setUseMph(true);
        QTRY_VERIFY(item("restart") != nullptr);
        settings->sessionStarted();
        QTRY_VERIFY(item("restart") == nullptr);
        press({Qt::Key_Escape});
        QTRY_VERIFY(window == nullptr);
    }

    void theListOfDashboardsFollowsTheStore()
    {
        settings->setStartupDashboard("Mine"_q);
        open("SoftwareConfiguration");
        QCOMPARE(shown("dashboard"), "Mine"_q);
        store->performAction(mine, DashboardProfileAction::Remove, {});
        QTRY_COMPARE(shown("dashboard"), "Mine (no longer exists)"_q);
        QCOMPARE(settings->startupDashboardAmong({"Road"_q, "Mine"_q}), "Mine"_q);
        QCOMPARE(settings->startupDashboardAmong({"Road"_q}), QString());
        QVERIFY(item("problem") != nullptr && settings->problem().contains("'Mine'"_q));
        settings->setStartupDashboard("Road"_q);
        QVERIFY(item("problem") == nullptr);

        // A long list leaves its field in sight.
        for (int i = 0; i < 30; ++i)
            store->add(QString::number(i));
        Q_EMIT store->profileListChanged();
        press({Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Return});
        const QQuickItem *field = item("dashboard");
        auto *popup = field->property("popup").value<QObject *>();
        QTRY_VERIFY(popup->property("opened").toBool());
        const auto *list = popup->property("contentItem").value<QQuickItem *>()->parentItem();
        const QRectF place = list->mapRectToScene(QRectF({}, list->size()));
        QVERIFY(!place.intersects(field->mapRectToScene(QRectF({}, field->size()))));
        QVERIFY(QRectF({}, window->size()).contains(place) && place.height() > 100);
    }

    void aNewLanguageIsSpokenAtOnce()
    {
        Translations translations;
        open("HelpBrowser");
        translations.use("de"_q);
        QTRY_COMPARE(window->title(), "Hilfe"_q);
        QTRY_VERIFY(textOfPage().contains("Ein Dashboard bauen"_q));
        window->close();
        open("SoftwareConfiguration");
        QCOMPARE(shown("units"), "Kilometer pro Stunde (km/h)"_q);
        translations.use("en"_q);
        QTRY_COMPARE(shown("dashboard"), "Last used"_q);
    }

    void linksLeadIntoThePageAndIntoTheBrowser()
    {
        open("HelpBrowser", "dashboards"_q);
        QCOMPARE(scrolled(), 0.0);
        follow("#the-properties");
        const qreal properties = scrolled();
        QVERIFY(properties > 0);
        follow("#no-such-heading");
        QCOMPARE(scrolled(), properties);
        follow("https://doc.qt.io/qt-5/");
        QCOMPARE(browsed, QUrl("https://doc.qt.io/qt-5/"_q));
        navigation->showView("HelpBrowser"_q);
        QCOMPARE(scrolled(), 0.0);
        navigation->showView("HelpBrowser"_q, "../dashboards"_q);
        QVERIFY(textOfPage().contains("There is no help on this topic."_q));
    }

    void aWordIsFoundByKeyboardFromWhereOneReads()
    {
        open("HelpBrowser", "dashboards#the-editor"_q);
        QVERIFY(scrolled() > 0);
        const auto place = [this] { return item("text")->property("selectionStart").toInt(); };
        const auto found = [this] { return item("text")->property("selectedText").toString(); };
        press({Qt::CTRL + Qt::Key_F});
        type(window, "gear");
        QCOMPARE(found().toLower(), "gear"_q);
        const int first = place();
        const QVariant page = window->rootContext()->contextProperty("help_page"_q);
        QVERIFY(first > page.value<HelpPage *>()->positionOf("the-editor"_q));
        press({Qt::Key_Return});
        QVERIFY(place() != first && found().toLower() == "gear"_q);
        press({Qt::SHIFT + Qt::Key_Return});
        QCOMPARE(place(), first);
        press({Qt::Key_Escape});
        QVERIFY(window->isVisible());
        press({Qt::Key_Escape});
        QTRY_VERIFY(window == nullptr);
    }

    void aFrameFindsRoomOnTheScreen()
    {
        for (const QRect saved :
             {QRect(100, 100, 5000, 3000), QRect(-500, -500, 9000, 9000), QRect()}) {
            WindowPlace{saved}.save("Large"_q);
            HostWindow large("Large"_q, *navigation);
            large.setMinimumSize(QSize(1000, 3000));
            large.setInitialSize(5000, 3000);
            large.open(QUrl("qrc:/qml/HLVN/Controls/Label.qml"_q));
            QVERIFY(QTest::qWaitForWindowExposed(&large));
            const QRect screen = large.screen()->availableGeometry();
            QTRY_VERIFY(WindowPlace::room(screen).contains(large.geometry()));
        }
        for (const QPoint corner : {QPoint(9000, 9000), QPoint(-490, 100)}) {
            WindowPlace place{QRect(corner, QSize(500, 300))};
            place.fitToScreens();
            QVERIFY(place.geometry.isNull());
        }
        // Nor is a place believed that can't be one.
        WindowPlace{QRect(2'000'000'000, 0, 500, 300)}.save("Odd"_q);
        QSettings().setValue("windows/Odd/stayOnTop"_q, "maybe"_q);
        const WindowPlace odd = WindowPlace::load("Odd"_q);
        QVERIFY(odd.geometry.isNull() && !odd.stayOnTop);
    }

private:
    void open(const char *name, const QVariant &argument = {})
    {
        navigation->showView(QString::fromUtf8(name), argument);
        const QWindowList windows = QGuiApplication::topLevelWindows();
        for (QWindow *candidate : windows) {
            if (candidate->isVisible())
                window = qobject_cast<HostWindow *>(candidate);
        }
        QVERIFY(window != nullptr && QTest::qWaitForWindowActive(window));
    }

    void press(const QList<int> &list) const { keys(window, list); }
    QQuickItem *item(const char *name) const { return named(window, name); }
    QString shown(const char *name) const { return item(name)->property("displayText").toString(); }

    QString textOfPage() const { return item("text")->property("text").toString(); }

    void follow(const char *link) const
    {
        QMetaObject::invokeMethod(item("text"), "linkActivated",
                                  Q_ARG(QString, QString::fromUtf8(link)));
    }

    /// How far down the page is once it has settled.
    qreal scrolled() const
    {
        const bool settled = QTest::qWaitFor(
            [this] { return window->rootObject()->property("pinned").toInt() == -1; });
        return settled ? item("page")->property("contentY").toReal() : -1;
    }

    std::optional<TemporaryHome> home;
    std::optional<HostSettings> settings;
    std::optional<FakeStore> store;
    std::optional<Navigation> navigation;
    std::optional<ToolWindows> tools;
    QPointer<HostWindow> window;
    QUrl browsed;
    int mine = 0;
};

QTEST_MAIN(ToolWindowsTest)
#include "ToolWindowsTest.moc"
