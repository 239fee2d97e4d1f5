#include "support/Files.h"

#include "TemporaryHome.h"
#include "TestFiles.h"
#include "support/platform/FileSystem.h"

#include <QtCore/QDateTime>
#include <QtTest/QtTest>

class FilesTest : public QObject
{
    Q_OBJECT

    static QString entries(const QString &path)
    {
        const auto kinds = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
        return QDir(path).entryList(kinds).join(u' ');
    }

private Q_SLOTS:
    void aCopyHoldsAllFilesWithTheirAttributesAndNoEmptyDirectories()
    {
        const TemporaryHome home;
        const QString source = home.path("/source");
        const QString target = home.path("/target");
        QVERIFY(!copyDirectory(source, target));
        QDir().mkpath(source + "/empty"_q);
        QVERIFY(copyDirectory(source, target) && !QFileInfo::exists(target));
        QFile file(source + "/.hidden/file"_q);
        writeFile(file.fileName(), QByteArray(300'000, 'x'));
        writeFile(target + "/.hidden/file"_q, QByteArray(400'000, 'y'));
        const QDateTime then = QDateTime::fromSecsSinceEpoch(1'000'000'000);
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(then, QFileDevice::FileModificationTime));
        file.close();
        QVERIFY(file.setPermissions(QFile::ReadOwner | QFile::ExeOwner));
        QVERIFY(copyDirectory(source, target));
        QCOMPARE(entries(target), ".hidden"_q);
        QCOMPARE(readFile(target + "/.hidden/file"_q), QByteArray(300'000, 'x'));
        QVERIFY(copyDirectory(source, home.path("/fresh")));
        const QFileInfo copy(home.path("/fresh/.hidden/file"));
        QCOMPARE(copy.lastModified(), then);
        QCOMPARE(copy.permissions(), QFile::permissions(file.fileName()));
    }

    void aMoveReplacesOnlyWhenAskedAndOnOtherVolumesToo()
    {
        const TemporaryHome home;
        const QString target = home.path("/folder/target");
        for (const QString &parent : {home.path(), folderOnOtherVolume(home.path())}) {
            if (parent.isEmpty())
                QSKIP("there is one volume only", );
            const QTemporaryDir away(parent + "/gauge-XXXXXX"_q);
            const QString source = away.filePath("source"_q);
            writeFile(source, QByteArray(100'000, 'n'));
            writeFile(target, "old");
            QVERIFY(!moveFile(source, target, false));
            QVERIFY(!moveFile(source, home.path("/missing/target"), true));
#ifndef Q_OS_WIN
            if (parent != home.path()) {
                const FullDisk disk(70'000);
                QVERIFY(!moveFile(source, target, true));
            }
#endif
            QCOMPARE(entries(home.path("/folder")), "target"_q);
            QCOMPARE(readFile(target), QByteArray("old"));
            QVERIFY(moveFile(source, target, true));
            QCOMPARE(readFile(target).size(), 100'000);
            QVERIFY(!QFileInfo::exists(source) && !moveFile(source, target, true));
        }
    }

    void aTemporaryNameIsFreshAndIsNoFile()
    {
        const TemporaryHome home;
        const QString name = temporaryFileName();
        QVERIFY(name.startsWith(home.path("/tmp/")) && !QFileInfo::exists(name));
        writeFile(home.path("/tmp/gauge64-temporary-7fffffff.AbCdEf.lock"), "of a killed process");
        writeFile(name, "in use");
        QVERIFY(temporaryFileName() != name);
        QCOMPARE(home.path("/tmp/") + entries(home.path("/tmp")), name);
    }

    void aDirectoryHasOneHolderAtATime()
    {
        const TemporaryHome home;
        auto hold = platform::DirectoryHold::take(home.path());
        QVERIFY(hold && hold->isExclusive() && !platform::DirectoryHold::take(home.path()));
        hold.reset();
        QVERIFY(platform::DirectoryHold::take(home.path()));
    }

#ifndef Q_OS_WIN // Wine has neither links nor pipes among files.
    void linksAndPipesAreNotTakenForFiles()
    {
        const TemporaryHome home;
        const QString source = home.path("/source");
        const QString file = home.path("/elsewhere/file");
        writeFile(file, "text");
        QDir().mkpath(source);
        QFile::link(home.path("/elsewhere"), source + "/linked"_q);
        QFile::link(file, source + "/linkedFile"_q);
        QVERIFY(copyDirectory(source, home.path("/target")));
        QCOMPARE(entries(home.path("/target")), "linkedFile"_q);
        QVERIFY(!QFileInfo(home.path("/target/linkedFile")).isSymLink());
        QVERIFY(!platform::copyFile(file, source + "/linkedFile"_q));
        QCOMPARE(readFile(file), QByteArray("text"));
        QVERIFY(QFile::remove(file) && makePipe(file));
        QVERIFY(!copyDirectory(source, home.path("/target")));
    }
#endif
};

QTEST_GUILESS_MAIN(FilesTest)
#include "FilesTest.moc"
