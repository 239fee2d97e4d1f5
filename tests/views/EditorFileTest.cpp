#include "support/Files.h"
#include "views/EditorBench.h"

#include <QtCore/QFileSystemWatcher>
#include <QtTest/QtTest>

namespace {

constexpr int Patience = 30'000;

/// An editor whose renderer remembers what it read last, and whose telemetry stands still.
struct FollowingBench : EditorBench
{
    const QString path = file("/Dash.qml", "first");
    QByteArray seen;

    FollowingBench()
    {
        engine.script.duringLoad = [this] { seen = readFile(model->currentPath()); };
        run();
        timer()->stop();
        open(path);
    }
    void open(const QString &newPath)
    {
        model->setPath(newPath);
        takeCalls();
    }
    bool sees(const QByteArray &content) const
    {
        return QTest::qWaitFor([&] { return seen == content; }, Patience);
    }
    /// As many programs save: the old file stays whole until the new one takes its name.
    void replace(const QByteArray &content) const
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
    void aReplacedFileIsFollowedAgainAndAgain()
    {
        FollowingBench bench;
        QFile old(bench.path);
        for (const char *content : {"second", "third", "fourth"}) {
            bench.replace(content);
            QVERIFY2(bench.sees(content), content);
#ifndef Q_OS_WIN // There a file that is open can't be replaced.
            QVERIFY(old.isOpen() || old.open(QIODevice::ReadOnly));
#endif
        }
        writeFile(bench.path, "written in place");
        QVERIFY(bench.sees("written in place"));
    }

    void aFileIsAwaitedWhereItIsGoneOrNotYetThere()
    {
        FollowingBench bench;
        QVERIFY(QFile::remove(bench.path));
        QVERIFY(bench.sees({}));
        for (const char *content : {"back", "and changed"}) {
            writeFile(bench.path, content);
            QVERIFY2(bench.sees(content), content);
        }
        const QString path = bench.home.path("/not/yet/Dash.qml");
        bench.open(path);
        QVERIFY(!bench.timer(false)->isActive()); // Nobody asks the disk meanwhile.
        writeFile(path, "there");
        QVERIFY(bench.sees("there"));
    }

    void onlyTheChosenFileIsFollowed()
    {
        FollowingBench bench;
        writeFile(bench.path, "changed before the other was chosen");
        QTRY_VERIFY_WITH_TIMEOUT(bench.timer(false)->isActive(), Patience);
        const QString second = bench.file("/Second.qml", "a");
        bench.open(second);
        QVERIFY(!bench.timer(false)->isActive());
        QVERIFY(QFile::remove(bench.path));
        writeFile(second, "b");
        QVERIFY(bench.sees("b"));
        QVERIFY(bench.takeCalls().filter(bench.path).isEmpty());
    }

    void aBurstOfSavesIsOneReloadThatNoSavePutsOff()
    {
        FollowingBench bench;
        QTimer *wait = bench.timer(false);
        wait->setInterval(1000 * Patience); // The test ends it.
        const QSignalSpy heard(bench.model->findChild<QFileSystemWatcher *>(),
                               &QFileSystemWatcher::fileChanged);
        int begun = 0;
        for (int save = 1; save <= 5; ++save) {
            writeFile(bench.path, QByteArray::number(save));
            QTRY_VERIFY_WITH_TIMEOUT(heard.count() >= save, Patience);
            QVERIFY(begun == 0 || begun == wait->timerId());
            begun = wait->timerId();
        }
        QCOMPARE(bench.takeCalls(), QStringList());
        wait->setInterval(0);
        QVERIFY(bench.sees("5"));
        QCOMPARE(bench.engine.script.count("load"_q), 1);
    }
};

QTEST_MAIN(EditorFileTest)
#include "EditorFileTest.moc"
