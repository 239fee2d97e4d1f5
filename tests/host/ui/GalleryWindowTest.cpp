#include "ui/GalleryWindow.h"

#include "FakeStore.h"
#include "WindowRig.h"
#include "support/FakeEngine.h"
#include "telemetry/VehicleNames.h"
#include "ui/LiveDashboard.h"

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
        rally = store->add("Rally"_q);
        shown.clear();
        navigation.emplace();
        for (const QString &name : {"DashboardWindow"_q, "DashboardEditor"_q,
                                    "SoftwareConfiguration"_q, "HelpBrowser"_q}) {
            navigation->addTarget(name, [this, name](const QVariant &argument) {
                shown += (name + u' ' + argument.toString()).trimmed();
            });
        }
        log.emplace();
        window = std::make_unique<GalleryWindow>(*navigation, engine, *store, vehicles, monitor,
                                                 "Demo race"_q);
        window->openGallery();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
        focusCard(mine);
    }

    void cleanup()
    {
        window.reset();
        QVERIFY(!engine.hasConsumers());
        QCOMPARE(log->lines.join(u'\n'), QString());
    }

    void activatesByClickAndByKey()
    {
        click(card("Rally"_q));
        QTRY_COMPARE(store->calls(), QStringList{"0 2 "_q});
        QTRY_VERIFY(find(window->contentItem(), "text", "Active"_q) != nullptr);
        press({Qt::Key_Home, Qt::Key_Return, Qt::Key_Right, Qt::Key_Right, Qt::Key_Space});
        QTRY_COMPARE(store->calls(), QStringList({"0 2 "_q, "0 1 "_q, "0 0 "_q}));
    }

    void searchesAsOneTypes()
    {
        press({Qt::CTRL + Qt::Key_F});
        type(window.get(), "in");
        press({Qt::Key_Home, Qt::Key_Delete}); // Edits the text.
        QCOMPARE(textOf("search"), "n"_q);
        press({Qt::CTRL + Qt::Key_E}); // Acts on the current card.
        QCOMPARE(shown, QStringList{"DashboardEditor /dashboards/Mine/Dash.qml"_q});
        press({Qt::Key_Escape, Qt::CTRL + Qt::Key_F});
        type(window.get(), "silhou");
        QTRY_COMPARE(item("grid")->property("currentId").toInt(), road);
        type(window.get(), "x");
        QTRY_VERIFY(textOf("emptyHeading").contains("silhoux"_q));
        press({Qt::Key_Escape, Qt::Key_Escape});
        QTRY_COMPARE(cards(), 3);
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

    void takesAnyName()
    {
        const QString name = "<b>%1<i> %n & \u202e"_q + QString(200, u'W');
        store->performAction(mine, DashboardProfileAction::Rename, name);
        store->performAction(mine, DashboardProfileAction::Activate, {});
        vehicles.report("Van"_q);
        QTRY_VERIFY(textOf("vehicle").contains(name));
        pressFor(Qt::Key_Delete, "removeText");
        QVERIFY(textOf("removeText").contains(name));
        const QList<QQuickItem *> labels = window->contentItem()->findChildren<QQuickItem *>();
        for (const QQuickItem *label : labels) {
            const QVariant format = label->property("textFormat");
            if (!format.isValid() || !label->property("text").toString().contains(name))
                continue;
            QCOMPARE(format.toInt(), int(Qt::PlainText));
            QVERIFY(!label->isVisible() || label->width() <= window->width());
        }
    }

    void showsThePictureThatThereIs()
    {
        const QString path = home.path("/preview #1 100%.png");
        store->add("Pictured"_q, false, {}, path);
        QImage picture(480, 272, QImage::Format_RGB32);
        const auto color = [this] { return colorOf(card("Pictured"_q), {-50, -50}); };
        for (const Qt::GlobalColor painted : {Qt::red, Qt::blue}) {
            picture.fill(painted);
            QVERIFY(picture.save(path));
            Q_EMIT store->profileListChanged();
            QTRY_COMPARE(color(), QColor(painted));
        }
        QVERIFY(QFile::remove(path));
        Q_EMIT store->profileListChanged();
        QTRY_COMPARE(color(), QColor(Qt::black));
    }

    void showsTheActiveDashboardLive()
    {
        const QColor waiting = engine.waiting.pixelColor(0, 0);
        auto *live = static_cast<LiveDashboard *>(item("live"));
        QTRY_COMPARE(colorOf(live), waiting);
        QCOMPARE(live->frameHeight(), qRound(live->frameWidth() * 272 / 480.0));
        for (const Qt::GlobalColor color : {Qt::red, Qt::red, Qt::blue}) {
            deliver(color);
            QCOMPARE(colorOf(live), QColor(color));
        }
        Frame tooShort(100);
        live->deliverFrame(tooShort, 480);
        QCOMPARE(colorOf(live), QColor(Qt::blue));
        // Without telemetry no frame of another dashboard comes.
        store->performAction(rally, DashboardProfileAction::Activate, {});
        QTRY_COMPARE(colorOf(live), waiting);
    }

    void isNoConsumerWhileNobodySeesIt()
    {
        window->setPersistentSceneGraph(false);
        window->setPersistentOpenGLContext(false);
        deliver(Qt::red);
        QTRY_COMPARE(colorOf(item("live")), QColor(Qt::red));
        for (const QWindow::Visibility hidden : {QWindow::Hidden, QWindow::Minimized}) {
            window->setVisibility(hidden);
            QVERIFY(!engine.hasConsumers());
            window->setVisibility(QWindow::Windowed);
            QVERIFY(engine.hasConsumers());
        }
        // The frame went with the graphics.
        QTRY_COMPARE(colorOf(item("live")), engine.waiting.pixelColor(0, 0));
        item("live")->setVisible(false);
        QVERIFY(!engine.hasConsumers());
        {
            LiveDashboard brief;
            brief.setParentItem(window->contentItem());
            brief.attach(engine);
            QVERIFY(engine.hasConsumers());
        }
        QVERIFY(!engine.hasConsumers());
    }

    void renamesToAFreeName()
    {
        vehicles.report("Van"_q);
        pressFor(Qt::Key_Menu, "menuRename");
        QVERIFY(item("menuRemove")->isEnabled());
        click(item("menuRename"));
        QTRY_VERIFY(item("menuRename") == nullptr);
        type(window.get(), "ROAD");
        press({Qt::Key_Return});
        QVERIFY(!textOf("nameProblem").isEmpty());
        QCOMPARE(store->calls(), QStringList());
        type(window.get(), "s");
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
        pressFor(Qt::Key_Delete, "removeText");
        for (const QString &loss : {"Mine"_q, "Van"_q, "Truck"_q})
            QVERIFY(textOf("removeText").contains(loss));
        press({Qt::Key_Return}); // The keyboard is on the harmless button.
        QTRY_VERIFY(item("removeText") == nullptr);
        QCOMPARE(store->calls(), QStringList());
        pressFor(Qt::Key_Delete, "accept");
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
            pressFor(key, "messageText");
            QVERIFY(textOf("messageText").contains("copy"_q));
            leave("messageText");
        }
        pressFor(Qt::Key_Menu, "menuRemove");
        QVERIFY(!item("menuRemove")->isEnabled() && !item("menuRename")->isEnabled());
    }

    void editsACopyOfABuiltInDashboardOrOfTheTemplate()
    {
        focusCard(road);
        pressFor(Qt::CTRL + Qt::Key_E, "nameField");
        type(window.get(), "Night");
        press({Qt::Key_Return});
        QTRY_COMPARE(shown, QStringList{"DashboardEditor /dashboards/Night/Dash.qml"_q});
        QVERIFY(item("nameField") == nullptr && item("newFromTemplate") == nullptr);
        store->add("Template"_q, true);
        Q_EMIT store->profileListChanged();
        QTRY_VERIFY(item("newFromTemplate") != nullptr);
        QCOMPARE(cards(), 4);
        pressFor(Qt::CTRL + Qt::Key_N, "nameField");
        press({Qt::Key_Return});
        QTRY_COMPARE(store->calls().last(), "1 4 New dashboard"_q);
    }

    void livesOnWhileTheStoreIsBusy()
    {
        store->refusal = "It is in use"_q;
        store->gated = true;
        pressFor(Qt::Key_Delete, "accept");
        click(item("accept"));
        QTRY_COMPARE(store->waitingActions.load(), 1);
        leave("removeText");
        // The store's lock is held: whatever asks it on this thread would never come back.
        const QSignalSpy frames(window.get(), &QQuickWindow::afterAnimating);
        Q_EMIT store->profileListChanged();
        press({Qt::Key_Return});
        pressFor(Qt::CTRL + Qt::Key_D, "messageText");
        QCOMPARE(textOf("messageText"), textOf("busy"));
        leave("messageText");
        QTRY_VERIFY(frames.count() > 2);
        store->gate.release();
        QTRY_COMPARE(textOf("messageText"), store->refusal);
    }

    void outlivesDashboardsThatGoUnderItsDialogs()
    {
        pressFor(Qt::Key_F2, "nameField");
        store->performAction(mine, DashboardProfileAction::Remove, {});
        QTRY_COMPARE(cards(), 2);
        type(window.get(), "Yours");
        QVERIFY(!item("accept")->isEnabled());
        leave("nameField");
        focusCard(rally);
        pressFor(Qt::Key_Delete, "removeText");
        store->performAction(rally, DashboardProfileAction::Remove, {});
        QTRY_VERIFY(item("removeText") == nullptr);
        focusCard(road);
        pressFor(Qt::Key_Menu, "menuRemove");
        store->performAction(road, DashboardProfileAction::Remove, {});
        QTRY_VERIFY(item("menuRemove") == nullptr && item("emptyHeading") != nullptr);
        const QStringList calls = store->calls();
        QVERIFY(!item("openWindow")->isEnabled());
        press({Qt::Key_Return, Qt::Key_F2, Qt::Key_Delete, Qt::Key_Menu, Qt::Key_Down, Qt::Key_End,
               Qt::CTRL + Qt::Key_E, Qt::CTRL + Qt::Key_D});
        QCOMPARE(store->calls() + shown, calls);
    }

private:
    QQuickItem *item(const char *name) const { return named(window.get(), name); }
    QString textOf(const char *name) const
    {
        const QQuickItem *found = item(name);
        return found != nullptr ? found->property("text").toString() : QString();
    }
    QColor colorOf(const QQuickItem *item, const QPoint &offMiddle = {}) const
    {
        const QImage picture = window->grabWindow(); // None while the window isn't drawn yet.
        if (item == nullptr || picture.isNull())
            return {};
        return picture.pixelColor(middle(item) + offMiddle);
    }

    void deliver(Qt::GlobalColor color)
    {
        for (IDashboardConsumer *consumer : engine.consumers) {
            QImage image(consumer->frameWidth(), consumer->frameHeight(),
                         QImage::Format_ARGB32_Premultiplied);
            image.fill(color);
            frame.assign(image.constBits(), image.constBits() + image.sizeInBytes());
            consumer->deliverFrame(frame, image.width());
        }
    }

    QQuickItem *card(const QString &name) const { return find(item("grid"), "name", name); }
    int cards() const { return item("grid")->property("count").toInt(); }
    void press(const QList<int> &list) const { keys(window.get(), list); }

    /// Presses a key that makes an item appear.
    void pressFor(int key, const char *name) const
    {
        press({key});
        QTRY_VERIFY(item(name) != nullptr);
    }

    /// Leaves the dialog or menu of this item.
    void leave(const char *name) const
    {
        press({Qt::Key_Escape});
        QTRY_VERIFY(item(name) == nullptr);
    }

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
    Frame frame;
    VehicleNames vehicles;
    TelemetryMonitor monitor;
    std::optional<Navigation> navigation;
    std::unique_ptr<GalleryWindow> window;
    QStringList shown; ///< What the navigation was asked for.
    int road = 0;
    int mine = 0;
    int rally = 0;
};

QTEST_MAIN(GalleryWindowTest)
#include "GalleryWindowTest.moc"
