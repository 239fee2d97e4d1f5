#include "ui/GalleryWindow.h"

#include "FakeStore.h"
#include "WindowRig.h"
#include "settings/Translations.h"
#include "support/FakeEngine.h"
#include "support/LogCapture.h"
#include "telemetry/VehicleNames.h"

#include <optional>

/// The gallery over a store with a built-in dashboard and two of the user's. Anything that it logs
/// is a fault.
class GalleryWindowTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        road = store.emplace().add("Road"_q, true, {"Auralis Silhouette"_q});
        mine = store->add("Mine"_q, false, {"Van"_q, "Truck"_q});
        store->add("Rally"_q);
        shown.clear();
        navigation.emplace();
        for (const char *name :
             {"DashboardWindow", "DashboardEditor", "SoftwareConfiguration", "HelpBrowser"}) {
            navigation->addTarget(QString::fromUtf8(name), [this, name](const QVariant &argument) {
                shown += (QString::fromUtf8(name) + u' ' + argument.toString()).trimmed();
            });
        }
        log.emplace();
        window = std::make_unique<GalleryWindow>(*navigation, engine, *store, vehicles, monitor,
                                                 "Demo lap"_q);
        window->openGallery();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
    }

    void cleanup()
    {
        store->gate.release(100);
        window.reset();
        QVERIFY(!engine.hasConsumers());
        QCOMPARE(log->lines, QStringList());
    }

    void activatesByClickAndByKey()
    {
        click(card("Rally"_q));
        QTRY_COMPARE(store->calls(), QStringList{"0 2 "_q});
        QTRY_VERIFY(find(window.get(), "text", "Active"_q) != nullptr);
        press({Qt::Key_Home, Qt::Key_Return, Qt::Key_Right, Qt::Key_Right, Qt::Key_Space});
        QTRY_COMPARE(store->calls(), QStringList({"0 2 "_q, "0 1 "_q, "0 0 "_q}));
    }

    void searchesAsOneTypes()
    {
        press({Qt::CTRL | Qt::Key_F});
        type(window.get(), "silhou");
        QTRY_COMPARE(cards(), 1);
        type(window.get(), "x");
        QTRY_VERIFY(textOf("emptyHeading").contains("silhoux"_q));
        press({Qt::Key_Escape});
        QTRY_COMPARE(cards(), 3);
        press({Qt::Key_Escape});
        QVERIFY(item("grid")->hasActiveFocus());
    }

    void opensTheOtherWindows()
    {
        for (const char *button : {"openWindow", "settings", "help", "live"})
            click(item(button));
        press({Qt::Key_F1, Qt::Key_Return}); // The live picture has the keyboard now.
        QCOMPARE(shown, QStringList({"DashboardWindow"_q, "SoftwareConfiguration"_q,
                                     "HelpBrowser dashboards"_q, "DashboardWindow"_q,
                                     "HelpBrowser dashboards"_q, "DashboardWindow"_q}));
    }

    void itsHeaderHasRoomAtTheSmallestWidth()
    {
        Translations translations;
        translations.use("de"_q);
        window->resize(720, 540);
        QTRY_COMPARE(window->rootObject()->size(), QSizeF(720, 540));
        for (const char *label :
             {"Mitgeliefert  ·  1 Fahrzeug zugeordnet", "Fenster öffnen", "Fahrzeuge"}) {
            const QQuickItem *text = find(window.get(), "text", QString::fromUtf8(label));
            QVERIFY2(text != nullptr && !text->property("truncated").toBool(), label);
            QVERIFY2(text->mapToScene({text->width(), 0}).x() <= 720, label);
        }
    }

    void keysReachTheCurrentCardFromAnywhere()
    {
        focusCard(mine);
        press({Qt::CTRL | Qt::Key_F});
        type(window.get(), "in");
        press({Qt::Key_Home, Qt::Key_Delete}); // Edits the text.
        QCOMPARE(textOf("search"), "n"_q);
        press({Qt::CTRL | Qt::Key_E});
        QCOMPARE(shown, QStringList{"DashboardEditor /dashboards/Mine/Dash.qml"_q});
        press({Qt::Key_Escape, Qt::CTRL | Qt::Key_F});
        type(window.get(), "silhou"); // Another card comes into its place.
        QTRY_COMPARE(item("grid")->property("currentId").toInt(), road);
        press({Qt::CTRL | Qt::Key_D});
        QTRY_COMPARE(textOf("nameField"), "Road copy"_q);
    }

    void takesAnyName()
    {
        const QString name = "<b>%1</b> %n & \u202e"_q + QString(200, u'W');
        const auto id = store->add(name, false, {name});
        Q_EMIT store->profileListChanged();
        QTRY_COMPARE(cards(), 4);
        focusCard(id);
        press({Qt::Key_Return});
        QTRY_COMPARE(store->activeProfileId(), id);
        vehicles.report(name);
        press({Qt::Key_Delete});
        QTRY_VERIFY(textOf("removeText").contains(name) && textOf("vehicle").contains(name));
        const QList<QQuickItem *> labels = window->contentItem()->findChildren<QQuickItem *>();
        for (const QQuickItem *label : labels) {
            const QVariant format = label->property("textFormat");
            if (!format.isValid() || !label->property("text").toString().contains(name))
                continue;
            QCOMPARE(format.toInt(), int(Qt::PlainText));
            QVERIFY(!label->isVisible() || label->width() <= window->width());
        }
    }

    void tellsWhatToDoWithoutDashboards()
    {
        for (int id = 0; id < 3; ++id)
            store->performAction(id, DashboardProfileAction::Remove, {});
        QTRY_VERIFY(item("emptyHeading") != nullptr);
        const QStringList calls = store->calls();
        QVERIFY(!item("openWindow")->isEnabled());
        press({Qt::Key_Return, Qt::Key_F2, Qt::Key_Delete, Qt::Key_Menu, Qt::Key_Down, Qt::Key_End,
               Qt::CTRL | Qt::Key_E, Qt::CTRL | Qt::Key_D});
        QCOMPARE(store->calls(), calls);
        QCOMPARE(shown, QStringList());
    }

    void showsWhereAPictureIsMissing()
    {
        QImage picture(480, 272, QImage::Format_RGB32);
        picture.fill(Qt::red);
        const QString path = home.path("/preview #1 100%.png");
        QVERIFY(picture.save(path));
        store->add("Pictured"_q, false, {}, path);
        Q_EMIT store->profileListChanged();
        QTRY_COMPARE(cards(), 4);
        QTRY_COMPARE(window->grabWindow().pixelColor(middle(card("Pictured"_q)) - QPoint(50, 50)),
                     QColor(Qt::red));
        QVERIFY(QFile::remove(path));
        Q_EMIT store->profileListChanged();
        QTRY_VERIFY(window->grabWindow().pixelColor(middle(card("Pictured"_q)) - QPoint(50, 50)) !=
                    QColor(Qt::red));
        QVERIFY(find(window.get(), "text", "No preview"_q) != nullptr);
    }

    void renamesToAFreeName()
    {
        vehicles.report("Van"_q);
        click(card("Mine"_q), Qt::RightButton);
        QTRY_VERIFY(item("menuRename") != nullptr);
        click(item("menuRename"));
        QTRY_VERIFY(item("menuRename") == nullptr);
        type(window.get(), "ROAD");
        press({Qt::Key_Return});
        QVERIFY(!textOf("nameProblem").isEmpty());
        QCOMPARE(store->calls(), QStringList());
        type(window.get(), "s");
        QTRY_COMPARE(textOf("nameProblem"), QString());
        store->refusal = "<i>No</i> room"_q;
        press({Qt::Key_Return});
        QTRY_COMPARE(textOf("nameProblem"), store->refusal);
        store->refusal.clear();
        click(item("accept"));
        QTRY_VERIFY(item("nameField") == nullptr);
        QCOMPARE(store->calls().last(), "2 1 ROADs"_q);
        QTRY_VERIFY(textOf("vehicle").contains("ROADs"_q));
        QVERIFY(item("grid")->hasActiveFocus());
    }

    void removesOnlyAfterAQuestionThatNamesTheLoss()
    {
        focusCard(mine);
        press({Qt::Key_Delete});
        QTRY_VERIFY(item("removeText") != nullptr);
        for (const char *loss : {"Mine", "Van", "Truck"})
            QVERIFY(textOf("removeText").contains(QString::fromUtf8(loss)));
        press({Qt::Key_Return}); // The keyboard is on the harmless button.
        QTRY_VERIFY(item("removeText") == nullptr);
        QCOMPARE(store->calls(), QStringList());
        press({Qt::Key_Delete});
        QTRY_VERIFY(item("accept") != nullptr);
        store->refusal = "It is in use"_q;
        click(item("accept"));
        QTRY_COMPARE(textOf("removeProblem"), store->refusal);
        store->refusal.clear();
        click(item("accept"));
        QTRY_COMPARE(cards(), 2);
        QVERIFY(item("removeText") == nullptr);
    }

    void leavesBuiltInDashboardsAsTheyCame()
    {
        focusCard(road);
        for (const Qt::Key key : {Qt::Key_F2, Qt::Key_Delete}) {
            press({key});
            QTRY_VERIFY(textOf("messageText").contains("copy"_q));
            press({Qt::Key_Escape});
            QTRY_VERIFY(item("messageText") == nullptr);
        }
        for (const int id : {mine, road}) {
            focusCard(id);
            press({Qt::Key_Menu});
            QTRY_VERIFY(item("menuRemove") != nullptr);
            QCOMPARE(item("menuRemove")->isEnabled(), id == mine);
            QCOMPARE(item("menuRename")->isEnabled(), id == mine);
            press({Qt::Key_Escape});
            QTRY_VERIFY(item("menuRemove") == nullptr);
        }
        press({Qt::CTRL | Qt::Key_E});
        QTRY_VERIFY(item("nameField") != nullptr);
        type(window.get(), "Night");
        press({Qt::Key_Return});
        QTRY_COMPARE(shown, QStringList{"DashboardEditor /dashboards/Night/Dash.qml"_q});
        QVERIFY(item("nameField") == nullptr);
    }

    void copiesTheTemplateIfThereIsOne()
    {
        QVERIFY(item("newFromTemplate") == nullptr);
        store->add("Template"_q, true);
        Q_EMIT store->profileListChanged();
        QTRY_VERIFY(item("newFromTemplate") != nullptr);
        QCOMPARE(cards(), 3);
        click(item("newFromTemplate"));
        QTRY_VERIFY(item("nameField") != nullptr);
        press({Qt::Key_Return});
        QTRY_COMPARE(store->calls(), QStringList{"1 3 New dashboard"_q});
    }

    void livesOnWhileTheStoreIsBusyAndClosesInTheMiddle()
    {
        store->refusal = "It is in use"_q;
        store->gated = true;
        focusCard(mine);
        const auto remove = [this](int waiting) {
            press({Qt::Key_Delete});
            QTRY_VERIFY(item("accept") != nullptr);
            click(item("accept"));
            QTRY_COMPARE(store->waitingActions.load(), waiting);
            press({Qt::Key_Escape});
            QTRY_VERIFY(item("removeText") == nullptr);
        };
        remove(1);
        // The store's lock is held: whatever asks it on this thread would never come back.
        const QSignalSpy frames(window.get(), &QQuickWindow::afterAnimating);
        Q_EMIT store->profileListChanged();
        press({Qt::Key_Return, Qt::CTRL | Qt::Key_D});
        QTRY_COMPARE(textOf("messageText"), textOf("busy"));
        press({Qt::Key_Escape});
        QTRY_VERIFY(item("messageText") == nullptr && frames.count() > 2);
        store->gate.release();
        QTRY_COMPARE(textOf("messageText"), store->refusal);
        press({Qt::Key_Escape});
        QTRY_VERIFY(item("messageText") == nullptr);

        store->refusal.clear();
        remove(2);
        std::thread opener([this] { store->gate.release(); });
        window.reset();
        opener.join();
        QVERIFY(!store->profileNameExists("Mine"_q));
    }

    void outlivesADashboardThatGoesUnderADialog()
    {
        focusCard(mine);
        press({Qt::Key_F2});
        QTRY_VERIFY(item("nameField") != nullptr);
        store->performAction(mine, DashboardProfileAction::Remove, {});
        QTRY_COMPARE(cards(), 2);
        type(window.get(), "Yours");
        QVERIFY(!item("accept")->isEnabled());
        press({Qt::Key_Escape});
        QTRY_VERIFY(item("nameField") == nullptr);
        focusCard(2);
        press({Qt::Key_Delete});
        QTRY_VERIFY(item("removeText") != nullptr);
        store->performAction(2, DashboardProfileAction::Remove, {});
        QTRY_VERIFY(item("removeText") == nullptr);
    }

private:
    QQuickItem *item(const char *name) const
    {
        return find(window.get(), "objectName", QString::fromUtf8(name));
    }
    QString textOf(const char *name) const
    {
        const QQuickItem *found = item(name);
        return found != nullptr ? found->property("text").toString() : QString();
    }
    QQuickItem *card(const QString &name) const { return find(window.get(), "name", name); }
    int cards() const { return item("grid")->property("count").toInt(); }
    void press(const QList<int> &list) const { keys(window.get(), list); }

    void focusCard(int id) const
    {
        QQuickItem *grid = item("grid");
        grid->forceActiveFocus();
        for (int row = 0; grid->property("currentId").toInt() != id; ++row)
            QVERIFY(grid->setProperty("currentIndex", row) && row < 1000);
    }

    const TemporaryHome home;
    std::optional<LogCapture> log;
    std::optional<FakeStore> store;
    FakeEngine engine;
    VehicleNames vehicles;
    TelemetryMonitor monitor;
    std::optional<Navigation> navigation;
    std::unique_ptr<GalleryWindow> window;
    QStringList shown; ///< What the navigation was asked for.
    int road = 0;
    int mine = 0;
};

QTEST_MAIN(GalleryWindowTest)
#include "GalleryWindowTest.moc"
