#include "ui/GalleryWindow.h"

#include "FakeEngine.h"
#include "FakeStore.h"
#include "VehicleNames.h"
#include "support/TemporaryHome.h"
#include "ui/Navigation.h"

#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtTest/QtTest>

#include <optional>

namespace {

QString text(const char *characters)
{
    return QString::fromUtf8(characters);
}

bool isShown(const QQuickItem *item)
{
    return item->isVisible() && item->width() > 0 && item->height() > 0;
}

/// The shown item below `item` whose property has this value; null if there is none.
QQuickItem *find(QQuickItem *item, const char *property, const QVariant &value)
{
    if (!item->isVisible())
        return nullptr;
    if (item->property(property) == value && isShown(item))
        return item;
    const QList<QQuickItem *> children = item->childItems();
    for (QQuickItem *const child : children) {
        if (QQuickItem *const found = find(child, property, value))
            return found;
    }
    return nullptr;
}

} // namespace

class GalleryWindowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QCoreApplication::setOrganizationName(text("Gallery"));
        QCoreApplication::setApplicationName(text("Test"));
    }

    void init()
    {
        road = store.emplace().add(text("Road"), true, {text("Auralis Silhouette")});
        mine = store->add(text("Mine"), false, {text("Van"), text("Truck")});
        store->add(text("Rally"));
        shown.clear();
        navigation.emplace();
        for (const char *const name :
             {"DashboardWindow", "DashboardEditor", "SoftwareConfiguration", "HelpBrowser"}) {
            navigation->addTarget(text(name), [this, name](const QVariant &argument) {
                shown += (text(name) + u' ' + argument.toString()).trimmed();
            });
        }
    }

    void cleanup()
    {
        if (store)
            store->gate.release(100);
        window.reset();
        QVERIFY(!engine.hasConsumers());
        QVERIFY2(warnings.isEmpty(), qPrintable(warnings.value(0).toString()));
        navigation.reset();
        store.reset();
    }

    void activatesByClickAndByKey()
    {
        open();
        click(card(text("Rally")));
        QTRY_COMPARE(store->calls(), QStringList{text("0 2 ")});
        QTRY_VERIFY(item("text", text("Active")) != nullptr);
        press(Qt::Key_Home);
        press(Qt::Key_Return);
        QTRY_COMPARE(store->calls().last(), text("0 1 "));
        press(Qt::Key_Right);
        press(Qt::Key_Right);
        press(Qt::Key_Space);
        QTRY_COMPARE(store->calls().last(), text("0 0 "));
        QCOMPARE(store->calls().size(), 3);
    }

    void searchesAsOneTypes()
    {
        open();
        QTest::keyClick(window.get(), Qt::Key_F, Qt::ControlModifier);
        type("silhou");
        QTRY_VERIFY(card(text("Road")) != nullptr);
        QVERIFY(card(text("Mine")) == nullptr);
        type("x");
        QTRY_VERIFY(item("objectName", text("emptyHeading")) != nullptr);
        QVERIFY(textOf("emptyHeading").contains(text("silhoux")));
        press(Qt::Key_Escape);
        QTRY_VERIFY(card(text("Mine")) != nullptr);
        press(Qt::Key_Escape);
        QVERIFY(item("objectName", text("grid"))->hasActiveFocus());
    }

    void renamesAfterItsNameHasBeenFound()
    {
        open();
        vehicles.report(text("Van"));
        QTRY_VERIFY(textOf("vehicle").contains(text("Mine")));
        focusCard(mine);
        press(Qt::Key_F2);
        QTRY_VERIFY(item("objectName", text("nameField")) != nullptr);
        QVERIFY(!textOf("nameProblem").isEmpty());
        type("ROAD");
        QVERIFY(!textOf("nameProblem").isEmpty());
        press(Qt::Key_Return);
        QVERIFY(!item("objectName", text("accept"))->isEnabled());
        QCOMPARE(store->calls(), QStringList());
        type("s & more");
        QTRY_COMPARE(textOf("nameProblem"), QString());
        store->refusal = text("<i>No</i> room");
        press(Qt::Key_Return);
        QTRY_COMPARE(textOf("nameProblem"), store->refusal);
        QCOMPARE(store->calls(), QStringList{text("2 1 ROADs & more")});
        store->refusal.clear();
        click(item("objectName", text("accept")));
        QTRY_VERIFY(item("objectName", text("nameField")) == nullptr);
        QTRY_VERIFY(card(text("ROADs & more")) != nullptr);
        QVERIFY(textOf("vehicle").contains(text("ROADs & more")));
        QVERIFY(item("objectName", text("grid"))->hasActiveFocus());
    }

    void aDialogFromTheMenuGetsTheKeyboard()
    {
        open();
        focusCard(mine);
        press(Qt::Key_Menu);
        QTRY_VERIFY(item("objectName", text("menuRename")) != nullptr);
        press(Qt::Key_Escape);
        QTRY_VERIFY(item("objectName", text("grid"))->hasActiveFocus());
        press(Qt::Key_Menu);
        QTRY_VERIFY(item("objectName", text("menuRename")) != nullptr);
        click(item("objectName", text("menuRename")));
        QTRY_VERIFY(item("objectName", text("menuRename")) == nullptr);
        type("Bus");
        press(Qt::Key_Return);
        QTRY_COMPARE(store->calls(), QStringList{text("2 1 Bus")});
        QTRY_VERIFY(item("objectName", text("grid"))->hasActiveFocus());
    }

    void removesOnlyAfterAQuestionThatNamesTheLoss()
    {
        open();
        focusCard(mine);
        press(Qt::Key_Delete);
        QTRY_VERIFY(item("objectName", text("removeText")) != nullptr);
        for (const char *const loss : {"/dashboards/Mine", "Van", "Truck"})
            QVERIFY(textOf("removeText").contains(text(loss)));
        press(Qt::Key_Return); // The keyboard is on the harmless button.
        QTRY_VERIFY(item("objectName", text("removeText")) == nullptr);
        QCOMPARE(store->calls(), QStringList());
        press(Qt::Key_Delete);
        QTRY_VERIFY(item("objectName", text("accept")) != nullptr);
        store->refusal = text("It is in use");
        click(item("objectName", text("accept")));
        QTRY_COMPARE(textOf("removeProblem"), store->refusal);
        store->refusal.clear();
        click(item("objectName", text("accept")));
        QTRY_VERIFY(card(text("Mine")) == nullptr);
        QVERIFY(item("objectName", text("removeText")) == nullptr);
    }

    void leavesBuiltInDashboardsAsTheyCame()
    {
        open();
        focusCard(road);
        press(Qt::Key_F2);
        press(Qt::Key_Delete);
        QVERIFY(item("objectName", text("accept")) == nullptr);
        press(Qt::Key_Menu);
        QTRY_VERIFY(item("objectName", text("menuRemove")) != nullptr);
        for (const char *const name : {"menuRename", "menuRemove"}) {
            const QQuickItem *const entry = item("objectName", text(name));
            QVERIFY(!entry->isEnabled());
            QVERIFY(!entry->property("reason").toString().isEmpty());
        }
        press(Qt::Key_Escape);
        QTRY_VERIFY(item("objectName", text("menuRemove")) == nullptr);
        QTest::mouseClick(window.get(), Qt::RightButton, {}, middle(card(text("Mine"))));
        QTRY_VERIFY(item("objectName", text("menuRemove")) != nullptr);
        QVERIFY(item("objectName", text("menuRemove"))->isEnabled());
        QCOMPARE(store->calls(), QStringList());
    }

    void editsACopyOfABuiltInDashboard()
    {
        open();
        focusCard(mine);
        QTest::keyClick(window.get(), Qt::Key_E, Qt::ControlModifier);
        QCOMPARE(std::exchange(shown, {}),
                 QStringList{text("DashboardEditor /dashboards/Mine/Dash.qml")});
        focusCard(road);
        QTest::keyClick(window.get(), Qt::Key_E, Qt::ControlModifier);
        QTRY_VERIFY(item("objectName", text("nameField")) != nullptr);
        QCOMPARE(shown, QStringList());
        type("Night");
        press(Qt::Key_Return);
        QTRY_COMPARE(shown, QStringList{text("DashboardEditor /dashboards/Night/Dash.qml")});
        QVERIFY(item("objectName", text("nameField")) == nullptr);
    }

    void copiesTheTemplateIfThereIsOne()
    {
        open();
        QVERIFY(item("objectName", text("newFromTemplate")) == nullptr);
        window.reset();
        const auto id = store->add(text("Template"), true);
        open();
        QVERIFY(card(text("Template")) == nullptr);
        click(item("objectName", text("newFromTemplate")));
        QTRY_VERIFY(item("objectName", text("nameField")) != nullptr);
        type("Fresh");
        press(Qt::Key_Return);
        QTRY_COMPARE(shown, QStringList{text("DashboardEditor /dashboards/Fresh/Dash.qml")});
        QCOMPARE(store->calls(), QStringList{text("1 %1 Fresh").arg(id)});
    }

    void opensTheOtherWindows()
    {
        open();
        click(item("objectName", text("openWindow")));
        click(item("objectName", text("settings")));
        click(item("objectName", text("help")));
        press(Qt::Key_F1);
        click(item("objectName", text("live")));
        press(Qt::Key_Return); // The live picture has the keyboard now.
        QCOMPARE(shown, QStringList({text("DashboardWindow"), text("SoftwareConfiguration"),
                                     text("HelpBrowser dashboards"), text("HelpBrowser dashboards"),
                                     text("DashboardWindow"), text("DashboardWindow")}));
    }

    void livesOnWhileTheStoreIsBusy()
    {
        open();
        store->gated = true;
        focusCard(mine);
        press(Qt::Key_Delete);
        QTRY_VERIFY(item("objectName", text("accept")) != nullptr);
        click(item("objectName", text("accept")));
        QTRY_COMPARE(store->waitingActions.load(), 1);
        QVERIFY(!item("objectName", text("accept"))->isEnabled());
        press(Qt::Key_Escape);
        QTRY_VERIFY(item("objectName", text("removeText")) == nullptr);
        QVERIFY(item("objectName", text("busy")) != nullptr);

        // The store's lock is held: whatever asks it on this thread would never come back.
        QSignalSpy frames(window.get(), &QQuickWindow::frameSwapped);
        Q_EMIT store->profileListChanged();
        focusCard(road);
        press(Qt::Key_Return);
        QTest::keyClick(window.get(), Qt::Key_D, Qt::ControlModifier);
        press(Qt::Key_Menu);
        QTRY_VERIFY(item("objectName", text("menuCopy")) != nullptr);
        QVERIFY(!item("objectName", text("menuCopy"))->isEnabled());
        QTRY_VERIFY(frames.count() > 2);
        press(Qt::Key_Escape);

        store->refusal = text("It is in use");
        store->gate.release();
        QTRY_COMPARE(textOf("messageText"), store->refusal);
    }

    void closesInTheMiddleOfACopy()
    {
        open();
        store->gated = true;
        focusCard(road);
        QTest::keyClick(window.get(), Qt::Key_D, Qt::ControlModifier);
        QTRY_VERIFY(item("objectName", text("nameField")) != nullptr);
        press(Qt::Key_Return);
        QTRY_COMPARE(store->waitingActions.load(), 1);
        window->close();
        std::thread opener([this] { store->gate.release(); });
        window.reset();
        opener.join();
        QVERIFY(store->profileNameExists(text("Road copy")));
    }

    void outlivesADashboardThatGoesUnderADialog()
    {
        open();
        focusCard(mine);
        press(Qt::Key_F2);
        QTRY_VERIFY(item("objectName", text("nameField")) != nullptr);
        type("Yours");
        store->drop(mine);
        QTRY_VERIFY(!textOf("nameProblem").isEmpty());
        QVERIFY(!item("objectName", text("accept"))->isEnabled());
        press(Qt::Key_Escape);
        QTRY_VERIFY(item("objectName", text("nameField")) == nullptr);

        const auto other = store->add(text("Other"));
        Q_EMIT store->profileListChanged();
        QTRY_VERIFY(card(text("Other")) != nullptr);
        focusCard(other);
        press(Qt::Key_Delete);
        QTRY_VERIFY(item("objectName", text("removeText")) != nullptr);
        store->drop(other);
        QTRY_VERIFY(item("objectName", text("removeText")) == nullptr);
    }

    void takesAnyName_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("markup") << text("<b>Bold</b><img src='x'>");
        QTest::newRow("long") << QString(255, u'W');
        QTest::newRow("right to left") << QString::fromUtf8("\u05d0\u05d1\u05d2 \u202eabc");
        QTest::newRow("place markers") << text("%1 %2 %n &");
    }

    void takesAnyName()
    {
        QFETCH(QString, name);
        const auto id = store->add(name, false, {name});
        open();
        focusCard(id);
        press(Qt::Key_Return);
        QTRY_COMPARE(store->activeProfileId(), id);
        vehicles.report(name);
        press(Qt::Key_Delete);
        QTRY_VERIFY(item("objectName", text("removeText")) != nullptr);
        QVERIFY(textOf("removeText").contains(name));
        QTRY_VERIFY(textOf("vehicle").contains(name));
        const QList<QQuickItem *> labels = window->contentItem()->findChildren<QQuickItem *>();
        for (QQuickItem *const label : labels) {
            if (label->property("text").toString().contains(name) &&
                label->property("textFormat").isValid()) {
                QCOMPARE(label->property("textFormat").toInt(), int(Qt::PlainText));
                QVERIFY(!label->isVisible() || label->width() <= window->width());
            }
        }
    }

    void tellsWhatToDoWithoutDashboards()
    {
        store.emplace();
        open();
        QVERIFY(item("objectName", text("emptyHeading")) != nullptr);
        QVERIFY(!item("objectName", text("openWindow"))->isEnabled());
        for (const int key : {Qt::Key_Return, Qt::Key_F2, Qt::Key_Delete, Qt::Key_Menu,
                              Qt::Key_Down, Qt::Key_End, Qt::Key_PageDown})
            press(key);
        QTest::keyClick(window.get(), Qt::Key_E, Qt::ControlModifier);
        QTest::keyClick(window.get(), Qt::Key_D, Qt::ControlModifier);
        QCOMPARE(store->calls(), QStringList());
        QCOMPARE(shown, QStringList());
        store->add(text("First"));
        Q_EMIT store->profileListChanged();
        QTRY_VERIFY(card(text("First")) != nullptr);
    }

    void showsWhereAPictureIsMissing()
    {
        const QTemporaryDir folder;
        QImage picture(480, 272, QImage::Format_RGB32);
        picture.fill(Qt::red);
        const QString path = folder.filePath(text("preview #1 100%.png"));
        QVERIFY(picture.save(path));
        store.emplace().add(text("Pictured"), false, {}, path);
        open();
        const auto isRed = [this] {
            const QQuickItem *const pictured = card(text("Pictured"));
            const QImage screen = window->grabWindow();
            const QPoint place = pictured->mapToScene(QPointF(pictured->width() / 4, 60)).toPoint();
            return screen.pixelColor(place * screen.devicePixelRatio()) == QColor(Qt::red);
        };
        QTRY_VERIFY(isRed());
        QVERIFY(item("text", text("No preview")) == nullptr);
        QFile::remove(path);
        Q_EMIT store->profileListChanged();
        QTRY_VERIFY(item("text", text("No preview")) != nullptr);
        QVERIFY(!isRed());
    }

private:
    void open()
    {
        window = std::make_unique<GalleryWindow>(*navigation, engine, *store, vehicles, monitor,
                                                 text("Demo lap"));
        connect(window->engine(), &QQmlEngine::warnings, this,
                [this](const QList<QQmlError> &errors) { warnings += errors; });
        window->openGallery();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
        QCOMPARE(window->errors().size(), 0);
    }

    QQuickItem *item(const char *property, const QString &value) const
    {
        return find(window->contentItem(), property, value);
    }

    /// Not what the view keeps for another dashboard.
    QQuickItem *card(const QString &name) const
    {
        QQuickItem *const grid = item("objectName", text("grid"));
        for (int row = 0; row < grid->property("count").toInt(); ++row) {
            QQuickItem *found = nullptr;
            QMetaObject::invokeMethod(grid, "itemAtIndex", Q_RETURN_ARG(QQuickItem *, found),
                                      Q_ARG(int, row));
            if (found != nullptr && found->property("name") == name)
                return found;
        }
        return nullptr;
    }

    QString textOf(const char *name) const
    {
        const QQuickItem *const found = item("objectName", text(name));
        return found != nullptr ? found->property("text").toString() : QString();
    }

    static QPoint middle(const QQuickItem *item)
    {
        return item->mapToScene(item->boundingRect().center()).toPoint();
    }

    void click(const QQuickItem *item) const
    {
        QVERIFY(item != nullptr);
        QTest::mouseClick(window.get(), Qt::LeftButton, {}, middle(item));
    }

    void press(int key) const { QTest::keyClick(window.get(), Qt::Key(key)); }

    void type(const char *letters) const
    {
        for (const char *letter = letters; *letter != 0; ++letter)
            QTest::keyClick(window.get(), *letter);
    }

    void focusCard(int id) const
    {
        QQuickItem *const grid = item("objectName", text("grid"));
        grid->forceActiveFocus();
        for (int row = 0; grid->property("currentId").toInt() != id; ++row)
            QVERIFY(grid->setProperty("currentIndex", row) && row < 1000);
    }

    const TemporaryHome home;
    std::optional<FakeStore> store;
    FakeEngine engine;
    VehicleNames vehicles;
    TelemetryMonitor monitor;
    std::optional<Navigation> navigation;
    std::unique_ptr<GalleryWindow> window;
    QList<QQmlError> warnings;
    QStringList shown; ///< What the navigation was asked for.
    int road = 0;
    int mine = 0;
};

QTEST_MAIN(GalleryWindowTest)
#include "GalleryWindowTest.moc"
