#include "GalleryBench.h"
#include "settings/Translations.h"
#include "support/SystemLimits.h"

#include <QtCore/QDir>

class GalleryWindowTest : public GalleryBench
{
    Q_OBJECT

private Q_SLOTS:
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

    void opensTheOtherWindows()
    {
        open();
        QVERIFY(!QGuiApplication::windowIcon().pixmap(16).isNull());
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

    void itsHeaderHasRoomAtTheSmallestWidth()
    {
        open();
        Translations translations;
        translations.use(text("de"));
        for (const int height : {540, 800}) {
            window->resize(720, height);
            QTRY_COMPARE(window->rootObject()->size().toSize(), QSize(720, height));
            for (const char *const label : {"Road", "Mitgeliefert  ·  1 Fahrzeug zugeordnet",
                                            "Fenster öffnen", "Bearbeiten", "Fahrzeuge"}) {
                const QQuickItem *const shown = item("text", text(label));
                if (shown == nullptr)
                    QFAIL(label);
                QVERIFY2(!shown->property("truncated").toBool(), label);
                QVERIFY2(shown->mapToScene({shown->width(), 0}).x() <= 720, label);
            }
        }
    }

    void keysReachTheCurrentCardFromAnywhere()
    {
        open();
        focusCard(mine);
        QTest::keyClick(window.get(), Qt::Key_F, Qt::ControlModifier);
        type("in");
        press(Qt::Key_Home);
        press(Qt::Key_Delete); // Edits the text.
        QCOMPARE(textOf("search"), text("n"));
        press(Qt::Key_Escape);
        focusCard(mine);
        for (const char *place : {"search", "settings"}) {
            item("objectName", text(place))->forceActiveFocus();
            press(Qt::Key_F2);
            QTRY_VERIFY(item("objectName", text("nameField")) != nullptr);
            press(Qt::Key_Escape);
            QTRY_VERIFY(item("objectName", text("nameField")) == nullptr);
            item("objectName", text(place))->forceActiveFocus();
            QTest::keyClick(window.get(), Qt::Key_E, Qt::ControlModifier);
            QCOMPARE(shown.takeLast(), text("DashboardEditor /dashboards/Mine/Dash.qml"));
        }
        press(Qt::Key_Delete);
        QTRY_VERIFY(
            QDir::fromNativeSeparators(textOf("removeText")).contains(text("/dashboards/Mine")));
        press(Qt::Key_Escape);
        focusCard(mine);
        QTest::keyClick(window.get(), Qt::Key_F, Qt::ControlModifier);
        type("silhou"); // Another card comes into its place.
        QTRY_VERIFY(card(text("Mine")) == nullptr);
        QTest::keyClick(window.get(), Qt::Key_D, Qt::ControlModifier);
        QTRY_COMPARE(textOf("nameField"), text("Road copy"));
    }

    void aToolTipGoesWithThePress()
    {
        NEEDS_POSIX();
        open();
        const QQuickItem *settings = item("objectName", text("settings"));
        QTest::mouseMove(window.get(), middle(settings));
        const QList<QObject *> objects = settings->findChildren<QObject *>();
        const auto tip = std::find_if(objects.begin(), objects.end(), [](const QObject *object) {
            return object->inherits("QQuickToolTip");
        });
        QVERIFY(tip != objects.end());
        QTRY_VERIFY((*tip)->property("opened").toBool());
        click(settings);
        QTRY_VERIFY(!(*tip)->property("visible").toBool());
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
};

QTEST_MAIN(GalleryWindowTest)
#include "GalleryWindowTest.moc"
