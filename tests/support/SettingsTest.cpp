#include "support/IniFile.h"
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

        auto group = openSettingsGroup("Dashboard"_q);
        QCOMPARE(group->value("RecentProfile"_q, "none"_q).toString(), "Classic"_q);
        QCOMPARE(group->value("Missing"_q, "none"_q).toString(), "none"_q);
        group->remove("RecentProfile"_q);
        group.reset();
        QCOMPARE(openSettingsGroup("Dashboard"_q)->value("RecentProfile"_q, "none"_q).toString(),
                 "none"_q);
    }

    void textsAreSpeltAsQSettingsSpellsThem()
    {
        NEEDS_POSIX();
        const QTemporaryDir folder;
        const QStringList texts{""_q,
                                " @a"_q,
                                "@"_q,
                                "@Variant(1)"_q,
                                "@(x)"_q,
                                "a;b,c=d"_q,
                                " ä仪😀1f g "_q,
                                "\x01"
                                "7\x7f\n\r\t\v\"'?\\"_q,
                                "@a\0"
                                "7"_q};
        const QStringList groups{"General"_q, "general"_q, "a_b-c.d %[]"_q, "仪 ü😀\\=;"_q};
        IniFile own;
        QSettings settings(folder.filePath("a.ini"_q), QSettings::IniFormat);
        for (const QString &group : groups) {
            for (int i = 0; i < texts.size(); ++i) {
                const QString key = "%1/Key.%2"_q.arg(group).arg(i);
                own.setText(key, texts[i]);
                settings.setValue(key, texts[i]);
            }
        }
        settings.sync();
        const QByteArray stored = readFile(settings.fileName());
        QCOMPARE(own.toBytes(), stored);
        const IniFile read(stored);
        for (int i = 0; i < texts.size(); ++i)
            QCOMPARE(read.text("%1/Key.%2"_q.arg(groups.last()).arg(i)).value_or("-"_q), texts[i]);
    }

    void whatIsNoTextIsLeftAsItStands()
    {
        NEEDS_POSIX();
        const TemporaryHome home;
        const QString path = home.path("/config/Orvalentix/Halvorin.conf");
        const QByteArray others = "\n[Window]\nList=a, b\nPlace=@ByteArray(\\0\\x7f)\n"
                                  "State=\\200100Variant(\\0\\0\\0\\t\\x7f\\xff\\xff\\xff)\n";
        writeFile(path, "[Dashboard]\nRecentProfile=One\n" + others);
        QCOMPARE(openSettingsGroup("Window"_q)->value("State"_q, "none"_q).toString(), "none"_q);
        openSettingsGroup("Dashboard"_q)->setValue("RecentProfile"_q, "Two"_q);
        QCOMPARE(readFile(path), "[Dashboard]\nRecentProfile=Two\n" + others);
    }

    void aPipeInTheFilesPlaceIsNotWaitedFor()
    {
        NEEDS_POSIX();
        const TemporaryHome home;
        QDir().mkpath(home.path("/config/Orvalentix"));
        QVERIFY(makePipe(home.path("/config/Orvalentix/Halvorin.conf")));
        QVERIFY(makePipe(home.path("/config/Orvalentix/Halvorin.conf.lock")));
        openSettingsGroup("Dashboard"_q)->setValue("RecentProfile"_q, "One"_q);
        QCOMPARE(openSettingsGroup("Dashboard"_q)->value("RecentProfile"_q, {}).toString(),
                 "One"_q);
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
