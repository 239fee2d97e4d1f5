#include "support/Files.h"

#include "TemporaryHome.h"
#include "TestFiles.h"
#include "support/platform/FileSystem.h"

#include <QtCore/QDateTime>
#include <QtTest/QtTest>

#include <atomic>
#include <thread>
#include <vector>

class FilesTest : public QObject
{
    Q_OBJECT

    static QStringList entries(const QString &path)
    {
        return QDir(path).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

private Q_SLOTS:
    void aCopyHoldsAllFilesAndNoEmptyDirectories()
    {
        const TemporaryHome home;
        const QString source = home.path("/source");
        const QByteArray big(300'000, 'x');
        writeFile(home.path("/source/big"), big);
        writeFile(home.path("/source/.hidden/.file"), "hidden");
        QDir().mkpath(home.path("/source/empty"));
        writeFile(home.path("/target/big"), QByteArray(400'000, 'y'));

        QVERIFY(copyDirectory(source, home.path("/target")));
        QCOMPARE(readFile(home.path("/target/big")), big);
        QCOMPARE(readFile(home.path("/target/.hidden/.file")), QByteArray("hidden"));
        QCOMPARE(entries(home.path("/target")), (QStringList{".hidden"_q, "big"_q}));
    }

    void pathsOfAnyKindAreTaken_data()
    {
        QTest::addColumn<QString>("folder");
        QTest::addColumn<int>("length");
        QTest::newRow("umlauts") << "Größe/Ölstand"_q << 0;
        QTest::newRow("Chinese") << "仪表盘/仪表"_q << 0;
        QTest::newRow("beyond the basic plane") << "🏎/🏁 1"_q << 0;
        QTest::newRow("250 characters") << "a"_q << 250;
        QTest::newRow("259 characters") << "a"_q << 259;
        QTest::newRow("260 characters") << "a"_q << 260;
        QTest::newRow("300 characters") << "ä"_q << 300;
    }

    void pathsOfAnyKindAreTaken()
    {
        QFETCH(QString, folder);
        QFETCH(int, length);
        const TemporaryHome home;
        writeFile(home.path("/source/sub/file"), "text");
        QString target = home.path("/") + folder;
        while (target.size() < length - 9) // "/sub/file" makes it as long as it shall be.
            target += target.size() % 60 == 59 && target.size() < length - 11 ? u'/' : u'x';

        QVERIFY(copyDirectory(home.path("/source"), target));
        const QString file = target + "/sub/file"_q;
        QVERIFY(length == 0 || file.size() == length);
        QCOMPARE(readFile(file), QByteArray("text"));
        writeFile(home.path("/other"), "other");
        QVERIFY(!moveFile(home.path("/other"), file, false));
        QVERIFY(moveFile(home.path("/other"), file, true));
        QCOMPARE(readFile(file), QByteArray("other"));
        QCOMPARE(platform::createDirectory(target + "/new"_q), platform::Creation::Made);
        QCOMPARE(platform::createDirectory(target + "/new"_q), platform::Creation::Exists);
        QCOMPARE(platform::placeDirectory(target + "/sub"_q, target + "/new"_q),
                 platform::Placement::Placed);
        QCOMPARE(platform::placeDirectory(home.path("/source"), target + "/new"_q),
                 platform::Placement::Taken);
        QVERIFY(platform::DirectoryHold::take(target));
        QVERIFY(removeTree(target));
        QVERIFY(!QFileInfo::exists(target));
    }

    void aCopyFollowsLinksToFilesOnly()
    {
        NEEDS_POSIX();
        const TemporaryHome home;
        writeFile(home.path("/elsewhere/file"), "outside");
        QDir().mkpath(home.path("/source"));
        QFile::link(home.path("/elsewhere"), home.path("/source/linked"));
        QFile::link(home.path("/elsewhere/file"), home.path("/source/linkedFile"));
        QVERIFY(copyDirectory(home.path("/source"), home.path("/target")));
        QCOMPARE(readFile(home.path("/target/linkedFile")), QByteArray("outside"));
        QVERIFY(!QFileInfo(home.path("/target/linkedFile")).isSymLink());
        QCOMPARE(entries(home.path("/target")), QStringList{"linkedFile"_q});
    }

    void aCopyKeepsPermissionsAndTimes()
    {
        const TemporaryHome home;
        const QString source = home.path("/source/file");
        writeFile(source, "text");
        const QDateTime then = QDateTime::fromSecsSinceEpoch(1'000'000'000);
        {
            QFile file(source);
            QVERIFY(file.open(QIODevice::ReadWrite));
            QVERIFY(file.setFileTime(then, QFileDevice::FileModificationTime));
        }
        QVERIFY(QFile::setPermissions(source, QFile::ReadOwner | QFile::ExeOwner));
        QVERIFY(copyDirectory(home.path("/source"), home.path("/target")));
        const QFileInfo copy(home.path("/target/file"));
        QCOMPARE(copy.lastModified(), then);
        QCOMPARE(copy.permissions(), QFileInfo(source).permissions());
    }

    void aCopyOfNothingSucceedsAndOfAMissingDirectoryFails()
    {
        const TemporaryHome home;
        QDir().mkpath(home.path("/empty"));
        QVERIFY(copyDirectory(home.path("/empty"), home.path("/target")));
        QVERIFY(!QFileInfo::exists(home.path("/target")));
        QVERIFY(!copyDirectory(home.path("/missing"), home.path("/target")));
    }

    void aCopyFailsWhereItCannotReadOrWrite()
    {
        NEEDS_POSIX();
        const Unprivileged user;
        const TemporaryHome home;
        writeFile(home.path("/source/sub/file"), QByteArray(5000, 'x'));
        writeFile(home.path("/blocked/sub"), "a file in the parent's place");
        QVERIFY(!copyDirectory(home.path("/source"), home.path("/blocked")));
        {
            const FullDisk disk(1000);
            QVERIFY(!copyDirectory(home.path("/source"), home.path("/full")));
        }
        QVERIFY(copyDirectory(home.path("/source"), home.path("/full")));
        QFile::setPermissions(home.path("/source/sub/file"), {});
        QVERIFY(!copyDirectory(home.path("/source"), home.path("/unread")));
    }

    void aPipeBehindALinkIsNoFileToCopy()
    {
        NEEDS_POSIX();
        const TemporaryHome home;
        QDir().mkpath(home.path("/source"));
        QVERIFY(makePipe(home.path("/pipe")));
        QFile::link(home.path("/pipe"), home.path("/source/link"));
        QVERIFY(!copyDirectory(home.path("/source"), home.path("/target")));
    }

    void aFileIsNotCopiedOntoItself()
    {
        NEEDS_POSIX();
        const TemporaryHome home;
        writeFile(home.path("/file"), "kept");
        QFile::link(home.path("/file"), home.path("/alias"));
        QVERIFY(!platform::copyFile(home.path("/file"), home.path("/alias")));
        QCOMPARE(readFile(home.path("/file")), QByteArray("kept"));
    }

    void aMoveReplacesOnlyWhenAsked_data()
    {
        QTest::addColumn<bool>("otherVolume");
        QTest::newRow("one volume") << false;
        QTest::newRow("two volumes") << true;
    }

    void aMoveReplacesOnlyWhenAsked()
    {
        QFETCH(bool, otherVolume);
        const TemporaryHome home;
        const QString other = folderOnOtherVolume(home.path());
        if (otherVolume && other.isEmpty())
            QSKIP("there is one volume only", );
        const QTemporaryDir away(other + "/gauge-XXXXXX"_q);
        const QString source = otherVolume ? away.filePath("source"_q) : home.path("/source");
        const QString target = home.path("/folder/target");
        writeFile(source, "new");
        writeFile(target, "old");

        QVERIFY(!moveFile(source, target, false));
        QCOMPARE(readFile(source), QByteArray("new"));
        QCOMPARE(readFile(target), QByteArray("old"));
        QVERIFY(moveFile(source, target, true));
        QVERIFY(!QFileInfo::exists(source));
        QCOMPARE(readFile(target), QByteArray("new"));
        writeFile(source, "newer");
        QVERIFY(moveFile(source, home.path("/folder/free"), false));
        QVERIFY(!moveFile(source, target, true));
        QVERIFY(!moveFile(target, home.path("/missing/target"), true));
        QCOMPARE(entries(home.path("/folder")), (QStringList{"free"_q, "target"_q}));
    }

    void aFullDiskLeavesBothFilesOfAMoveAlone()
    {
        NEEDS_POSIX();
        const TemporaryHome home;
        const QString other = folderOnOtherVolume(home.path());
        if (other.isEmpty())
            QSKIP("there is one volume only", );
        const QTemporaryDir away(other + "/gauge-XXXXXX"_q);
        const QByteArray content(100'000, 'n');
        writeFile(away.filePath("source"_q), content);
        writeFile(home.path("/folder/target"), "old");
        {
            const FullDisk disk(70'000);
            QVERIFY(!moveFile(away.filePath("source"_q), home.path("/folder/target"), true));
        }
        QCOMPARE(readFile(away.filePath("source"_q)), content);
        QCOMPARE(readFile(home.path("/folder/target")), QByteArray("old"));
        QCOMPARE(entries(home.path("/folder")), (QStringList{"target"_q}));
    }

    void ofManyMovesToOneNameOneWins()
    {
        const TemporaryHome home;
        for (int round = 0; round < 50; ++round) {
            const QString target = home.path("/target") + QString::number(round);
            std::atomic<int> winners = 0;
            std::vector<std::thread> threads;
            for (int i = 0; i < 4; ++i) {
                const QString source = home.path("/source") + QString::number(i);
                writeFile(source, "x");
                threads.emplace_back([&winners, source, target] {
                    winners += moveFile(source, target, false) ? 1 : 0;
                });
            }
            for (std::thread &thread : threads)
                thread.join();
            QCOMPARE(winners.load(), 1);
        }
    }

    void aMadeDirectoryHasItsParentsAndTellsWhetherItExists()
    {
        const TemporaryHome home;
        const QDir made = makeDirectory(home.path("/a/b/c"));
        QVERIFY(made.exists());
        QCOMPARE(made.path(), home.path("/a/b/c"));
        writeFile(home.path("/file"), "");
        const QDir failed = makeDirectory(home.path("/file/sub"));
        QCOMPARE(failed.path(), home.path("/file/sub"));
        QVERIFY(!failed.exists());
    }

    void aTemporaryNameIsFreshAndIsNoFile()
    {
        const TemporaryHome home;
        const QString name = temporaryFileName();
        QVERIFY(name.startsWith(home.path("/tmp/")));
        QVERIFY(!QFileInfo::exists(name));
        QVERIFY(temporaryFileName() != name);
        const QString left = home.path("/tmp/gauge64-temporary-7fffffff.AbCdEf.lock");
        writeFile(left, "by a process that was killed");
        writeFile(name, "in use");
        temporaryFileName();
        QVERIFY(!QFileInfo::exists(left));
        QVERIFY(QFileInfo::exists(name));
        QVERIFY(QDir(home.path("/tmp")).removeRecursively());
        QVERIFY(!QFileInfo::exists(temporaryFileName()));
    }

    void aHoldEndsWithItsHolder()
    {
        const TemporaryHome home;
        auto hold = platform::DirectoryHold::take(home.path());
        QVERIFY(hold);
        QVERIFY(hold->isExclusive());
        QVERIFY(!platform::DirectoryHold::take(home.path()));
        hold.reset();
        QVERIFY(platform::DirectoryHold::take(home.path()));
        QVERIFY(!platform::DirectoryHold::take(home.path("/missing")));
    }
};

QTEST_GUILESS_MAIN(FilesTest)
#include "FilesTest.moc"
