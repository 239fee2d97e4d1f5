#include "Documents.h"
#include "Probe.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QOpenGLContext>
#include <QtGui/QOpenGLFramebufferObject>
#include <QtGui/QOpenGLFunctions>
#include <QtQuick/QQuickWindow>
#include <QtTest/QtTest>

#include <memory>
#include <vector>

using OVX::QmlOffscreenRenderer;
using OVX::SizeMode;

namespace {

/// Four quarters of different colours, none of them the same when turned or mirrored.
const QByteArray &quarters()
{
    static const QByteArray text = document(R"(
        Item {
            width: 40; height: 20
            Rectangle { width: 20; height: 10; color: "#102030" }
            Rectangle { x: 20; width: 20; height: 10; color: "#405060" }
            Rectangle { y: 10; width: 20; height: 10; color: "#708090" }
            Rectangle { x: 20; y: 10; width: 20; height: 10; color: "#a0b0c0" }
        })");
    return text;
}

/// The window of the one renderer that there is.
QQuickWindow *quickWindow()
{
    const QWindowList windows = QGuiApplication::allWindows();
    for (QWindow *window : windows) {
        if (auto *found = qobject_cast<QQuickWindow *>(window))
            return found;
    }
    return nullptr;
}

/// Which of the known textures are there when a frame begins.
class LiveTextures : public QObject
{
public:
    explicit LiveTextures(QQuickWindow *window)
    {
        connect(window, &QQuickWindow::beforeRendering, this, [this] {
            alive.clear();
            for (std::size_t index = 0; index < known.size(); ++index) {
                if (QOpenGLContext::currentContext()->functions()->glIsTexture(known[index]))
                    alive += QString::number(index);
            }
        });
    }

    std::vector<GLuint> known;
    QString alive; ///< Their indexes, a digit each.
};

} // namespace

class QmlOffscreenRendererTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { Probe::registerType(); }
    void init() { Probe::reports.clear(); }
    void cleanup() { QCOMPARE(Probe::alive, 0); }

    void aPixelIsBlueGreenRedAlphaAndTheTopRowIsFirst()
    {
        const DocumentFolder folder;
        QmlOffscreenRenderer renderer;
        QVERIFY(load(renderer, folder.write(QStringLiteral("Dash.qml"), quarters())));
        const Picture picture = frame(renderer, 40, 20);
        QCOMPARE(picture.bytes.size(), std::size_t{3200});
        const Frame first(picture.bytes.begin(), picture.bytes.begin() + 4);
        QCOMPARE(first, Frame({0x30, 0x20, 0x10, 0xFF}));
        QCOMPARE(picture.at(39, 0), 0xFF405060U);
        QCOMPARE(picture.at(0, 19), 0xFF708090U);
        QCOMPARE(picture.at(39, 19), 0xFFA0B0C0U);
        // Every row has its place, the ones next to the middle too.
        for (int y = 0; y < 20; ++y)
            QCOMPARE(picture.at(5, y), y < 10 ? 0xFF102030U : 0xFF708090U);
    }

    void whereNothingIsPaintedThereIsOpaqueBlack()
    {
        const DocumentFolder folder;
        QmlOffscreenRenderer renderer;
        QVERIFY(load(renderer, folder.write(QStringLiteral("Dash.qml"), document(R"(
            Item { width: 40; height: 20; Rectangle { width: 10; height: 20; color: "#80ffffff" } }
        )"))));
        const Picture picture = frame(renderer, 40, 20);
        QCOMPARE(picture.count(Black), 30 * 20);
        QCOMPARE(picture.at(0, 0), 0xFF808080U);
    }

    void aNewRendererGivesNoFrameAndLeavesTheBuffer()
    {
        QmlOffscreenRenderer renderer;
        Frame buffer{1, 2, 3};
        renderer.setRootRotation(180);
        QVERIFY(!renderer.addDocument(QStringLiteral(":/nothing.qml")));
        QVERIFY(!renderer.renderToBuffer(buffer, 40, 20));
        QCOMPARE(buffer, Frame({1, 2, 3}));
        QVERIFY(renderer.errors().isEmpty());
    }

    void theSmallestFramesAreDelivered_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QSize>("root");
        QTest::newRow("one row") << QSize(40, 1) << QSize(40, 1);
        QTest::newRow("one column") << QSize(1, 20) << QSize(1, 20);
        QTest::newRow("one pixel") << QSize(1, 1) << QSize(1, 1);
        QTest::newRow("odd height") << QSize(40, 3) << QSize(40, 3);
    }

    void theSmallestFramesAreDelivered()
    {
        QFETCH(QSize, size);
        QFETCH(QSize, root);
        const DocumentFolder folder;
        QmlOffscreenRenderer renderer;
        const QByteArray text =
            document(QStringLiteral("Rectangle { width: %1; height: %2; color: \"lime\" }")
                         .arg(root.width())
                         .arg(root.height())
                         .toUtf8());
        QVERIFY(
            load(renderer, folder.write(QStringLiteral("Dash.qml"), text), SizeMode::Scale, size));
        const Picture picture = frame(renderer, size.width(), size.height());
        QVERIFY(picture.isWhole());
        QCOMPARE(picture.count(Green), size.width() * size.height());
    }

    void impossibleSizesGiveNoFrameAndTheNextOneIsRight_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::newRow("no width") << QSize(0, 20);
        QTest::newRow("no height") << QSize(40, 0);
        QTest::newRow("negative") << QSize(-40, -20);
        QTest::newRow("too wide for any driver") << QSize(1 << 20, 1);
        QTest::newRow("too high for any driver") << QSize(1, 1 << 20);
    }

    void impossibleSizesGiveNoFrameAndTheNextOneIsRight()
    {
        QFETCH(QSize, size);
        const DocumentFolder folder;
        QmlOffscreenRenderer renderer;
        QVERIFY(load(renderer, folder.write(QStringLiteral("Dash.qml"), quarters())));
        const Picture before = frame(renderer, 40, 20);
        for (int i = 0; i < 5; ++i)
            QVERIFY(!frame(renderer, size.width(), size.height()).isWhole());
        QVERIFY(frame(renderer, 40, 20) == before);
        QVERIFY(renderer.errors().isEmpty());
    }

    void alternatingSizesStayRight()
    {
        const DocumentFolder folder;
        const QString path = folder.write(QStringLiteral("Dash.qml"), quarters());
        const std::vector<QSize> sizes{{40, 20}, {80, 40}, {20, 40}, {80, 20}, {41, 23}};
        std::vector<Picture> expected;
        for (const QSize &size : sizes) {
            QmlOffscreenRenderer fresh;
            QVERIFY(load(fresh, path, SizeMode::Scale, size));
            expected.push_back(frame(fresh, size.width(), size.height()));
            QVERIFY(expected.back().isWhole());
        }
        QmlOffscreenRenderer renderer;
        QVERIFY(load(renderer, path));
        // Hits, misses, and the return of what has been put out.
        for (const std::size_t i : {0, 1, 2, 0, 1, 2, 3, 0, 1, 3, 2, 4, 4, 0, 3, 2, 1, 0})
            QVERIFY(frame(renderer, sizes[i].width(), sizes[i].height()) == expected[i]);
    }

    void theThreeNewestFramebuffersAreKeptHoweverOftenUsed()
    {
        const DocumentFolder folder;
        QmlOffscreenRenderer renderer;
        QVERIFY(load(renderer, folder.write(QStringLiteral("Dash.qml"), quarters())));
        QQuickWindow *window = quickWindow();
        QVERIFY(window != nullptr);
        LiveTextures live(window);
        const auto target = [&](int size) {
            frame(renderer, 40 + size, 20);
            return window->renderTarget()->texture();
        };
        for (const int size : {0, 1, 2})
            live.known.push_back(target(size));
        QCOMPARE(target(0), live.known[0]); // A hit, which moves nothing.
        QCOMPARE(live.alive, QStringLiteral("012"));
        live.known.push_back(target(3));
        QCOMPARE(target(3), live.known[3]);
        QCOMPARE(live.alive, QStringLiteral("123"));
        live.known[0] = target(0);
        QCOMPARE(target(0), live.known[0]);
        QCOMPARE(live.alive, QStringLiteral("023"));
        QCOMPARE(target(2), live.known[2]);
        QCOMPARE(target(3), live.known[3]);
    }

    void aLoadLeavesTheContextCurrentAndAFrameNone()
    {
        const DocumentFolder folder;
        QmlOffscreenRenderer renderer;
        QVERIFY(load(renderer, folder.write(QStringLiteral("Dash.qml"), quarters())));
        QVERIFY(QOpenGLContext::currentContext() != nullptr);
        QVERIFY(frame(renderer, 40, 20).isWhole());
        QVERIFY(QOpenGLContext::currentContext() == nullptr);
        QVERIFY(!frame(renderer, 1 << 20, 20).isWhole());
        QVERIFY(QOpenGLContext::currentContext() == nullptr);
    }

    void anErrorThatOpenGlStillHoldsIsNoFaultOfTheFrame()
    {
        const DocumentFolder folder;
        QmlOffscreenRenderer renderer;
        QVERIFY(load(renderer, folder.write(QStringLiteral("Dash.qml"), quarters())));
        const Picture before = frame(renderer, 40, 20);
        QVERIFY(quickWindow() != nullptr);
        int made = 0;
        connect(quickWindow(), &QQuickWindow::afterRendering, this, [&made] {
            QOpenGLContext::currentContext()->functions()->glEnable(0xFFFF);
            ++made;
        });
        QVERIFY(frame(renderer, 40, 20) == before);
        QCOMPARE(made, 1);
    }

    void whatIsLaidOutAnewIsInItsPlaceInTheNextFrame()
    {
        const DocumentFolder folder;
        QmlOffscreenRenderer renderer;
        renderer.setProperty(QStringLiteral("first"), 10);
        QVERIFY(load(renderer, folder.write(QStringLiteral("Dash.qml"), document(R"(
            Item {
                width: 40; height: 20
                Row {
                    Rectangle { width: first; height: 10; color: "red" }
                    Column {
                        Rectangle { width: 5; height: first / 10; color: "red" }
                        Rectangle { width: 5; height: 5; color: "lime" }
                    }
                }
            })"))));
        renderer.setProperty(QStringLiteral("first"), 30);
        const Picture picture = frame(renderer, 40, 20);
        QCOMPARE(picture.count(Green), 5 * 5);
        QCOMPARE(picture.at(30, 3), Green);
        QCOMPARE(picture.at(30, 2), Red);
        QCOMPARE(picture.at(29, 3), Red);
    }

    void theWindowHasTheSizeOfTheLoadAndOfEachFrame()
    {
        const DocumentFolder folder;
        QmlOffscreenRenderer renderer;
        QVERIFY(load(renderer, folder.write(QStringLiteral("Dash.qml"), document(R"(
            Item {
                readonly property size seen: Qt.size(Window.width, Window.height)
                onSeenChanged: probe.report(seen)
                Probe { id: probe }
                Rectangle { width: Window.width; height: Window.height; color: "lime" }
            })")),
                     SizeMode::Resize, QSize(31, 17)));
        QCOMPARE(Probe::reports.constLast().toSize(), QSize(31, 17));
        for (const QSize size : {QSize(60, 50), QSize(10, 70)}) {
            const Picture picture = frame(renderer, size.width(), size.height());
            QCOMPARE(picture.count(Green), size.width() * size.height());
            QCOMPARE(Probe::reports.constLast().toSize(), size);
        }
    }

    void theRootIsScaledByTheWidthAndCentred_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<int>("top"); // The first row of the document's middle line.
        QTest::addColumn<int>("bar");
        QTest::newRow("twice") << QSize(80, 40) << 20 << 0;
        QTest::newRow("higher leaves bars") << QSize(80, 80) << 40 << 20;
        QTest::newRow("lower cuts") << QSize(80, 20) << 10 << 0;
        QTest::newRow("half") << QSize(20, 30) << 15 << 10;
    }

    void theRootIsScaledByTheWidthAndCentred()
    {
        QFETCH(QSize, size);
        QFETCH(int, top);
        QFETCH(int, bar);
        const DocumentFolder folder;
        QmlOffscreenRenderer renderer;
        QVERIFY(load(renderer, folder.write(QStringLiteral("Dash.qml"), quarters())));
        const Picture picture = frame(renderer, size.width(), size.height());
        const int right = size.width() - 1;
        QCOMPARE(picture.at(0, top - 1), 0xFF102030U);
        QCOMPARE(picture.at(0, top), 0xFF708090U);
        QCOMPARE(picture.at(right / 2, top), 0xFF708090U);
        QCOMPARE(picture.at(right / 2 + 1, top), 0xFFA0B0C0U);
        QCOMPARE(picture.at(right, top), 0xFFA0B0C0U);
        QCOMPARE(picture.count(Black), bar * 2 * size.width());
        QCOMPARE(picture.count(Black, 0, bar), bar * size.width());
    }

    void aRootWithoutWidthKeepsItsScaleAndIsCentred()
    {
        const DocumentFolder folder;
        QmlOffscreenRenderer renderer;
        renderer.setProperty(QStringLiteral("rootWidth"), 0);
        QVERIFY(load(renderer, folder.write(QStringLiteral("Dash.qml"), document(R"(
            Item { width: rootWidth; Rectangle { width: 4; height: 2; color: "red" } }
        )"))));
        const Picture unscaled = frame(renderer, 40, 20);
        QCOMPARE(unscaled.count(Red), 4 * 2);
        QCOMPARE(unscaled.at(20, 10), Red);
        QCOMPARE(unscaled.at(19, 9), Black);
        renderer.setProperty(QStringLiteral("rootWidth"), 20);
        QCOMPARE(frame(renderer, 40, 20).count(Red), 8 * 4);
        renderer.setProperty(QStringLiteral("rootWidth"), 0);
        const Picture scaled = frame(renderer, 40, 20);
        QCOMPARE(scaled.count(Red), 8 * 4);
        QCOMPARE(scaled.at(20, 10), Red);
        QCOMPARE(scaled.at(19, 9), Black);
    }

    void aResizedRootTakesTheSizeOfTheFrame()
    {
        const DocumentFolder folder;
        QmlOffscreenRenderer renderer;
        QVERIFY(load(renderer, folder.write(QStringLiteral("Dash.qml"), document(R"(
            Rectangle {
                id: root
                width: 5; height: 5; color: "red"
                Probe { id: probe }
                onHeightChanged: probe.report(Qt.size(width, height))
                Rectangle {
                    anchors { right: parent.right; bottom: parent.bottom }
                    width: 3; height: 2; color: "blue"
                }
            })")),
                     SizeMode::Resize, QSize(31, 17)));
        QCOMPARE(Probe::reports.constLast().toSize(), QSize(31, 17));
        for (const QSize size : {QSize(60, 50), QSize(10, 70)}) {
            const Picture picture = frame(renderer, size.width(), size.height());
            QCOMPARE(picture.count(Blue), 3 * 2);
            QCOMPARE(picture.at(size.width() - 1, size.height() - 1), Blue);
            QCOMPARE(picture.count(Red), size.width() * size.height() - 3 * 2);
        }
    }

    void rotationTurnsThePictureAboutItsCentre()
    {
        const DocumentFolder folder;
        QmlOffscreenRenderer renderer;
        QVERIFY(load(renderer, folder.write(QStringLiteral("Dash.qml"), quarters())));
        QVERIFY(renderer.addDocument(folder.write(
            QStringLiteral("Over.qml"),
            document(R"(Rectangle { x: 4; y: 2; width: 8; height: 4; color: "lime" })"))));
        const Picture upright = frame(renderer, 80, 60);
        QCOMPARE(upright.at(8, 14), Green);
        renderer.setRootRotation(180);
        QVERIFY(frame(renderer, 80, 60) == upright.turned());
        renderer.setRootRotation(0);
        QVERIFY(frame(renderer, 80, 60) == upright);
    }

    void severalRenderersShareAThread()
    {
        const DocumentFolder folder;
        const QString red = folder.write(QStringLiteral("Red.qml"), filled("red"));
        const QString blue = folder.write(QStringLiteral("Blue.qml"), filled("blue"));
        auto first = std::make_unique<QmlOffscreenRenderer>();
        QmlOffscreenRenderer second;
        QVERIFY(load(*first, red));
        QVERIFY(load(second, blue));
        for (int round = 0; round < 3; ++round) {
            QCOMPARE(frame(*first, 40, 20).count(Red), 40 * 20);
            QCOMPARE(frame(second, 40 + round, 21 + round).at(20, 10), Blue);
            QVERIFY(load(*first, red));
            QCOMPARE(frame(second, 40, 20).count(Blue), 40 * 20);
        }
        QVERIFY(load(second, blue));
        first.reset();
        QCOMPARE(frame(second, 40, 20).count(Blue), 40 * 20);
    }
};

QTEST_MAIN(QmlOffscreenRendererTest)
#include "QmlOffscreenRendererTest.moc"
