#include "Documents.h"
#include "Probe.h"
#include "render/DashboardFadeInOut.h"

#include <QtTest/QtTest>

#include <atomic>
#include <thread>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

namespace {

constexpr int Width = 480;
constexpr int Height = 272;

/// A frame of the usual size.
Picture frame(DashboardRenderer &renderer)
{
    return frame(renderer, Width, Height);
}

} // namespace

/// Where a document lies, and when it isn't there.
class DocumentFilesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        Probe::registerType();
        DashboardFadeInOut::registerType();
    }
    void cleanup() { QCOMPARE(Probe::alive, 0); }

    void aPathMayHoldAnyCharacter_data()
    {
        QTest::addColumn<QString>("folderName");
        QTest::addColumn<QString>("fileName");
        const auto row = [](const char *name, const char *folderName, const char *fileName) {
            QTest::newRow(name) << QString::fromUtf8(folderName) << QString::fromUtf8(fileName);
        };
        row("spaces", "my dash boards", "The Dash.qml");
        row("hash", "a#b", "Da#sh.qml");
        row("percent", "100%", "50%25.qml");
        row("percent that looks like a code", "%20%2f", "%41.qml");
        row("umlauts", "Übergrößen", "Straße.qml");
        row("Chinese", "仪表盘", "仪表.qml");
        row("beyond the basic plane", "🏎", "🏁.qml");
        row("brackets and quotes", "a [b] (c) 'd' {e}", "&+,;=@!$.qml");
        row("dots", "a.b.c", "..Dash.qml");
#ifdef Q_OS_UNIX
        row("colon", "C:", "a:b.qml");
        row("question mark", "why?", "what?.qml");
        row("backslash and double quote", "a\\b", "c\"d.qml");
#endif
    }

    void aPathMayHoldAnyCharacter()
    {
        QFETCH(QString, folderName);
        QFETCH(QString, fileName);
        const DocumentFolder folder;
        folder.write(folderName + QStringLiteral("/Beside.qml"), filled("lime"));
        const QString path = folder.write(folderName + QLatin1Char('/') + fileName,
                                          "import QtQuick 2.15\nItem { width: 480; height: 272\n"
                                          "Beside {} }");
        DashboardRenderer renderer;
        QVERIFY2(renderer.load(path, Width, Height), errorsOf(renderer));
        QCOMPARE(frame(renderer).count(Green), Width * Height);
        QVERIFY(!renderer.load(path + QStringLiteral("x"), Width, Height));
        QVERIFY(frame(renderer).isWhole());
    }

    void whatIsNoFileFails_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("error");
        const QByteArray missing = "No such file or directory";
#ifdef Q_OS_WIN
        const QByteArray folder = "older"; // The reason differs between Windows and Wine.
#else
        const QByteArray folder = "file to open is a directory";
#endif
        QTest::newRow("missing") << "Missing.qml" << missing;
        QTest::newRow("in a missing folder") << "missing/Dash.qml" << missing;
        QTest::newRow("folder") << "folder" << folder;
        QTest::newRow("folder with a slash") << "folder/" << folder;
        QTest::newRow("folder named like a document") << "Folder.qml" << folder;
        QTest::newRow("below a file") << "Good.qml/Dash.qml" << QByteArray("Dash.qml: ");
        QTest::newRow("beyond the limit") << "Huge.qml" << QByteArray("larger than 64 MiB");
#ifdef Q_OS_UNIX
        QTest::newRow("pipe that nobody writes to") << "Pipe.qml" << QByteArray("Not a regular");
        QTest::newRow("device without an end") << "Device.qml" << QByteArray("Not a regular");
#endif
    }

    void whatIsNoFileFails()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, error);
        const DocumentFolder folder;
        folder.write(QStringLiteral("folder/Dash.qml"), filled("red"));
        folder.write(QStringLiteral("Folder.qml/Dash.qml"), filled("red"));
        const QString good = folder.write(QStringLiteral("Good.qml"), filled("lime"));
        QVERIFY(QFile::resize(folder.write(QStringLiteral("Huge.qml"), filled("red")),
                              64 * 1024 * 1024 + 1));
#ifdef Q_OS_UNIX
        QVERIFY(
            QFile::link(QStringLiteral("/dev/zero"), folder.path(QStringLiteral("Device.qml"))));
        QCOMPARE(::mkfifo(QFile::encodeName(folder.path(QStringLiteral("Pipe.qml"))), 0600), 0);
#endif
        DashboardRenderer renderer;
        for (int round = 0; round < 2; ++round) {
            QVERIFY(!renderer.load(folder.path(name), Width, Height));
            QVERIFY2(errorsOf(renderer).contains(error), errorsOf(renderer));
            QVERIFY(frame(renderer).isWhole());
            QVERIFY(renderer.load(good, Width, Height));
            QCOMPARE(frame(renderer).count(Green), Width * Height);
        }
    }

    void anEmptyPathFails()
    {
        DashboardRenderer renderer;
        QVERIFY(!renderer.load({}, Width, Height));
        QVERIFY(!renderer.errors().isEmpty());
        QVERIFY(frame(renderer).isWhole());
    }

    void aFileDeletedBetweenFramesIsMissedOnlyAtTheNextLoad()
    {
        const DocumentFolder folder;
        DashboardRenderer renderer;
        const QString path = folder.write(QStringLiteral("Dash.qml"), filled("lime"));
        QVERIFY(renderer.load(path, Width, Height));
        QVERIFY(QFile::remove(path));
        QCOMPARE(frame(renderer).count(Green), Width * Height);
        QCOMPARE(frame(renderer, 240, 136).count(Green), 240 * 136);
        QVERIFY(!renderer.load(path, Width, Height));
        QCOMPARE(frame(renderer).count(Green), 0);
        folder.write(QStringLiteral("Dash.qml"), filled("red"));
        QVERIFY(renderer.load(path, Width, Height));
        QCOMPARE(frame(renderer).count(Red), Width * Height);
    }

    void aDocumentMayBeRewrittenInPlaceWhileItLoads()
    {
        const DocumentFolder folder;
        const QString name = QStringLiteral("Dash.qml");
        const QByteArray text = filled("lime") + "/*" + QByteArray(100'000, '*') + "*/\n";
        const QString path = folder.write(name, text);
        std::atomic<bool> closed{false};
        std::thread editor([&] {
            while (!closed)
                folder.write(name, text); // Truncates it first.
        });
        DashboardRenderer renderer;
        int whole = 0;
        int pictures = 0;
        int loads = 0;
        for (; whole < 100 && loads < 20'000; ++loads) {
            whole += renderer.load(path, Width, Height) ? 1 : 0; // Half a document fails.
            pictures += frame(renderer).isWhole() ? 1 : 0;
        }
        closed = true;
        editor.join();
        QCOMPARE(pictures, loads);
        QVERIFY2(renderer.load(path, Width, Height), errorsOf(renderer));
        QCOMPARE(frame(renderer).count(Green), Width * Height);
    }

    void loadsOfAnySizeSucceed()
    {
        const DocumentFolder folder;
        const QString path = folder.write(QStringLiteral("Dash.qml"), filled("lime"));
        for (const QSize size :
             {QSize(0, 0), QSize(-1, -1), QSize(1, 1), QSize(100'000, 100'000)}) {
            DashboardRenderer renderer;
            QVERIFY(renderer.load(path, size.width(), size.height()));
            QCOMPARE(frame(renderer).count(Green), Width * Height);
        }
    }
};

QTEST_MAIN(DocumentFilesTest)
#include "DocumentFilesTest.moc"
