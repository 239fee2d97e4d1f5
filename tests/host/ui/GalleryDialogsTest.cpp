#include "GalleryBench.h"

class GalleryDialogsTest : public GalleryBench
{
    Q_OBJECT

private Q_SLOTS:
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
            QVERIFY(QDir::fromNativeSeparators(textOf("removeText")).contains(text(loss)));
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
        for (const Qt::Key key : {Qt::Key_F2, Qt::Key_Delete}) {
            press(key);
            QTRY_VERIFY(item("objectName", text("messageText")) != nullptr);
            QVERIFY(textOf("messageText").contains(text("copy")));
            QVERIFY(item("objectName", text("accept")) == nullptr);
            press(Qt::Key_Escape);
            QTRY_VERIFY(item("objectName", text("messageText")) == nullptr);
        }
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
        QTRY_VERIFY(item("text", text("New dashboard from the template")) != nullptr);
        type("Fresh");
        press(Qt::Key_Return);
        QTRY_COMPARE(shown, QStringList{text("DashboardEditor /dashboards/Fresh/Dash.qml")});
        QCOMPARE(store->calls(), QStringList{text("1 %1 Fresh").arg(id)});
    }

    void livesOnWhileTheStoreIsBusy()
    {
        open();
        store->refusal = text("It is in use");
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
        const auto frames = std::make_shared<int>(0);
        const QObject here; // The signal comes from the render thread.
        connect(window.get(), &QQuickWindow::frameSwapped, &here, [frames] { ++*frames; });
        Q_EMIT store->profileListChanged();
        focusCard(road);
        press(Qt::Key_Return);
        QTest::keyClick(window.get(), Qt::Key_D, Qt::ControlModifier);
        QTRY_COMPARE(textOf("messageText"), textOf("busy"));
        press(Qt::Key_Escape);
        QTRY_VERIFY(item("objectName", text("messageText")) == nullptr);
        press(Qt::Key_Menu);
        QTRY_VERIFY(item("objectName", text("menuCopy")) != nullptr);
        QVERIFY(!item("objectName", text("menuCopy"))->isEnabled());
        QTRY_VERIFY(*frames > 2);
        press(Qt::Key_Escape);

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
};

QTEST_MAIN(GalleryDialogsTest)
#include "GalleryDialogsTest.moc"
