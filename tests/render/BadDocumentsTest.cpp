#include "Documents.h"
#include "Probe.h"
#include "render/DashboardFadeInOut.h"
#include "support/LogCapture.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QWindow>
#include <QtTest/QtTest>

#include <algorithm>

namespace {

constexpr int Width = 480;
constexpr int Height = 272;

/// A document in which `action` runs at every publication after the load.
QByteArray acting(const QByteArray &action)
{
    return document(R"(
        Rectangle {
            id: root
            property int tick: dash_frameCounter1000
            property int calls: 0
            property var made: null
            width: 480; height: 272; color: "red"
            Probe { id: probe }
            Component { id: maker; Rectangle { width: 480; height: 272; color: "lime"; Probe {} } }
            Component.onCompleted: made = maker.createObject(root)
            onTickChanged: if (tick > 2) {)" +
                    action + "}}");
}

void publish(DashboardRenderer &renderer)
{
    renderer.publishTelemetry({}, {}, {}, {}, {}, 1.0F, false, false, false);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

/// A frame of the usual size.
Picture frame(DashboardRenderer &renderer)
{
    return frame(renderer, Width, Height);
}

} // namespace

class BadDocumentsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        Probe::registerType();
        DashboardFadeInOut::registerType();
    }
    void cleanup()
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(Probe::alive, 0);
    }

    void everyDocumentHasItsOutcome_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("error"); // What it may be; empty for a document that loads.

        const auto bad = [](const char *name, const QByteArray &text, const char *error) {
            QTest::newRow(name) << text << QString::fromLatin1(error);
        };
        QByteArray binary;
        for (int i = 0; i < 100'000; ++i)
            binary += static_cast<char>(i * 7919 >> 3);
        bad("empty", "", "File is empty");
        bad("blank", " \n\t\n", "Expected");
        bad("binary", binary, "Dash.qml:1");
        bad("zeros", QByteArray(1000, '\0'), "Dash.qml:1");
        bad("50 MB of text", QByteArray(50'000'000, 'x'), "Syntax error");
        bad("syntax error", document("Item { width: 480; "), "Expected token");
        bad("open string", document("Item { property string s: \"\n }"), "Dash.qml:4");
        bad("object that is no item", document("QtObject { property Probe p: Probe {} }"),
            "Failed to create QQuickItem");
        bad("window", document("Window { visible: true; width: 100; height: 100; Probe {} }"),
            "Failed to create QQuickItem");
        bad("unknown import", "import QtQuick 2.15\nimport No.Such.Module 1.0\nItem {}",
            "module \"No.Such.Module\" is not installed");
        bad("later version", "import QtQuick 2.99\nItem {}", "version 2.99 is not installed");
        bad("unknown type", document("Item { NoSuchType {} }"), "NoSuchType is not a type");
        bad("unknown property", document("Item { noSuchProperty: 1 }"), "noSuchProperty");
        bad("unknown name", document("Item { width: dash_noSuchName; Probe {} }"),
            "dash_noSuchName is not defined");
        // Which of the two depends on how soon the connection is refused.
        bad("remote import", "import QtQuick 2.15\nimport \"http://127.0.0.1:1/x\"\nRemote {}",
            "Failed to create QQuickItem|Remote is not a type");
        bad("itself within itself", "Dash {}", "recursively");
        bad("binding loop", document("Item { width: height + 1; height: width + 1; Probe {} }"),
            "Binding loop detected");
        bad("throwing handler", document("Item { Component.onCompleted: { throw 'mine' } }"),
            "mine");
        bad("endless recursion",
            document("Item { function f(x) { return f(x + 1) + 1 }\n"
                     "Component.onCompleted: console.log(f(0)) }"),
            "Maximum call stack size exceeded");
        bad("root destroying itself",
            document("Item { id: root; Probe {} Component.onCompleted: root.destroy() }"),
            "indestructible");

        const auto good = [&bad](const char *name, const QByteArray &text) { bad(name, text, ""); };
        good("50 MB of comment", "/*" + QByteArray(50'000'000, '*') + "*/\n" + filled("red"));
        good("size 0", document("Item { Probe {} }"));
        good("negative size", document("Rectangle { width: -480; height: -272; color: 'red' }"));
        good("size that is no number", document("Rectangle { width: 0 / 0; height: 0 / 0 }"));
        good("infinite size", document("Rectangle { width: 1 / 0; height: 1 / 0 }"));
        good("quits", document("Item { Component.onCompleted: Qt.quit() }"));
        good("exits", document("Item { Component.onCompleted: Qt.exit(3) }"));
        good("leaves its parent",
             document("Item { Probe {} Component.onCompleted: parent = null }"));
        good("destroys its children", document(R"(
            Item {
                id: root
                Component { id: maker; Item { Probe {} } }
                Component.onCompleted: {
                    for (let i = 0; i < 5; ++i)
                        maker.createObject(root)
                    for (let i = 0; i < 5; ++i)
                        root.children[i].destroy()
                }
            })"));
    }

    void everyDocumentHasItsOutcome()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, error);
        const DocumentFolder folder;
        DashboardRenderer renderer;
        const QString path = folder.write(QStringLiteral("Dash.qml"), text);
        for (int round = 0; round < 2; ++round) {
            QCOMPARE(renderer.load(path, Width, Height), error.isEmpty());
            QCOMPARE(renderer.errors().isEmpty(), error.isEmpty());
            const QStringList accepted = error.split(QLatin1Char('|'));
            QVERIFY2(std::any_of(accepted.begin(), accepted.end(),
                                 [&renderer](const QString &part) {
                                     return errorsOf(renderer).contains(part.toUtf8());
                                 }),
                     errorsOf(renderer));
            for (int i = 0; i < 3; ++i) {
                publish(renderer);
                QVERIFY(frame(renderer).isWhole());
            }
            QVERIFY(renderer.load(folder.write(QStringLiteral("Good.qml"), filled("lime")), Width,
                                  Height));
            QCOMPARE(frame(renderer).count(Green), Width * Height);
        }
        QVERIFY(!QCoreApplication::closingDown());
    }

    void aHugeRootFillsTheFrame()
    {
        const DocumentFolder folder;
        DashboardRenderer renderer;
        const QByteArray text =
            document("Rectangle { width: 100000; height: 100000; color: 'red' }");
        QVERIFY(renderer.load(folder.write(QStringLiteral("Dash.qml"), text), Width, Height));
        QCOMPARE(frame(renderer).count(Red), Width * Height);
    }

    void aDocumentMayDoThisAtEveryPublication_data()
    {
        QTest::addColumn<QByteArray>("action");
        QTest::addColumn<QRgb>("colour"); // Of the picture afterwards; 0 for no picture.
        QTest::addColumn<bool>("warns");
        QTest::newRow("throw") << QByteArray("throw 'mine'") << Green << true;
        QTest::newRow("quit") << QByteArray("Qt.quit()") << Green << false;
        QTest::newRow("destroy its child")
            << QByteArray("if (made) { made.destroy(); made = null }") << Red << false;
        QTest::newRow("replace its child")
            << QByteArray("made.destroy(); made = maker.createObject(root)") << Green << false;
        QTest::newRow("leave the window") << QByteArray("parent = null") << Black << false;
        QTest::newRow("hang itself below its child")
            << QByteArray("root.parent = made") << Green << false;
        QTest::newRow("be deleted from outside")
            << QByteArray("probe.dispose(root)") << QRgb(0) << false;
        QTest::newRow("shrink to nothing")
            << QByteArray("width = 0; height = 0; made.width = 0") << Black << false;
        QTest::newRow("turn and scale")
            << QByteArray("rotation = 45; scale = 1000") << Green << false;
        QTest::newRow("hide") << QByteArray("visible = false") << Black << false;
    }

    void aDocumentMayDoThisAtEveryPublication()
    {
        QFETCH(QByteArray, action);
        QFETCH(QRgb, colour);
        QFETCH(bool, warns);
        const DocumentFolder folder;
        DashboardRenderer renderer;
        const QString path = folder.write(QStringLiteral("Dash.qml"), acting(action));
        const QString good = folder.write(QStringLiteral("Good.qml"), filled("lime"));
        QVERIFY2(renderer.load(path, Width, Height), errorsOf(renderer));
        QCOMPARE(frame(renderer).count(Green), Width * Height);
        for (int i = 0; i < 5; ++i) {
            publish(renderer);
            frame(renderer);
        }
        QCOMPARE(!renderer.errors().isEmpty(), warns);
        const Picture picture = frame(renderer);
        if (colour == 0)
            QVERIFY(!picture.isWhole());
        else
            QCOMPARE(picture.count(colour), Width * Height);
        QVERIFY(renderer.load(good, Width, Height));
        QCOMPARE(Probe::alive, 0);
        QCOMPARE(frame(renderer).count(Green), Width * Height);
    }

    void noWindowOfADocumentComesOntoTheScreen_data()
    {
        QTest::addColumn<QByteArray>("action");
        QTest::newRow("the one it is in") << QByteArray("Window.window.show()");
        QTest::newRow("over the screen") << QByteArray("Window.window.showFullScreen()");
        QTest::newRow("one of its own")
            << QByteArray("Qt.createQmlObject('import QtQuick.Window 2.15; "
                          "Window { modality: Qt.ApplicationModal }', root).show()");
        QTest::newRow("one that shows itself again")
            << QByteArray("Qt.createQmlObject('import QtQuick.Window 2.15; "
                          "Window { onVisibleChanged: if (!visible) show() }', root).show()");
        QTest::newRow("one that it declares") << QByteArray("} Window { visible: true");
    }

    void noWindowOfADocumentComesOntoTheScreen()
    {
        QFETCH(QByteArray, action);
        const LogCapture log;
        const DocumentFolder folder;
        DashboardRenderer renderer;
        QVERIFY(
            renderer.load(folder.write(QStringLiteral("Dash.qml"), acting(action)), Width, Height));
        for (int i = 0; i < 5; ++i) {
            publish(renderer);
            QCoreApplication::processEvents();
            QCOMPARE(frame(renderer).count(Green), Width * Height);
            const QWindowList windows = QGuiApplication::allWindows();
            for (const QWindow *window : windows)
                QVERIFY(!window->isVisible() && window->handle() == nullptr);
            QVERIFY(QGuiApplication::modalWindow() == nullptr);
        }
        QCOMPARE(log.critical().size(), 1);
        QVERIFY(log.critical().constFirst().contains(QLatin1String("Dash.qml")));
    }

    void warningsWithoutEndStayBounded_data()
    {
        QTest::addColumn<QByteArray>("warning");
        QTest::addColumn<int>("entries");
        QTest::newRow("ever new") << QByteArray("throw 'number ' + calls++")
                                  << OVX::ErrorLog::MaximumPerLocation + 1;
        QTest::newRow("always the same") << QByteArray("throw 'same'") << 1;
        QTest::newRow("ever new and huge") << QByteArray("throw calls++ + 'x'.repeat(100000)")
                                           << OVX::ErrorLog::MaximumPerLocation + 1;
    }

    void warningsWithoutEndStayBounded()
    {
        QFETCH(QByteArray, warning);
        QFETCH(int, entries);
        const DocumentFolder folder;
        DashboardRenderer renderer;
        QVERIFY(renderer.load(folder.write(QStringLiteral("Dash.qml"), acting(warning)), Width,
                              Height));
        for (int i = 0; i < 3 * OVX::ErrorLog::MaximumPerLocation; ++i)
            publish(renderer);
        QCOMPARE(renderer.errors().size(), entries);
        for (const QString &error : renderer.errors())
            QVERIFY(error.size() <= OVX::ErrorLog::MaximumLength + 3);
        QCOMPARE(frame(renderer).count(Green), Width * Height);
        QVERIFY(
            renderer.load(folder.write(QStringLiteral("Good.qml"), filled("lime")), Width, Height));
        QVERIFY(renderer.errors().isEmpty());
    }

    void aDocumentOfManyWarningsIsStillAPicture()
    {
        const DocumentFolder folder;
        DashboardRenderer renderer;
        QVERIFY(!renderer.load(folder.write(QStringLiteral("Dash.qml"), document(R"(
            Item {
                Repeater {
                    model: 1000
                    Item { Component.onCompleted: { throw "number " + index } }
                }
            })")),
                               Width, Height));
        QCOMPARE(renderer.errors().size(), OVX::ErrorLog::MaximumPerLocation + 1);
        QVERIFY(frame(renderer).isWhole());
    }
};

QTEST_MAIN(BadDocumentsTest)
#include "BadDocumentsTest.moc"
