#include "ui/SettingsWindow.h"

#include "DashboardAbstractProfilesManager.h"
#include "settings/HostSettings.h"
#include "settings/Translations.h"
#include "support/LogCapture.h"
#include "support/TemporaryHome.h"
#include "ui/Navigation.h"
#include "ui/ToolWindows.h"

#include <QtGui/QGuiApplication>
#include <QtQuick/QQuickItem>
#include <QtTest/QSignalSpy>
#include <QtTest/QtTest>

#include <algorithm>

namespace {

/// A store of names, and of nothing behind them.
class NamedStore final : public DashboardAbstractProfilesManager
{
public:
    using Id = DashboardProfileHeader::Id;

    QStringList names{QStringLiteral("Road"), QStringLiteral("Mine")};

    qint32 revision() const override { return 1; }
    Id activeProfileId() const override { return DashboardProfileHeader::NoId; }
    std::vector<DashboardProfileHeader> profileHeaders() const override
    {
        std::vector<DashboardProfileHeader> headers;
        for (const QString &name : names)
            headers.push_back({static_cast<Id>(headers.size()), name, {}, false});
        return headers;
    }
    std::unique_ptr<DashboardProfileHeader> profileHeader(Id) const override { return {}; }
    std::unique_ptr<DashboardProfile> profile(Id) const override { return {}; }
    DashboardActionResult performAction(Id, int, const QVariant &) override { return {}; }
    bool profileNameExists(const QString &) const override { return false; }
    void activateRecentProfileForVehicle(QString) override {}
};

HostWindow *openWindow()
{
    const QWindowList windows = QGuiApplication::topLevelWindows();
    for (QWindow *window : windows) {
        auto *hostWindow = qobject_cast<HostWindow *>(window);
        if (hostWindow != nullptr && hostWindow->isVisible())
            return hostWindow;
    }
    return nullptr;
}

} // namespace

class SettingsWindowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QCoreApplication::setOrganizationName(QStringLiteral("gauge-test"));
        QCoreApplication::setApplicationName(QStringLiteral("settings-window"));
    }

    void init()
    {
        home = std::make_unique<TemporaryHome>();
        settings = std::make_unique<HostSettings>(std::vector<TelemetrySourceChoice>{
            {QStringLiteral("demo"), "Demo"}, {QStringLiteral("other"), "Other"}});
        store = std::make_unique<NamedStore>();
        navigation = std::make_unique<Navigation>();
        tools = std::make_unique<ToolWindows>(*settings, *store, *navigation);
        navigation->showView(QStringLiteral("SoftwareConfiguration"));
        window = openWindow();
        QVERIFY(window != nullptr);
        QVERIFY(QTest::qWaitForWindowActive(window));
    }

    void cleanup()
    {
        tools.reset();
        navigation.reset();
        store.reset();
        settings.reset();
        home.reset();
    }

    void everythingIsReachedByKeyboard()
    {
        QCOMPARE(focusFrames(), 1);
        keys({Qt::Key_Down, Qt::Key_Tab, Qt::Key_Down, Qt::Key_Tab, Qt::Key_Down, Qt::Key_Tab,
              Qt::Key_Down});
        QVERIFY(settings->useMph());
        QCOMPARE(settings->telemetrySource(), QStringLiteral("other"));
        QCOMPARE(settings->startupDashboard(), QStringLiteral("Road"));
        QCOMPARE(settings->language(), QStringLiteral("de"));
        QSignalSpy restart(tools.get(), &ToolWindows::restartRequested);
        keys({Qt::Key_Tab, Qt::Key_Return});
        QTRY_COMPARE(restart.count(), 1);
    }

    void aListOpensByEnterAndClosesByEscape()
    {
        keys({Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Return, Qt::Key_Down, Qt::Key_Down});
        QCOMPARE(settings->startupDashboard(), QString());
        keys({Qt::Key_Return});
        QCOMPARE(settings->startupDashboard(), QStringLiteral("Mine"));
        keys({Qt::Key_Return, Qt::Key_Escape});
        QVERIFY(window->isVisible());
        const QPointer<HostWindow> closing = window;
        QTest::keyPress(window, Qt::Key_Escape); // There is no window left for the release.
        QTRY_VERIFY(closing == nullptr);
    }

    void itShrinksOnASmallScreen()
    {
        const LogCapture log;
        const qreal height = item("units")->height();
        window->setMinimumSize({});
        window->resize(400, 200);
        QTRY_VERIFY(item("units")->height() < height);
        QCOMPARE(log.lines, QStringList());
    }

    void aLongListLeavesItsFieldInSight_data()
    {
        QTest::addColumn<int>("dashboards");
        for (const int count : {8, 30})
            QTest::addRow("%d", count) << count;
    }

    void aLongListLeavesItsFieldInSight()
    {
        QFETCH(int, dashboards);
        store->names.clear();
        for (int i = 0; i < dashboards; ++i)
            store->names += QString::number(i);
        Q_EMIT store->profileListChanged();
        keys({Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Return});
        const QQuickItem *field = item("dashboard");
        auto *popup = field->property("popup").value<QObject *>();
        QTRY_VERIFY(popup->property("opened").toBool());
        const auto *list = popup->property("contentItem").value<QQuickItem *>()->parentItem();
        const QRectF place = list->mapRectToScene(QRectF({}, list->size()));
        QVERIFY(!place.intersects(field->mapRectToScene(QRectF({}, field->size()))));
        QVERIFY(QRectF({}, window->size()).contains(place));
        QVERIFY(place.height() > 100);
    }

    void theRestartIsOfferedOnlyWhileItIsNeeded()
    {
        QVERIFY(!item("restart")->isVisible());
        settings->setUseMph(true);
        QVERIFY(item("restart")->isVisible());
        settings->setUseMph(false);
        QVERIFY(!item("restart")->isVisible());
    }

    void theListOfDashboardsFollowsTheStore()
    {
        settings->setStartupDashboard(QStringLiteral("Mine"));
        QCOMPARE(shown("dashboard"), QStringLiteral("Mine"));
        store->names = QStringList{QStringLiteral("Road")};
        Q_EMIT store->profileListChanged();
        QVERIFY(shown("dashboard").startsWith(QStringLiteral("Mine (")));
        QCOMPARE(settings->startupDashboardAmong(store->names), QString());
        QVERIFY(item("problem")->isVisible());
        settings->setStartupDashboard(QStringLiteral("Road"));
        QCOMPARE(shown("dashboard"), QStringLiteral("Road"));
        QCOMPARE(item("dashboard")->property("count").toInt(), 2);
        QVERIFY(!item("problem")->isVisible());
    }

    void aNewLanguageIsSpokenAtOnce()
    {
        Translations translations;
        const QObject connected;
        connect(settings.get(), &HostSettings::languageChanged, &connected,
                [this, used = &translations] { used->use(settings->language()); });
        settings->setLanguage(QStringLiteral("de"));
        QTRY_COMPARE(window->title(), QStringLiteral("Einstellungen"));
        QCOMPARE(shown("units"), QStringLiteral("Kilometer pro Stunde (km/h)"));
        QCOMPARE(shown("dashboard"), QStringLiteral("Das zuletzt verwendete"));
        settings->setLanguage(QStringLiteral("en"));
        QTRY_COMPARE(window->title(), QStringLiteral("Settings"));
    }

private:
    void keys(std::initializer_list<Qt::Key> sequence) const
    {
        for (const Qt::Key key : sequence)
            QTest::keyClick(window, key);
    }

    QQuickItem *item(const char *name) const
    {
        return window->rootObject()->findChild<QQuickItem *>(QLatin1String(name));
    }

    int focusFrames() const
    {
        const QList<QQuickItem *> items = window->rootObject()->findChildren<QQuickItem *>();
        return static_cast<int>(std::count_if(items.begin(), items.end(), [](QQuickItem *item) {
            return item->isVisible() &&
                   QByteArray(item->metaObject()->className()).startsWith("FocusFrame");
        }));
    }

    QString shown(const char *name) const { return item(name)->property("displayText").toString(); }

    std::unique_ptr<TemporaryHome> home;
    std::unique_ptr<HostSettings> settings;
    std::unique_ptr<NamedStore> store;
    std::unique_ptr<Navigation> navigation;
    std::unique_ptr<ToolWindows> tools;
    HostWindow *window = nullptr;
};

QTEST_MAIN(SettingsWindowTest)
#include "SettingsWindowTest.moc"
