#include "Documents.h"
#include "Probe.h"

#include <QtCore/QDateTime>
#include <QtQml/QQmlContext>
#include <QtQuick/QQuickItem>
#include <QtTest/QtTest>

#include <utility>

using OVX::QmlOffscreenRenderer;

/// What a load takes in, and what it leaves of the document before.
class OffscreenLoadTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { Probe::registerType(); }
    void init() { Probe::reports.clear(); }
    void cleanup() { QCOMPARE(Probe::alive, 0); }

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
        QVERIFY(load(renderer, folder.write(QStringLiteral("Dash.qml"), filled("red"))));
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
        QVERIFY(load(renderer, folder.write(QStringLiteral("Dash.qml"), filled("red"))));
        const Picture before = frame(renderer, 40, 20);
        const QString path = folder.path(QStringLiteral("Over.qml"));
        if (!text.isEmpty())
            folder.write(QStringLiteral("Over.qml"), text);
        QVERIFY(!renderer.addDocument(path));
        QVERIFY2(renderer.errors().join(QLatin1Char('\n')).contains(error),
                 qPrintable(renderer.errors().join(QLatin1Char('\n'))));
        QVERIFY(frame(renderer, 40, 20) == before);
    }

    void aFileNameIsLookedUpInTheBaseDirectory()
    {
        const DocumentFolder folder;
        const QString path = folder.write(QStringLiteral("a/Dash.qml"), filled("red"));
        folder.write(QStringLiteral("a/Over.qml"), filled("lime"));
        folder.write(QStringLiteral("b/Over.qml"), filled("blue"));
        QmlOffscreenRenderer renderer;
        for (const auto &[name, colour] : {std::pair{"a/", Green}, {"b/", Blue}}) {
            QVERIFY(renderer.loadDocument(QUrl::fromLocalFile(path).toString(),
                                          folder.path(QLatin1String(name)), 40, 20,
                                          OVX::SizeMode::Scale));
            QVERIFY(renderer.addDocument(QStringLiteral("Over.qml")));
            QCOMPARE(frame(renderer, 40, 20).count(colour), 40 * 20);
        }
    }

    void anAdditionMayWarn()
    {
        const DocumentFolder folder;
        QmlOffscreenRenderer renderer;
        QVERIFY(load(renderer, folder.write(QStringLiteral("Dash.qml"), filled("red"))));
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
};

QTEST_MAIN(OffscreenLoadTest)
#include "OffscreenLoadTest.moc"
