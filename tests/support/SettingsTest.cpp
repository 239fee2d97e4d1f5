#include "support/IniFile.h"
#include "support/Paths.h"
#include "support/SettingsGroup.h"

#include "TemporaryHome.h"
#include "TestFiles.h"

#include <QtTest/QtTest>

class SettingsTest : public QObject
{
    Q_OBJECT

    static QString value() { return openSettingsGroup("A"_q)->value("Key"_q, "none"_q).toString(); }
    static void setValue(const QString &text) { openSettingsGroup("A"_q)->setValue("Key"_q, text); }
    static QString dataPath(const wchar_t *subfolder)
    {
        return QDir::fromNativeSeparators(QString::fromStdWString(documentsDataPath(subfolder)));
    }

private Q_SLOTS:
    void theDataFolderIsUnderTheUsersDocuments()
    {
        const TemporaryHome home;
        QCOMPARE(dataPath(nullptr), home.path("/Documents/Orvalentix"));
        QCOMPARE(dataPath(L""), home.path("/Documents/Orvalentix"));
#ifdef Q_OS_WIN
        QVERIFY(QDir(home.path("/Documents")).removeRecursively());
        QCOMPARE(dataPath(L"Halvorin"), "/Orvalentix/Halvorin"_q);
#else
        writeFile(home.path("/config/user-dirs.dirs"), "XDG_DOCUMENTS_DIR=\"$HOME/Papiere\"\n");
        QCOMPARE(dataPath(L"Halvorin"), home.path("/Papiere/Orvalentix/Halvorin"));
#endif
    }

#ifdef Q_OS_WIN
    void settingsAreInTheRegistryBelowTheCurrentUser()
    {
        const TemporaryHome home;
        setValue("Größe 仪表"_q);
        const QSettings registry(R"(HKEY_CURRENT_USER\Software\Orvalentix\Halvorin\A)"_q,
                                 QSettings::NativeFormat);
        QCOMPARE(registry.value("Key"_q).toString(), "Größe 仪表"_q);
        openSettingsGroup("A"_q)->remove("Key"_q);
        QCOMPARE(value(), "none"_q);
    }
#else
    void whatIsSetIsWrittenAndOtherValuesStayAsTheyAre()
    {
        const TemporaryHome home;
        const QString path = home.path("/config/Orvalentix/Halvorin.conf");
        const QByteArray others = "\n[Window]\nList=a, b\nPlace=@ByteArray(\\0\\x7f)\n"
                                  "State=\\200100Variant(\\0\\0\\0\\t\\x7f\\xff\\xff\\xff)\n";
        writeFile(path, "[A]\nKey=One\n" + others);
        QCOMPARE(openSettingsGroup("Window"_q)->value("State"_q, "none"_q).toString(), "none"_q);
        openSettingsGroup({})->setValue("Plain"_q, 5);
        setValue("Two"_q);
        QCOMPARE(readFile(path), "[General]\nPlain=5\n\n[A]\nKey=Two\n" + others);
        for (const char *const cutOff : {"[A]\nA=\"a", "[A]\nA=a\\"}) {
            writeFile(path, cutOff);
            setValue("Three"_q);
            QCOMPARE(value(), "Three"_q);
        }
    }

    void textsAreWrittenAsQSettingsWritesThem()
    {
        const QTemporaryDir folder;
        QStringList texts = "@ @Variant(1) @(x) a;b a,b a=b"_q.split(u' ');
        texts += {""_q, " @a"_q, "a "_q, " ä仪😀1f g"_q, "\0017\x7f\n\r\t\v\"'?\\"_q, "@a\0007"_q};
        const QStringList groups{"General"_q, "general"_q, "a_b-c.d %[]"_q, "仪 ü😀\\=;"_q};
        IniFile own;
        QSettings settings(folder.filePath("a.ini"_q), QSettings::IniFormat);
        for (const QString &group : groups) {
            for (int i = 0; i < texts.size(); ++i) {
                own.setText("%1/Key.%2"_q.arg(group).arg(i), texts[i]);
                settings.setValue("%1/Key.%2"_q.arg(group).arg(i), texts[i]);
            }
        }
        settings.sync();
        const QByteArray stored = readFile(settings.fileName());
        QCOMPARE(own.toBytes(), stored);
        const IniFile read("; a comment\n" + stored);
        for (const QString &group : {groups.first(), groups.last()}) {
            for (int i = 0; i < texts.size(); ++i)
                QCOMPARE(read.text("%1/Key.%2"_q.arg(group).arg(i)).value_or("none"_q), texts[i]);
        }
    }

    void aLockThatNobodyHoldsIsNotWaitedFor()
    {
        const std::vector<std::pair<QByteArray, int>> rows{
            {"", 0}, {"", -10}, {"1\ngauge-host\nelsewhere\n", 10}, {QByteArray(100, '\xff'), 10}};
        for (const auto &[content, ageSeconds] : rows) {
            const TemporaryHome home;
            QFile lock(home.path("/config/Orvalentix/Halvorin.conf.lock"));
            writeFile(lock.fileName(), content);
            const QDateTime time = QDateTime::currentDateTime().addSecs(-ageSeconds);
            QVERIFY(lock.open(QIODevice::ReadWrite));
            QVERIFY(lock.setFileTime(time, QFileDevice::FileModificationTime));
            QElapsedTimer waiting;
            waiting.start();
            setValue("Two"_q);
            QVERIFY(waiting.elapsed() < 15'000); // Half as long as QSettings would wait.
            QCOMPARE(value(), "Two"_q);
        }
    }

    void pipesAndFilesInTheWayDoNoHarm()
    {
        const TemporaryHome home;
        QDir().mkpath(home.path("/config/Orvalentix"));
        QVERIFY(makePipe(home.path("/config/Orvalentix/Halvorin.conf")));
        QVERIFY(makePipe(home.path("/config/Orvalentix/Halvorin.conf.lock")));
        setValue("One"_q);
        QCOMPARE(value(), "One"_q);
        QVERIFY(QDir(home.path("/config")).removeRecursively());
        writeFile(home.path("/config"), "a file in the folder's place");
        setValue("Two"_q);
        QCOMPARE(readFile(home.path("/config")), QByteArray("a file in the folder's place"));
    }
#endif
};

QTEST_GUILESS_MAIN(SettingsTest)
#include "SettingsTest.moc"
