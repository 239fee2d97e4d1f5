#include "Documents.h"

#include <QtCore/QDateTime>
#include <QtGui/QOpenGLContext>
#include <QtGui/QOpenGLFramebufferObject>
#include <QtGui/QOpenGLFunctions>
#include <QtQuick/QQuickWindow>
#include <QtTest/QtTest>

using OVX::QmlOffscreenRenderer;
using OVX::SizeMode;

namespace {

/// Four quarters of different colours, none of them the same when turned or mirrored.
constexpr const char *Quarters = R"(import QtQuick 2.15
    Item {
        width: 40; height: 20
        Rectangle { width: 20; height: 10; color: "#102030" }
        Rectangle { x: 20; width: 20; height: 10; color: "#405060" }
        Rectangle { y: 10; width: 20; height: 10; color: "#708090" }
        Rectangle { x: 20; y: 10; width: 20; height: 10; color: "#a0b0c0" }
    })";

} // namespace

/// What a load takes in, and what a frame shows of it.
class QmlOffscreenRendererTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        Probe::registerType();
        quarters = folder.write("Quarters.qml"_q, Quarters);
    }
    void init() { Probe::reports.clear(); }
    void cleanup() { QCOMPARE(Probe::alive, 0); }

    void aPixelIsBlueGreenRedAlphaAndTheTopRowIsFirst()
    {
        QmlOffscreenRenderer renderer;
        Frame buffer{1, 2, 3};
        QVERIFY(!renderer.renderToBuffer(buffer, 40, 20)); // Nothing is loaded yet.
        QCOMPARE(buffer, Frame({1, 2, 3}));
        QVERIFY(load(renderer, quarters));
        const QImage picture = frame(renderer);
        const uchar *const bytes = picture.constBits();
        QCOMPARE(Frame(bytes, bytes + 4), Frame({0x30, 0x20, 0x10, 0xFF}));
        QCOMPARE(picture.pixel(39, 19), 0xFFA0B0C0U);
        for (int y = 0; y < 20; ++y)
            QCOMPARE(picture.pixel(5, y), y < 10 ? 0xFF102030U : 0xFF708090U);
    }

    void alternatingSizesStayRight()
    {
        // Even, odd and the smallest ones, and what no driver gives.
        const std::vector<QSize> sizes{{40, 20}, {80, 40}, {1, 1}, {40, 1}, {41, 23}};
        const std::vector<QSize> none{{0, 20}, {40, 0}, {-40, -20}, {1 << 20, 1}, {1, 1 << 20}};
        QmlOffscreenRenderer renderer;
        QVERIFY(load(renderer, quarters));
        std::vector<QImage> expected;
        QmlOffscreenRenderer another; // Several renderers share a thread.
        for (const QSize &size : sizes) {
            QmlOffscreenRenderer fresh;
            QVERIFY(load(fresh, quarters));
            QVERIFY(loadText(another, folder, "Item {}"));
            expected.push_back(frame(fresh, size.width(), size.height()));
            QVERIFY(!expected.back().isNull());
        }
        // Hits, misses, and the return of what was evicted.
        for (const std::size_t i : {0, 1, 2, 0, 1, 2, 3, 0, 1, 3, 2, 4, 4, 0, 3, 2, 1, 0}) {
            QCOMPARE(frame(renderer, sizes[i].width(), sizes[i].height()), expected[i]);
            QVERIFY(frame(renderer, none[i].width(), none[i].height()).isNull());
            QVERIFY(QOpenGLContext::currentContext() == nullptr);
        }
        QVERIFY(renderer.errors().isEmpty());
    }

    void theThreeNewestFramebuffersAreKept()
    {
        QmlOffscreenRenderer renderer;
        QVERIFY(loadText(
            renderer, folder,
            "Item { Window.onWindowChanged: probe.report(Window.window)\nProbe { id: probe } }"));
        QVERIFY(QOpenGLContext::currentContext() != nullptr);
        auto *window = qobject_cast<QQuickWindow *>(Probe::reports.at(0).value<QObject *>());
        std::vector<GLuint> textures;
        QString alive; // Their indexes when a frame begins.
        connect(window, &QQuickWindow::beforeRendering, this, [all = &textures, alive = &alive] {
            QOpenGLFunctions &gl = *QOpenGLContext::currentContext()->functions();
            alive->clear();
            for (std::size_t index = 0; index < all->size(); ++index)
                *alive += gl.glIsTexture(all->at(index)) ? QString::number(index) : QString();
            gl.glEnable(0xFFFF); // An error that OpenGL holds is no fault of the frame.
        });
        for (const int width : {40, 41, 42, 40, 43, 43}) {
            QVERIFY(!frame(renderer, width).isNull());
            textures.push_back(window->renderTarget()->texture());
        }
        QCOMPARE(textures[3], textures[0]); // A hit, which moves nothing.
        QCOMPARE(alive, "124"_q);
    }

    void whatIsLaidOutAnewIsInItsPlaceInTheNextFrame()
    {
        QmlOffscreenRenderer renderer;
        renderer.setProperty("first"_q, 10);
        QVERIFY(loadText(renderer, folder, R"(
            Row {
                width: 40; height: 20
                Rectangle { width: first; height: 10; color: "red" }
                Rectangle { width: 5; height: 5; color: "lime" }
            })"));
        renderer.setProperty("first"_q, 30);
        const QImage picture = frame(renderer);
        QVERIFY(picture.pixel(29, 0) == Red && picture.pixel(30, 0) == Green);
        QCOMPARE(count(picture, Green), 5 * 5);
    }

    void theRootIsScaledByTheWidthAndCentred()
    {
        using Row = std::tuple<int, int, int, int>; // Width, height, middle line, bars' height.
        for (const auto &[width, height, middle, bar] :
             {Row(80, 40, 20, 0), Row(80, 80, 40, 20), Row(80, 20, 10, 0), Row(20, 30, 15, 10)}) {
            QmlOffscreenRenderer renderer;
            QVERIFY(load(renderer, quarters));
            const QImage picture = frame(renderer, width, height);
            QCOMPARE(picture.pixel(width / 2 - 1, middle - 1), 0xFF102030U);
            QCOMPARE(picture.pixel(width / 2, middle), 0xFFA0B0C0U);
            QCOMPARE(count(picture, Black), bar * 2 * width);
            renderer.setRootRotation(180);
            QCOMPARE(frame(renderer, width, height), picture.mirrored(true, true));
        }
    }

    void aRootWithoutWidthKeepsItsScaleAndIsCentred()
    {
        QmlOffscreenRenderer renderer;
        renderer.setProperty("rootWidth"_q, 0);
        QVERIFY(loadText(renderer, folder, R"(
            Item { width: rootWidth; Rectangle { width: 4; height: 2; color: "red" } })"));
        for (const auto &[rootWidth, pixels] : {std::pair(0, 4 * 2), {20, 8 * 4}, {0, 8 * 4}}) {
            renderer.setProperty("rootWidth"_q, rootWidth);
            const QImage picture = frame(renderer);
            QCOMPARE(count(picture, Red), pixels);
            QVERIFY(rootWidth != 0 || picture.pixel(20, 10) == Red);
        }
    }

    void aResizedRootAndTheWindowTakeTheSizeOfTheFrame()
    {
        QmlOffscreenRenderer renderer;
        QVERIFY(loadText(renderer, folder, R"(
            Rectangle {
                readonly property size seen: Qt.size(width, Window.height)
                width: 5; color: "red"
                onSeenChanged: probe.report(seen)
                Probe { id: probe }
            })",
                         SizeMode::Resize, QSize(31, 17)));
        QCOMPARE(Probe::reports.constLast().toSize(), QSize(31, 17));
        for (const QSize size : {QSize(60, 50), QSize(10, 70)}) {
            QVERIFY(isFilled(frame(renderer, size.width(), size.height()), Red));
            QCOMPARE(Probe::reports.constLast().toSize(), size);
        }
    }

    void anAdditionGoesWithItsDocument()
    {
        QmlOffscreenRenderer renderer;
        const QString over = folder.write("Over.qml"_q, document(R"(
            Rectangle { width: 8; height: 4; color: "lime"; Probe {} })"));
        QVERIFY(!renderer.addDocument(over));
        for (int i = 0; i < 2; ++i) {
            QVERIFY(loadText(renderer, folder, "Item { width: 40; height: 20; Probe {} }"));
            QVERIFY(renderer.addDocument(over));
            QCOMPARE(Probe::alive, 2);
            QCOMPARE(count(frame(renderer), Green), 8 * 4);
        }
        QVERIFY(load(renderer, quarters));
        QCOMPARE(Probe::alive, 0);
        QVERIFY(!renderer.addDocument(folder.filePath("Missing.qml"_q)));
        QVERIFY(errorsOf(renderer).contains("No such file"_q));
        QVERIFY(!frame(renderer).isNull());
    }

    void theModulesInADocumentsFolderAreItsOwn()
    {
        // A singleton belongs to the engine, and warns when that goes.
        folder.write("Pieces/qmldir"_q, "module Pieces\nsingleton Kept 1.0 Kept.qml\n");
        folder.write("Pieces/Kept.qml"_q, R"(pragma Singleton
            import QtQuick 2.15
            QtObject { Component.onDestruction: { throw "kept" } })");
        const QByteArray text = "import Pieces 1.0\nItem { property var kept: Kept }";
        QmlOffscreenRenderer renderer;
        QVERIFY(loadText(renderer, folder, text));
        QVERIFY(!load(renderer, folder.write("other/Dash.qml"_q, document(text))));
        QVERIFY(errorsOf(renderer).contains(R"("Pieces")"_q));
    }

    void propertiesOutliveLoads()
    {
        const QByteArray text = "Rectangle { width: 40; height: 20; color: testColour }";
        QmlOffscreenRenderer renderer;
        QVERIFY(!loadText(renderer, folder, text)); // A warning fails the load.
        QVERIFY(errorsOf(renderer).contains("testColour"_q));
        QVERIFY(frame(renderer).isNull());
        renderer.setProperty("testColour"_q, "red"_q);
        for (const QRgb colour : {Red, Blue}) {
            QVERIFY(loadText(renderer, folder, text));
            QVERIFY(isFilled(frame(renderer), colour));
            renderer.setProperty("testColour"_q, "blue"_q);
            QVERIFY(isFilled(frame(renderer), Blue));
        }
    }

    void aChangedFileOfTheSameSizeAndSecondIsReadAnew()
    {
        QDateTime time(QDate(2020, 1, 1), QTime(12, 0), Qt::UTC);
        QmlOffscreenRenderer renderer;
        for (const auto &[name, colour] : {std::pair("#ff0000", Red), {"#0000ff", Blue}}) {
            QFile file(folder.write("Piece.qml"_q, filled(name)));
            QVERIFY(file.open(QIODevice::ReadWrite));
            time = time.addMSecs(10);
            QVERIFY(file.setFileTime(time, QFileDevice::FileModificationTime));
            QVERIFY(loadText(renderer, folder, "Piece {}"));
            QVERIFY(isFilled(frame(renderer), colour));
        }
    }

    void theRootItemHasItsNameOnceItIsThere()
    {
        QmlOffscreenRenderer renderer;
        for (int i = 1; i <= 2; ++i) {
            QVERIFY(loadText(renderer, folder, R"(
                Item {
                    id: root
                    property var named: globalRootItem
                    onNamedChanged: if (named) probe.report(named === root)
                    Component.onCompleted: probe.report(!globalRootItem && ctx !== null)
                    Probe { id: probe }
                })"));
            QCOMPARE(Probe::reports.size(), 2 * i);
            QVERIFY(!Probe::reports.contains(false));
        }
    }

private:
    DocumentFolder folder;
    QString quarters;
};

QTEST_MAIN(QmlOffscreenRendererTest)
#include "QmlOffscreenRendererTest.moc"
