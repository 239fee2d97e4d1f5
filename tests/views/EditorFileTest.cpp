#include "support/Files.h"
#include "views/EditorBench.h"

#include <QtCore/QElapsedTimer>
#include <QtTest/QtTest>

#include <algorithm>

namespace {

constexpr int Patience = 30'000;

/// An editor whose renderer remembers what it read last, and whose telemetry stands still.
class FollowingBench : public EditorBench
{
public:
    FollowingBench()
    {
        script().duringLoad = [this] {
            seen = readFile(model->currentPath());
            ++loads;
        };
        run();
        timer()->stop();
        open(file("/Dash.qml", "first"));
    }

    QByteArray seen;
    int loads = 0;

    bool reloadIsDue() const
    {
        const auto timers = model->findChildren<QTimer *>();
        return std::any_of(timers.begin(), timers.end(),
                           [](const QTimer *timer) { return timer->isActive(); });
    }
    void open(const QString &path)
    {
        model->setPath(path);
        loads = 0;
        takeCalls();
    }
    /// As many editors save: the old file stays whole until the new one takes its name.
    static void replaceFile(const QString &path, const QByteArray &content)
    {
        writeFile(path + ".new"_q, content);
        if (!moveFile(path + ".new"_q, path, true))
            qFatal("can't rename %s", qUtf8Printable(path));
    }
};

} // namespace

class EditorFileTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aChangedFileIsLoadedAndPublishedTo()
    {
        FollowingBench bench;
        const QSignalSpy pathChanges(bench.model.get(), &DashboardEditorVM::pathChanged);
        const QSignalSpy changes(bench.model.get(), &DashboardEditorVM::previewChanged);
        const QString path = bench.model->currentPath();
        writeFile(path, "second");
        QTRY_COMPARE_WITH_TIMEOUT(bench.seen, QByteArray("second"), Patience);
        QCOMPARE(bench.takeCalls().mid(0, 2),
                 QStringList({"load "_q + path + " 480x272"_q, "publish"_q}));
        QVERIFY(changes.count() >= 1);
        QVERIFY(pathChanges.isEmpty());
    }

    void aReplacedFileIsFollowedAgainAndAgain_data()
    {
        QTest::addColumn<bool>("held");
        QTest::newRow("nobody holds the old one open") << false;
        QTest::newRow("somebody holds the old one open") << true;
    }
    void aReplacedFileIsFollowedAgainAndAgain()
    {
        QFETCH(bool, held);
        if (held)
            NEEDS_POSIX();
        FollowingBench bench;
        const QString path = bench.model->currentPath();
        QFile old(path);
        QVERIFY(!held || old.open(QIODevice::ReadOnly));
        for (const char *content : {"second", "third", "fourth"}) {
            FollowingBench::replaceFile(path, content);
            QTRY_COMPARE_WITH_TIMEOUT(bench.seen, QByteArray(content), Patience);
        }
        writeFile(path, "written in place");
        QTRY_COMPARE_WITH_TIMEOUT(bench.seen, QByteArray("written in place"), Patience);
        bench.model->openCode();
        QCOMPARE(bench.navigation.shown.size(), 1U);
    }

    void aDeletedFileIsMissedAndAwaited()
    {
        FollowingBench bench;
        const QString path = bench.model->currentPath();
        QVERIFY(QFile::remove(path));
        QTRY_COMPARE_WITH_TIMEOUT(bench.loads, 1, Patience);
        QCOMPARE(bench.seen, QByteArray());
        writeFile(path, "back");
        QTRY_COMPARE_WITH_TIMEOUT(bench.seen, QByteArray("back"), Patience);
        writeFile(path, "and changed");
        QTRY_COMPARE_WITH_TIMEOUT(bench.seen, QByteArray("and changed"), Patience);
    }

    void aMissingFileIsAwaited()
    {
        FollowingBench bench;
        const QString path = bench.home.path("/not/yet/Dash.qml");
        bench.open(path);
        bench.model->openCode();
        QVERIFY(bench.navigation.shown.empty());
        QVERIFY(!bench.reloadIsDue()); // Nobody asks the disk meanwhile.
        writeFile(path, "there");
        QTRY_COMPARE_WITH_TIMEOUT(bench.seen, QByteArray("there"), Patience);
    }

    void onlyTheChosenFileIsFollowed()
    {
        FollowingBench bench;
        const QString first = bench.model->currentPath();
        const QString second = bench.file("/Second.qml", "a");
        writeFile(first, "changed before the other was chosen");
        QTRY_VERIFY_WITH_TIMEOUT(bench.reloadIsDue(), Patience);
        bench.open(second);
        QVERIFY(!bench.reloadIsDue());
        writeFile(first, "changed after");
        QVERIFY(QFile::remove(first));
        writeFile(second, "b");
        QTRY_COMPARE_WITH_TIMEOUT(bench.seen, QByteArray("b"), Patience);
        QVERIFY(bench.script().calls.filter(first).isEmpty());
    }

    void aDirectoryIsLoadedAndNotFollowed()
    {
        FollowingBench bench;
        const QString folder = bench.home.path("/tmp");
        bench.open(folder);
        bench.model->openCode();
        QVERIFY(bench.navigation.shown.empty());
        writeFile(folder + "/New.qml"_q, "x");
        const QString file = bench.file("/Next.qml", "a");
        bench.open(file);
        writeFile(file, "b");
        QTRY_COMPARE_WITH_TIMEOUT(bench.seen, QByteArray("b"), Patience);
        QVERIFY(bench.script().calls.filter(folder + " "_q).isEmpty());
    }

    void aBurstOfSavesGivesFewReloadsAndTheLastOne_data()
    {
        QTest::addColumn<bool>("replacing");
        QTest::newRow("in place") << false;
        QTest::newRow("replacing") << true;
    }
    void aBurstOfSavesGivesFewReloadsAndTheLastOne()
    {
        QFETCH(bool, replacing);
        FollowingBench bench;
        const QString path = bench.model->currentPath();
        QElapsedTimer elapsed;
        elapsed.start();
        const auto save = [&](const QByteArray &content) {
            replacing ? FollowingBench::replaceFile(path, content) : writeFile(path, content);
            QCoreApplication::processEvents();
        };
        // What is saved without end is shown all the same.
        int saves = 0;
        while ((saves < 1000 || bench.loads < 2) && elapsed.elapsed() < Patience)
            save(QByteArray::number(++saves));
        QVERIFY(bench.loads >= 2);
        save("last");
        QTRY_COMPARE_WITH_TIMEOUT(bench.seen, QByteArray("last"), Patience);
        QVERIFY2(bench.loads <= elapsed.elapsed() / 90 + 2,
                 qPrintable(QString::number(bench.loads)));
    }
};

QTEST_MAIN(EditorFileTest)
#include "EditorFileTest.moc"
