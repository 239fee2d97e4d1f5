#include "Documents.h"
#include "Probe.h"

#include <QtCore/QCoreApplication>
#include <QtTest/QtTest>

using OVX::QmlOffscreenRenderer;

namespace {

/// Controls paint a popup blue where they let its background be chosen.
QByteArray withControls(const QByteArray &popup)
{
    return "import QtQuick.Controls 2.15\n" +
           document("Rectangle { width: 40; height: 20; color: 'red'; Probe {}\n" + popup + "}");
}

/// A document that does not fill the frame, and shows where it is and how large its window's items
/// take themselves to be.
const QByteArray &plain()
{
    static const QByteArray text = document(R"(
        Item {
            id: root
            width: 40; height: 20
            Rectangle { x: 3; y: 5; width: 11; height: 7; color: "lime" }
            Rectangle {
                readonly property Item above: root.parent
                x: 30
                width: above ? 4 + above.width : 0
                height: above ? 4 + above.height : 0
                color: above && above.transformOrigin !== Item.Center || !enabled ? "red" : "white"
            }
        })");
    return text;
}

void runDeferred()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace

/// What a document does to the window is over when the next one comes.
class OffscreenRemainsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        Probe::registerType();
        // What a document paints alone is what it must paint after any other.
        QmlOffscreenRenderer renderer;
        path = folder.write(QStringLiteral("Plain.qml"), plain());
        QVERIFY(load(renderer, path));
        alone = frame(renderer, 40, 20);
        QCOMPARE(alone.count(Green), 11 * 7);
        QCOMPARE(alone.count(White), 4 * 4);
        QCOMPARE(alone.count(Black), 40 * 20 - 11 * 7 - 4 * 4);
    }
    void cleanup() { QCOMPARE(Probe::alive, 0); }

    void aPopupGoesWithItsDocument_data()
    {
        QTest::addColumn<QByteArray>("popup");
        QTest::addColumn<bool>("blue");
        const QByteArray visible = " { visible: true; width: 20; height: 10; padding: 0; "
                                   "background: Rectangle { color: 'blue' } Probe {} ";
        QTest::newRow("popup") << "Popup" + visible + "}" << true;
        QTest::newRow("modal popup") << "Popup" + visible + "modal: true }" << true;
        QTest::newRow("popup on the overlay")
            << "Popup" + visible + "parent: Overlay.overlay }" << true;
        QTest::newRow("dialog") << "Dialog" + visible + "modal: true }" << true;
        QTest::newRow("menu") << "Menu" + visible + "MenuItem { text: 'one' } }" << true;
        QTest::newRow("tool tip") << "ToolTip" + visible + "delay: 0; text: 'tip' }" << true;
        QTest::newRow("shared tool tip")
            << QByteArray("Window.onWindowChanged: if (Window.window) ToolTip.show('tip')")
            << false;
        QTest::newRow("drawer") << "Drawer" + visible + "}" << false; // Slides in with the time.
        QTest::newRow("combo box")
            << QByteArray("ComboBox { width: 20; height: 4; model: 1; popup.padding: 3\n"
                          "property bool now: opened; onNowChanged: if (now) popup.open()\n"
                          "popup.background: Rectangle { color: 'blue' } }")
            << true;
        QTest::newRow("closed combo box") << QByteArray("ComboBox { model: 3 }") << false;
    }

    void aPopupGoesWithItsDocument()
    {
        QFETCH(QByteArray, popup);
        QFETCH(bool, blue);
        const QString popupPath = folder.write(QStringLiteral("Popup.qml"), withControls(popup));
        QmlOffscreenRenderer renderer;
        for (int round = 0; round < 3; ++round) {
            renderer.setProperty(QStringLiteral("opened"), false);
            QVERIFY2(load(renderer, popupPath), qPrintable(renderer.errors().join(u'\n')));
            renderer.setProperty(QStringLiteral("opened"), true);
            for (int i = 0; i < 3; ++i) {
                const Picture picture = frame(renderer, 120, 60);
                QVERIFY(picture.isWhole());
                QVERIFY(picture.count(Blue) > 0 || !blue);
                runDeferred();
            }
            renderer.setProperty(QStringLiteral("opened"), false);
            QVERIFY(load(renderer, popupPath));
            QVERIFY(load(renderer, path));
            QVERIFY(frame(renderer, 40, 20) == alone);
            runDeferred();
            QCOMPARE(Probe::alive, 0);
        }
    }

    void anItemThatMakesItsSuccessorHoldsUpNoLoad()
    {
        folder.write(QStringLiteral("Heirs.js"), R"(.pragma library
            var made = 0
            function follow(place) {
                ++made
                Qt.createComponent("Heir.qml").createObject(place)
            })");
        folder.write(QStringLiteral("Heir.qml"), R"(import QtQuick 2.15
            import "Heirs.js" as Heirs
            Rectangle {
                property Item place: parent
                width: 40; height: 20; color: "red"
                Component.onDestruction: Heirs.follow(place)
            })");
        const QString first = folder.write(QStringLiteral("First.qml"), document(R"(
            Item { width: 40; height: 20; onParentChanged: if (parent) heir.parent = parent
                   Heir { id: heir } })"));
        QmlOffscreenRenderer renderer;
        for (int round = 0; round < 2; ++round) {
            QVERIFY2(load(renderer, first), qPrintable(renderer.errors().join(u'\n')));
            QCOMPARE(frame(renderer, 40, 20).count(Red), 40 * 20);
            QVERIFY(load(renderer, path));
            QVERIFY(frame(renderer, 40, 20) == alone);
            for (int i = 0; i < 3; ++i) {
                runDeferred();
                QVERIFY(frame(renderer, 40, 20) == alone);
            }
        }
        QVERIFY(load(renderer, first)); // The renderer goes with it.
    }

    void theWindowIsAsItWasForTheNextDocument_data()
    {
        QTest::addColumn<QByteArray>("action");
        const auto row = [](const char *action) { QTest::newRow(action) << QByteArray(action); };
        row("Window.window.color = 'blue'");
        row("Window.window.color = 'transparent'");
        row("Window.window.color = '#80ff0000'");
        row("parent.visible = false");
        row("parent.enabled = false");
        row("parent.opacity = 0.5");
        row("parent.rotation = 90");
        row("parent.scale = 2");
        row("parent.x = 7; parent.y = 8");
        row("parent.x = 7; parent.rotation = 10; parent.transformOrigin = Item.TopLeft");
        row("parent.width = 7; parent.height = 8; parent.clip = true");
        row("parent.width = 700; parent.height = 800");
        row("parent.layer.enabled = true; parent.layer.textureSize = Qt.size(2, 2)");
    }

    void theWindowIsAsItWasForTheNextDocument()
    {
        QFETCH(QByteArray, action);
        // At the load, and again when a frame has been.
        const QString acting = folder.write(QStringLiteral("Acting.qml"), document(R"(
            Item {
                id: root
                property int now: tick
                function act() { )" + action + R"( }
                width: 40; height: 20
                Window.onWindowChanged: if (Window.window) act()
                onNowChanged: if (now > 0) act()
            })"));
        QmlOffscreenRenderer renderer;
        renderer.setProperty(QStringLiteral("tick"), 0);
        QVERIFY2(load(renderer, acting), qPrintable(renderer.errors().join(u'\n')));
        QVERIFY(load(renderer, path));
        QVERIFY(frame(renderer, 40, 20) == alone);

        QVERIFY(load(renderer, acting));
        QVERIFY(frame(renderer, 40, 20).isWhole());
        renderer.setProperty(QStringLiteral("tick"), 1);
        QVERIFY(frame(renderer, 40, 20).isWhole());
        QCOMPARE(renderer.errors(), QStringList());
        QVERIFY(load(renderer, path));
        QVERIFY(frame(renderer, 40, 20) == alone);
    }

private:
    DocumentFolder folder;
    QString path;
    Picture alone;
};

QTEST_MAIN(OffscreenRemainsTest)
#include "OffscreenRemainsTest.moc"
