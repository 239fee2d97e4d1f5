#include "render/offscreen/QmlOffscreenRenderer.h"

#include "Probe.h"
#include "support/DocumentFolder.h"
#include "support/Picture.h"

#include <QtCore/QDateTime>
#include <QtCore/QUrl>
#include <QtQml/QQmlContext>
#include <QtQuick/QQuickItem>
#include <QtTest/QtTest>

#include <algorithm>
#include <memory>
#include <vector>

using OVX::QmlOffscreenRenderer;
using OVX::SizeMode;

namespace {

constexpr QRgb Black = 0xFF000000;
constexpr QRgb Red = 0xFFFF0000;
constexpr QRgb Green = 0xFF00FF00;
constexpr QRgb Blue = 0xFF0000FF;

/// A document with this root; `body` may use all that the tests need.
QByteArray document(const QByteArray &body)
{
    return "import QtQuick 2.15\nimport Probe 1.0\n" + body;
}

QByteArray filled(const QByteArray &colour)
{
    return document("Rectangle { width: 40; height: 20; color: \"" + colour + "\" }");
}

bool load(QmlOffscreenRenderer &renderer, const QString &path, SizeMode mode = SizeMode::Scale,
          QSize size = {40, 20})
{
    return renderer.loadDocument(QUrl::fromLocalFile(path).toString(),
                                 QFileInfo(path).absolutePath(), size.width(), size.height(), mode);
}

/// One frame; its bytes are empty when there is none.
Picture frame(QmlOffscreenRenderer &renderer, int width, int height)
{
    Picture picture{{}, width, height};
    if (!renderer.renderToBuffer(picture.bytes, width, height))
        picture.bytes.clear();
    return picture;
}

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

    void aLoadReplacesAllOfThePreviousOne()
    {
        const DocumentFolder folder;
        const QString first = folder.write(QStringLiteral("First.qml"), document(R"(
            Rectangle { width: 40; height: 20; color: "red"; Probe {} Item { Probe {} } })"));
        const QString over = folder.write(QStringLiteral("Over.qml"), document(R"(
            Rectangle { width: 8; height: 4; color: "lime"; Probe {} })"));
        {
            QmlOffscreenRenderer renderer;
            for (int i = 0; i < 3; ++i) {
                QVERIFY(load(renderer, first));
                QVERIFY(renderer.addDocument(over));
                QCOMPARE(Probe::alive, 3);
                QCOMPARE(frame(renderer, 40, 20).count(Green), 8 * 4);
            }
            QVERIFY(load(renderer, folder.write(QStringLiteral("Second.qml"), filled("blue"))));
            QCOMPARE(Probe::alive, 0);
            QCOMPARE(frame(renderer, 40, 20).count(Blue), 40 * 20);
            QVERIFY(load(renderer, first));
            QVERIFY(renderer.addDocument(over));
        }
        QCOMPARE(Probe::alive, 0);
    }

    void aRootThatLeftTheWindowGoesWithItsDocument()
    {
        const DocumentFolder folder;
        QmlOffscreenRenderer renderer;
        renderer.setProperty(QStringLiteral("orphaned"), false);
        QVERIFY(load(renderer, folder.write(QStringLiteral("Orphan.qml"), document(R"(
            Rectangle {
                id: root
                property bool orphan: orphaned
                onOrphanChanged: if (orphan) parent = null
                width: 40; height: 20; color: "red"
                Probe {}
            })"))));
        QCOMPARE(frame(renderer, 40, 20).count(Red), 40 * 20);
        renderer.setProperty(QStringLiteral("orphaned"), true);
        QCOMPARE(frame(renderer, 40, 20).count(Black), 40 * 20);
        QVERIFY(load(renderer, folder.write(QStringLiteral("Dash.qml"), quarters())));
        QCOMPARE(Probe::alive, 0);
        renderer.setProperty(QStringLiteral("orphaned"), false);
        QVERIFY(load(renderer, folder.path(QStringLiteral("Orphan.qml"))));
        renderer.setProperty(QStringLiteral("orphaned"), true);
    }

    void theEndOfADocumentIsNoFaultOfTheNext_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::newRow("throws when it goes")
            << QByteArrayLiteral("Item { Component.onDestruction: { throw 'last words' } }");
        QTest::newRow("children bound to their parent")
            << QByteArrayLiteral("Item { width: 40; Item { width: parent.width; Item { height: "
                                 "parent.parent.height } } }");
        QTest::newRow("bound to the root by name")
            << QByteArrayLiteral("Item { id: root; width: 40; Repeater { model: 3; Item { width: "
                                 "globalRootItem === root ? root.parent.width : 1 } } }");
    }

    void theEndOfADocumentIsNoFaultOfTheNext()
    {
        QFETCH(QByteArray, body);
        const DocumentFolder folder;
        QmlOffscreenRenderer renderer;
        const QString path = folder.write(QStringLiteral("Dash.qml"), document(body));
        QVERIFY(load(renderer, path));
        QVERIFY(frame(renderer, 40, 20).isWhole());
        QVERIFY(load(renderer, path));
        QCOMPARE(renderer.errors(), QStringList());
    }

    void warningsWhileTheRendererGoesHurtNobody()
    {
        const DocumentFolder folder;
        // A singleton belongs to the engine and warns when that goes.
        folder.write(QStringLiteral("Pieces/qmldir"),
                     "module Pieces\nsingleton Kept 1.0 Kept.qml\n");
        folder.write(QStringLiteral("Pieces/Kept.qml"), R"(pragma Singleton
            import QtQuick 2.15
            QtObject { property int number: 7; Component.onDestruction: { throw "kept" } })");
        const QString path = folder.write(QStringLiteral("Dash.qml"), R"(
            import QtQuick 2.15
            import Pieces 1.0
            Item { width: Kept.number; Component.onDestruction: { throw "root" } })");
        for (int i = 0; i < 3; ++i) {
            QmlOffscreenRenderer renderer;
            QVERIFY(load(renderer, path));
            QVERIFY(frame(renderer, 40, 20).isWhole());
        }
    }

    void aModuleBesideTheDocumentIsItsAlone()
    {
        const DocumentFolder folder;
        folder.write(QStringLiteral("a/Pieces/qmldir"), "module Pieces\nPiece 1.0 Piece.qml\n");
        folder.write(QStringLiteral("a/Pieces/Piece.qml"), filled("red"));
        const QByteArray user = "import Pieces 1.0\nPiece {}\n";
        const QString first = folder.write(QStringLiteral("a/Dash.qml"), user);
        const QString second = folder.write(QStringLiteral("b/Dash.qml"), user);
        QmlOffscreenRenderer renderer;
        QVERIFY(load(renderer, first));
        QCOMPARE(frame(renderer, 40, 20).count(Red), 40 * 20);
        QVERIFY(!load(renderer, second));
        QVERIFY(renderer.errors().join(QLatin1Char('\n')).contains(QLatin1String("\"Pieces\"")));
        QVERIFY(load(renderer, first));
    }

    void propertiesOutliveLoads()
    {
        const DocumentFolder folder;
        const QString path =
            folder.write(QStringLiteral("Dash.qml"),
                         document("Rectangle { width: 40; height: 20; color: testColour }"));
        QmlOffscreenRenderer renderer;
        QVERIFY(!load(renderer, path));
        QVERIFY(renderer.errors().constFirst().contains(QLatin1String("testColour")));
        renderer.setProperty(QStringLiteral("testColour"), QStringLiteral("red"));
        for (int i = 0; i < 2; ++i) {
            QVERIFY(load(renderer, path));
            QCOMPARE(frame(renderer, 40, 20).count(Red), 40 * 20);
        }
        renderer.setProperty(QStringLiteral("testColour"), QStringLiteral("blue"));
        QCOMPARE(frame(renderer, 40, 20).count(Blue), 40 * 20);
    }

    void aChangedFileOfTheSameSizeAndSecondIsReadAnew()
    {
        const DocumentFolder folder;
        QDateTime time(QDate(2020, 1, 1), QTime(12, 0), Qt::UTC);
        const auto write = [&](const char *name, const QByteArray &text) {
            QFile file(folder.write(QLatin1String(name), text));
            QVERIFY(file.open(QIODevice::ReadWrite));
            time = time.addMSecs(10);
            QVERIFY(file.setFileTime(time, QFileDevice::FileModificationTime));
        };
        const QString path = folder.path(QStringLiteral("Dash.qml"));
        QmlOffscreenRenderer renderer;
        write("Piece.qml", filled("#ff0000"));
        write("Dash.qml", document("Piece {}"));
        QVERIFY(load(renderer, path));
        QCOMPARE(frame(renderer, 40, 20).count(Red), 40 * 20);
        write("Piece.qml", filled("#0000ff"));
        QVERIFY(load(renderer, path));
        QCOMPARE(frame(renderer, 40, 20).count(Blue), 40 * 20);
        write("Dash.qml", filled("#ff0000"));
        QVERIFY(load(renderer, path));
        write("Dash.qml", filled("#00ff00"));
        QVERIFY(load(renderer, path));
        QCOMPARE(frame(renderer, 40, 20).count(Green), 40 * 20);
    }

    void theRootItemHasItsNameOnceItIsThere()
    {
        const DocumentFolder folder;
        const QString path = folder.write(QStringLiteral("Dash.qml"), document(R"(
            Item {
                id: root
                property var named: globalRootItem
                onNamedChanged: probe.report(named === root)
                Component.onCompleted: probe.report(globalRootItem)
                Probe { id: probe }
            })"));
        QmlOffscreenRenderer renderer;
        for (int i = 0; i < 2; ++i) {
            Probe::reports.clear();
            QVERIFY(load(renderer, path));
            QVERIFY(Probe::reports.size() >= 2);
            QVERIFY(Probe::reports.at(Probe::reports.size() - 2).value<QObject *>() == nullptr);
            QCOMPARE(Probe::reports.constLast(), QVariant(true));
        }
    }

    void theRootContextHasAName()
    {
        const DocumentFolder folder;
        QmlOffscreenRenderer renderer;
        QVERIFY(load(renderer, folder.write(QStringLiteral("Dash.qml"), document(R"(
            Item { Probe { Component.onCompleted: report(ctx) } })"))));
        auto *context = qobject_cast<QQmlContext *>(Probe::reports.constFirst().value<QObject *>());
        QVERIFY(context != nullptr);
        QVERIFY(context->parentContext() == nullptr);
        renderer.setProperty(QStringLiteral("word"), 7);
        QCOMPARE(context->contextProperty(QStringLiteral("word")).toInt(), 7);
        auto *root = context->contextProperty(QStringLiteral("globalRootItem")).value<QObject *>();
        QVERIFY(qobject_cast<QQuickItem *>(root) != nullptr);
    }

    void aFailedAdditionLeavesTheDocument_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("error");
        QTest::newRow("missing") << QByteArray() << "No such file";
        QTest::newRow("syntax") << document("Item {") << "Expected token";
        QTest::newRow("no item") << document("QtObject {}") << "Failed to create QQuickItem";
    }

    void aFailedAdditionLeavesTheDocument()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, error);
        const DocumentFolder folder;
        QmlOffscreenRenderer renderer;
        QVERIFY(load(renderer, folder.write(QStringLiteral("Dash.qml"), quarters())));
        const Picture before = frame(renderer, 40, 20);
        const QString path = folder.path(QStringLiteral("Over.qml"));
        if (!text.isEmpty())
            folder.write(QStringLiteral("Over.qml"), text);
        QVERIFY(!renderer.addDocument(path));
        QVERIFY2(renderer.errors().join(QLatin1Char('\n')).contains(error),
                 qPrintable(renderer.errors().join(QLatin1Char('\n'))));
        QVERIFY(frame(renderer, 40, 20) == before);
    }

    void anAdditionMayWarn()
    {
        const DocumentFolder folder;
        QmlOffscreenRenderer renderer;
        QVERIFY(load(renderer, folder.write(QStringLiteral("Dash.qml"), quarters())));
        QVERIFY(renderer.addDocument(folder.write(
            QStringLiteral("Over.qml"), document("Rectangle { width: unknownName; height: 4 }"))));
        QVERIFY(!renderer.errors().isEmpty());
        QVERIFY(frame(renderer, 40, 20).isWhole());
    }

    void aWarningFailsTheLoadButNotAFrameLater()
    {
        const DocumentFolder folder;
        QmlOffscreenRenderer renderer;
        QVERIFY(!load(renderer, folder.write(QStringLiteral("Bad.qml"), document(R"(
            Item { Component.onCompleted: console.log(unknownName) })"))));
        QVERIFY(renderer.errors().constFirst().contains(QLatin1String("unknownName")));
        QVERIFY(!frame(renderer, 40, 20).isWhole());
        renderer.setProperty(QStringLiteral("tick"), 0);
        QVERIFY(load(renderer, folder.write(QStringLiteral("Dash.qml"), document(R"(
            Item { property int t: tick; onTChanged: if (t > 0) throw "late" })"))));
        QVERIFY(renderer.errors().isEmpty());
        renderer.setProperty(QStringLiteral("tick"), 1);
        QCOMPARE(renderer.errors().size(), 1);
        QVERIFY(frame(renderer, 40, 20).isWhole());
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
