#include "Documents.h"
#include "render/DashboardFadeInOut.h"
#include "support/LogCapture.h"

#include <QtGui/QWindow>
#include <QtQml/QQmlError>
#include <QtTest/QtTest>

#include <atomic>
#include <thread>

using OVX::DocumentErrors;

namespace {

/// Shows a changed window: it doesn't fill the frame, and draws its parent's size, origin and
/// whether it is enabled.
constexpr const char *Plain = R"(
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
    })";

/// Runs `action` at every publication after the load.
QByteArray acting(const QByteArray &action)
{
    return R"(
        Rectangle {
            id: root
            property int tick: dash_frameCounter1000
            property int calls: 0
            property bool ready: false
            property var made: null
            width: 480; height: 272; color: "red"
            Probe { id: probe }
            Component { id: maker; Rectangle { width: 480; height: 272; color: "lime"; Probe {} } }
            Component.onCompleted: { made = maker.createObject(root); ready = true }
            Component.onDestruction: { throw "no fault of the next document" }
            function make(text) {
                return Qt.createQmlObject("import QtQuick 2.15; import QtQuick.Window 2.15;
                    import QtQuick.Controls 2.15; import Probe 1.0; " + text, root)
            }
            onTickChanged: if (ready) {)" +
           action + "}}";
}

} // namespace

/// What is published to a document, what it may do without harm to the next one, and the picture
/// of its errors.
class DashboardRendererTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        Probe::registerType();
        DashboardFadeInOut::registerType();
        plain = folder.write("Plain.qml"_q, document(Plain));
        DashboardRenderer renderer;
        QVERIFY(load(renderer, plain));
        alone = frame(renderer);
        QVERIFY(count(alone, Green) == 132 * 84 && count(alone, 0xFFFFFFFF) == 48 * 48);
    }
    void cleanup() { QCOMPARE(Probe::alive, 0); }

    void onlyTheFirstLoadPublishesAndAllPropertiesAreThereForIt()
    {
        DashboardRenderer other;
        publish(other);
        QByteArray names;
        for (const QString &name : other.publishedFields())
            names += name.toUtf8() + ',';
        const QByteArray text = "Item { property var all: [" + names + R"(]
            Probe { Component.onCompleted: report(all.length + " " + dash_frameCounter1000) } })";
        DashboardRenderer renderer;
        QVERIFY(frame(renderer).isNull() && renderer.errors().isEmpty());
        QVERIFY(loadText(renderer, folder, text));
        QVERIFY(loadText(renderer, folder, text));
        publish(renderer);
        QVERIFY(loadText(renderer, folder, text));
        QCOMPARE(Probe::reports, QVariantList({"129 2"_q, "129 2"_q, "129 4"_q}));
    }

    void aFailedLoadIsAPictureOfItsErrorsWhereThereIsRoom()
    {
        DashboardRenderer renderer;
        QVERIFY(!loadText(renderer, folder, "Item { width: unknownOne; height: unknownTwo }"));
        QString text;
        for (const QString &error : renderer.errors()) {
            QVERIFY(error.startsWith("file:///"_q));
            text += error.mid(8) + u'\n';
        }
        QCOMPARE(text.count(u'\n'), 2);
        for (const auto &[width, height] : {std::pair(480, 272), {26, 100}, {480, 1}}) {
            const QImage expected = paintedText(width, height, text, width / 25, Qt::TextWordWrap);
            for (const bool upsideDown : {false, true}) // It always stands upright.
                QCOMPARE(frame(renderer, width, height, upsideDown), expected);
        }
        Frame buffer;
        for (const auto &[width, height] : {std::pair(25, 272), {0, 272}, {480, 0}, {480, -1}})
            QVERIFY(!renderer.renderFrame(buffer, width, height, false));
    }

    void consumersOfBothOrientationsShareItAndKeepTheirMemory()
    {
        DashboardRenderer renderer;
        QVERIFY(load(renderer, plain));
        Frame buffer(frameBytes(480, 272));
        const unsigned char *const address = buffer.data();
        for (const bool upsideDown : {true, false, true}) {
            QVERIFY(renderer.renderFrame(buffer, 480, 272, upsideDown));
            QCOMPARE(frameImage(buffer, 480, 272), alone.mirrored(upsideDown, upsideDown));
            QCOMPARE(buffer.data(), address);
        }
    }

    void thePanelShowsAChangedTune()
    {
        DashboardRenderer renderer;
        TuneInfo tune;
        tune.name = "Wing"_q;
        tune.valueMax = tune.valueCurrent = 10;
        QVERIFY(load(renderer, plain));
        const auto bar = [&] {
            ++tune.changeCounter;
            publish(renderer, tune);
            return count(frame(renderer), 0xFFFF6A00);
        };
        QTRY_VERIFY(bar() > 5000);
    }

    void everyDocumentHasItsOutcome()
    {
        // Paths and what their errors contain; nothing for a document that loads.
        std::vector<std::pair<QString, QString>> documents{
            {QString(), "Invalid empty URL"_q},
            {folder.filePath("missing/Dash.qml"_q), "No such file or directory"_q},
            {folder.path(), folder.path()}, // The reason is the system's.
            {folder.filePath("Huge.qml"_q), "larger than 64 MiB"_q},
            {folder.write("Self.qml"_q, "Self {}"), "recursively"_q},
            {folder.write("Empty.qml"_q, ""), "File is empty"_q},
            {folder.write("Zeros.qml"_q, QByteArray(1000, '\0')), "Zeros.qml:1"_q},
        };
        QVERIFY(QFile::resize(folder.write("Huge.qml"_q, "//"), 64 * 1024 * 1024 + 1));
        const auto add = [&](const QByteArray &body, const char *error = "") {
            const QString name = "%1.qml"_q.arg(documents.size());
            documents.emplace_back(folder.write(name, document(body)), QLatin1String(error));
        };
        add("Item { width: 480; ", "Expected token");
        add("QtObject { property Probe p: Probe {} }", "Failed to create QQuickItem");
        add("import No.Such.Module 1.0\nItem {}", "is not installed");
        add("Item { width: dash_noSuchName; Probe {} }", "dash_noSuchName is not defined");
        add("Item { required property int level }", "level was not initialized");
        add("Item { width: height + 1; height: width + 1; Probe {} }", "Binding loop detected");
        add("Item { Component.onCompleted: { throw 'mine' } }", "mine");
        add("Item { function f() { return f() + 1 }\nComponent.onCompleted: f() }", "call stack");
        add("Item { id: root; Probe {} Component.onCompleted: root.destroy() }", "indestructible");
        add("/*" + QByteArray(50'000'000, '*') + "*/ Item {}");
        add("Rectangle { width: 0 / 0; height: -1 / 0; Probe {} }");
        add("Item { Component.onCompleted: { Qt.quit(); Qt.exit(3); parent = null } }");
        for (QString path : {"a#b %41/50%25 ?.qml"_q, "Größe 仪表盘/🏁 [+].qml"_q}) {
#ifdef Q_OS_WIN
            path.remove(u'?');
#else
            path.replace(u'?', R"(?\":)"_q);
#endif
            folder.write(QFileInfo(path).path() + "/Beside.qml"_q, filled("lime"));
            documents.emplace_back(folder.write(path, document("Beside {}")), QString());
        }
#ifdef Q_OS_UNIX
        QVERIFY(QFile::link("/dev/zero"_q, folder.filePath("Device.qml"_q)));
        documents.emplace_back(folder.filePath("Device.qml"_q), "Not a regular"_q);
#endif
        DashboardRenderer renderer;
        for (const auto &[path, error] : documents) {
            QVERIFY2(load(renderer, path) == error.isEmpty(), qPrintable(path));
            QVERIFY2(errorsOf(renderer).contains(error), qPrintable(path + errorsOf(renderer)));
            publish(renderer);
            QVERIFY(!frame(renderer).isNull());
            QVERIFY(load(renderer, plain) && frame(renderer) == alone);
        }
    }

    void whatADocumentDoesIsOverWithIt()
    {
        folder.write("Heirs.js"_q, R"(.pragma library
            function follow(place) { Qt.createComponent("Heir.qml").createObject(place) })");
        folder.write("Heir.qml"_q, R"(import QtQuick 2.15
            import "Heirs.js" as Heirs
            Item { property Item place: parent; Component.onDestruction: Heirs.follow(place) })");
        constexpr QRgb Any = 0;
        using Row = std::pair<const char *, QRgb>; // What it does, and the colour of the picture.
        for (const auto &[action, colour] : {
                 Row("throw 'mine'", Green),
                 Row("Qt.quit()", Green),
                 Row("if (made) { made.destroy(); made = null }", Red),
                 Row("made.destroy(); made = maker.createObject(root)", Green),
                 Row("parent = null", Black),
                 Row("root.parent = made", Green),
                 Row("probe.dispose(root)", Any),
                 Row("width = height = made.width = 0", Black),
                 Row("Qt.createComponent('Heir.qml').createObject(root.parent)", Green),
                 Row("make('Popup { visible: true; modal: true; Probe {} }')", Any),
                 Row("make('Menu { visible: true; MenuItem { Probe {} } }')", Any),
                 Row("make('ToolTip { visible: true; delay: 0; Probe {} }')", Any),
                 // No window appears, and the attempt is logged once.
                 Row("/* opens */ Window.window.showFullScreen()", Green),
                 Row("/* opens */ make('Window { modality: Qt.ApplicationModal; "
                     "onVisibleChanged: if (!visible) show() }').show()",
                     Green),
                 Row("/* opens */ } Window { visible: true", Green),
                 Row("Window.window.color = '#80ff0000'", Green),
                 Row("parent.visible = parent.enabled = false", Black),
                 Row("parent.opacity = 0.5", Any),
                 Row("parent.rotation = 90", Any),
                 Row("parent.scale = 0.5; parent.transformOrigin = Item.TopLeft", Any),
                 Row("parent.x = 480; parent.width = 7; parent.height = 8", Black),
                 Row("parent.clip = true", Black),
                 Row("parent.layer.enabled = true; parent.layer.textureSize = Qt.size(2, 2)", Any),
             }) {
            const LogCapture log;
            DashboardRenderer renderer;
            for (int round = 1; round <= 2; ++round) {
                QVERIFY(loadText(renderer, folder, acting(action)));
                QVERIFY(isFilled(frame(renderer), Green));
                for (int i = 0; i < 3; ++i) {
                    publish(renderer);
                    QCoreApplication::processEvents();
                    const QWindowList windows = QGuiApplication::allWindows();
                    for (const QWindow *window : windows)
                        QVERIFY(!window->isVisible() && window->handle() == nullptr);
                    QVERIFY(QGuiApplication::modalWindow() == nullptr);
                }
                QVERIFY2(isFilled(frame(renderer), colour) || colour == Any, action);
                const bool opens = QByteArray(action).startsWith("/* opens");
                QCOMPARE(log.critical().size(), opens ? round : 0);
                QVERIFY(load(renderer, plain));
                QVERIFY2(frame(renderer) == alone, action);
                QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
                QCOMPARE(Probe::alive, 0);
            }
        }
    }

    void warningsWithoutEndStayBounded()
    {
        DashboardRenderer renderer;
        QVERIFY(loadText(renderer, folder, acting("throw calls++ + 'x'.repeat(100000)")));
        for (int i = 0; i < 15; ++i)
            publish(renderer);
        QCOMPARE(renderer.errors().size(), DocumentErrors::MaximumPerLocation + 1);
        QCOMPARE(renderer.errors().at(0).size(), DocumentErrors::MaximumLength + 3);

        // There is a limit for each line and one in total.
        DocumentErrors log;
        QQmlError error;
        error.setUrl(QUrl("file:///my: dash/Dash.qml"_q));
        for (int line = 1; line <= 1000; ++line) {
            error.setLine(line);
            for (int i = 0; i < 40; ++i) {
                error.setDescription("Error: %1"_q.arg(i / 2)); // Each text twice.
                log.append(error);
            }
        }
        const QStringList list = log.list();
        const QString place = "file:///my: dash/Dash.qml:1: "_q;
        QCOMPARE(list.at(5), place + "Further warnings from here are not recorded"_q);
        QVERIFY(list.at(6).endsWith("qml:2: Error: 0"_q));
        QCOMPARE(list.size(), DocumentErrors::MaximumEntries + 1);
        QCOMPARE(list.last(), "Further errors and warnings are not recorded"_q);
        log.clear();
        log.append(error);
        QCOMPARE(log.list(), QStringList(error.toString()));
    }

    void aDocumentMayBeRewrittenInPlaceWhileItLoads()
    {
        const QByteArray text = document(Plain) + "/*" + QByteArray(100'000, '*') + "*/\n";
        const QString path = folder.write("Dash.qml"_q, text);
        std::atomic<bool> closed{false};
        std::thread editor([&] {
            while (!closed)
                folder.write("Dash.qml"_q, text); // Truncates it first.
        });
        DashboardRenderer renderer;
        int pictures = 0;
        for (int loads = 0; loads < 500; ++loads) {
            load(renderer, path); // Half a document fails.
            pictures += frame(renderer).isNull() ? 0 : 1;
        }
        closed = true;
        editor.join();
        QCOMPARE(pictures, 500);
        QVERIFY(load(renderer, path) && frame(renderer) == alone);
    }

private:
    DocumentFolder folder;
    QString plain;
    QImage alone;
};

QTEST_MAIN(DashboardRendererTest)
#include "DashboardRendererTest.moc"
