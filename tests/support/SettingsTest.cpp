#include "support/Paths.h"
#include "support/SettingsGroup.h"

#include "TemporaryHome.h"
#include "TestFiles.h"

#include <QtTest/QtTest>

class SettingsTest : public QObject
{
    Q_OBJECT

    static QString shown(const std::wstring &path) { return QString::fromStdWString(path); }

private Q_SLOTS:
    void aLockThatNobodyHoldsCostsLessThanASecond_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<int>("ageSeconds");
        QTest::newRow("empty and new") << QByteArray() << 0;
        QTest::newRow("from the future") << QByteArray() << -10;
        QTest::newRow("another computer's") << QByteArray("1\ngauge-host\nelsewhere\n") << 10;
        QTest::newRow("garbage") << QByteArray(100, '\xff') << 10;
    }

    void aLockThatNobodyHoldsCostsLessThanASecond()
    {
        NEEDS_POSIX();
        QFETCH(QByteArray, content);
        QFETCH(int, ageSeconds);
        const TemporaryHome home;
        const QString lock = home.path("/config/Orvalentix/Halvorin.conf.lock");
        writeFile(lock, content);
        QFile file(lock);
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(QDateTime::currentDateTime().addSecs(-ageSeconds),
                                 QFileDevice::FileModificationTime));
        file.close();
        QElapsedTimer time;
        time.start();
        openSettingsGroup("Dashboard"_q)->setValue("RecentProfile"_q, "Two"_q);
        QVERIFY2(time.elapsed() < 1000, qPrintable(QString::number(time.elapsed())));
        QCOMPARE(openSettingsGroup("Dashboard"_q)->value("RecentProfile"_q, {}).toString(),
                 "Two"_q);
    }

    void theDataFolderIsUnderTheUsersDocuments()
    {
        const TemporaryHome home;
        const QString plain = home.path("/Documents/Orvalentix");
        QCOMPARE(shown(documentsDataPath(nullptr)), QDir::toNativeSeparators(plain));
        QCOMPARE(shown(documentsDataPath(L"")), QDir::toNativeSeparators(plain));
        QCOMPARE(shown(documentsDataPath(L"Halvorin")), QDir::toNativeSeparators(home.data()));
        QVERIFY(!QFileInfo::exists(plain));
    }

    void theUsersOwnChoiceOfADocumentsFolderCounts()
    {
        NEEDS_POSIX();
        const TemporaryHome home;
        writeFile(home.path("/config/user-dirs.dirs"), "XDG_DOCUMENTS_DIR=\"$HOME/Papiere\"\n");
        QCOMPARE(QString::fromStdWString(documentsDataPath(L"Halvorin")),
                 home.path("/Papiere/Orvalentix/Halvorin"));
    }

    void whatWasSetIsOnDiskWhenTheGroupIsGone()
    {
        NEEDS_POSIX();
        const TemporaryHome home;
        openSettingsGroup("Dashboard"_q)->setValue("RecentProfile"_q, "Classic"_q);
        openSettingsGroup({})->setValue("Plain"_q, 5);
        const QByteArray stored = readFile(home.path("/config/Orvalentix/Halvorin.conf"));
        QVERIFY(stored.contains("[Dashboard]\nRecentProfile=Classic\n"));
        QVERIFY(stored.contains("Plain=5\n"));

        const auto group = openSettingsGroup("Dashboard"_q);
        QCOMPARE(group->value("RecentProfile"_q, "none"_q).toString(), "Classic"_q);
        QCOMPARE(group->value("Missing"_q, "none"_q).toString(), "none"_q);
        group->remove("RecentProfile"_q);
        QCOMPARE(openSettingsGroup("Dashboard"_q)->value("RecentProfile"_q, "none"_q).toString(),
                 "none"_q);
    }

    void settingsThatCannotBeWrittenAreNoFault()
    {
        NEEDS_POSIX();
        const TemporaryHome home;
        writeFile(home.path("/config"), "a file in the folder's place");
        openSettingsGroup("Dashboard"_q)->setValue("RecentProfile"_q, "Classic"_q);
        QCOMPARE(readFile(home.path("/config")), QByteArray("a file in the folder's place"));
    }
};

QTEST_GUILESS_MAIN(SettingsTest)
#include "SettingsTest.moc"
