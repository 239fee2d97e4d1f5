#include "support/Files.h"
#include "views/EditorRig.h"

#include <QtCore/QFileSystemWatcher>
#include <QtTest/QtTest>

namespace {

constexpr int Patience = 30'000;

/// An editor whose renderer remembers what it read last, and whose telemetry stands still.
struct FollowingRig : EditorRig
{
    const QString path = file("/Dash.qml", "first");
    QByteArray seen;

    FollowingRig()
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
        FollowingRig rig;
        QFile old(rig.path);
        for (const char *content : {"second", "third", "fourth"}) {
            rig.replace(content);
            QVERIFY2(rig.sees(content), content);
#ifndef Q_OS_WIN // There a file that is open can't be replaced.
            QVERIFY(old.isOpen() || old.open(QIODevice::ReadOnly));
#endif
        }
        writeFile(rig.path, "written in place");
        QVERIFY(rig.sees("written in place"));
    }

    void aFileIsAwaitedWhereItIsGoneOrNotYetThere()
    {
        FollowingRig rig;
        QVERIFY(QFile::remove(rig.path));
        QVERIFY(rig.sees({}));
        for (const char *content : {"back", "and changed"}) {
            writeFile(rig.path, content);
            QVERIFY2(rig.sees(content), content);
        }
        const QString path = rig.home.path("/not/yet/Dash.qml");
        rig.open(path);
        QVERIFY(!rig.timer(false)->isActive()); // Nobody asks the disk meanwhile.
        writeFile(path, "there");
        QVERIFY(rig.sees("there"));
    }

    void onlyTheChosenFileIsFollowed()
    {
        FollowingRig rig;
        writeFile(rig.path, "changed before the other was chosen");
        QTRY_VERIFY_WITH_TIMEOUT(rig.timer(false)->isActive(), Patience);
        const QString second = rig.file("/Second.qml", "a");
        rig.open(second);
        QVERIFY(!rig.timer(false)->isActive());
        QVERIFY(QFile::remove(rig.path));
        writeFile(second, "b");
        QVERIFY(rig.sees("b"));
        QVERIFY(rig.takeCalls().filter(rig.path).isEmpty());
    }

    void aBurstOfSavesIsOneReloadThatNoSavePutsOff()
    {
        FollowingRig rig;
        QTimer *wait = rig.timer(false);
        wait->setInterval(1000 * Patience); // The test ends it.
        const QSignalSpy heard(rig.model->findChild<QFileSystemWatcher *>(),
                               &QFileSystemWatcher::fileChanged);
        int begun = 0;
        for (int save = 1; save <= 5; ++save) {
            writeFile(rig.path, QByteArray::number(save));
            QTRY_VERIFY_WITH_TIMEOUT(heard.count() >= save, Patience);
            QVERIFY(begun == 0 || begun == wait->timerId());
            begun = wait->timerId();
        }
        QCOMPARE(rig.takeCalls(), QStringList());
        wait->setInterval(0);
        QVERIFY(rig.sees("5"));
        QCOMPARE(rig.engine.script.count("load"_q), 1);
    }
};

QTEST_MAIN(EditorFileTest)
#include "EditorFileTest.moc"
