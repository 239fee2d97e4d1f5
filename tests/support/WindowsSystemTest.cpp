#include "support/Files.h"
#include "support/Paths.h"
#include "support/SettingsGroup.h"
#include "support/platform/FileSystem.h"
#include "support/platform/FileSystem_windows.h"
#include "support/platform/Platform.h"

#include "TemporaryHome.h"
#include "TestFiles.h"

#include <QtTest/QtTest>

#include <array>
#include <vector>
#include <winver.h>

class WindowsSystemTest : public QObject
{
    Q_OBJECT

    static QString halvorin() { return QString::fromStdWString(documentsDataPath(L"Halvorin")); }

    /// A string below the current user, empty where there is none.
    static QString registryText(const wchar_t *key, const wchar_t *name)
    {
        std::array<wchar_t, 200> text{};
        DWORD size = sizeof(text);
        RegGetValueW(HKEY_CURRENT_USER, key, name, RRF_RT_REG_SZ, nullptr, text.data(), &size);
        return QString::fromWCharArray(text.data());
    }

    /// Files go there, are replaced there and leave again, whatever place of the system it is.
    static void useFolder(const QString &folder)
    {
        const TemporaryHome home;
        writeFile(home.path("/source/sub/file"), "text");
        const QString target = folder + "gauge-%1"_q.arg(QCoreApplication::applicationPid());
        QVERIFY(copyDirectory(home.path("/source"), target));
        QCOMPARE(readFile(target + "/sub/file"_q), QByteArray("text"));
        QVERIFY(moveFile(target + "/sub/file"_q, target + "/file"_q, false));
        writeFile(target + "/other"_q, "other");
        QVERIFY(!moveFile(target + "/other"_q, target + "/file"_q, false));
        QVERIFY(moveFile(target + "/other"_q, target + "/file"_q, true));
        QCOMPARE(readFile(target + "/file"_q), QByteArray("other"));
        QVERIFY(removeTree(target));
    }

private Q_SLOTS:
    void settingsAreInTheRegistryBelowTheCurrentUser()
    {
        const TemporaryHome home;
        openSettingsGroup("Dashboard"_q)->setValue("RecentProfile"_q, "Größe 仪表"_q);
        QCOMPARE(registryText(L"Software\\Orvalentix\\Halvorin\\Dashboard", L"RecentProfile"),
                 "Größe 仪表"_q);
        const auto group = openSettingsGroup("Dashboard"_q);
        QCOMPARE(group->value("RecentProfile"_q, {}).toString(), "Größe 仪表"_q);
        group->remove("RecentProfile"_q);
        QCOMPARE(openSettingsGroup("Dashboard"_q)->value("RecentProfile"_q, "none"_q).toString(),
                 "none"_q);
        openSettingsGroup({})->setValue("Plain"_q, "five"_q);
        QCOMPARE(registryText(L"Software\\Orvalentix\\Halvorin", L"Plain"), "five"_q);
    }

    void aMissingDocumentsFolderGivesAPathFromTheRootOfTheDrive()
    {
        const TemporaryHome home;
        QVERIFY(QDir(home.path("/Documents")).removeRecursively());
        QCOMPARE(halvorin(), R"(\Orvalentix\Halvorin)"_q);
    }

    void documentsMayLieAnywhere_data()
    {
        QTest::addColumn<QString>("tail");
        QTest::newRow("umlauts") << "Übergrößen/Eigene Dokumente"_q;
        QTest::newRow("Chinese") << "文档"_q;
        QTest::newRow("long") << QString(120, u'd') + u'/' + QString(60, u'e');
    }

    void documentsMayLieAnywhere()
    {
        QFETCH(QString, tail);
        const TemporaryHome home;
        const QString documents = home.path("/") + tail;
        const UserHive hive(documents);
        QCOMPARE(QDir::fromNativeSeparators(halvorin()), documents + "/Orvalentix/Halvorin"_q);
        const QString folder = halvorin() + "/Dashboards"_q;
        writeFile(folder + "/A/Dash.qml"_q, "Item {}");
        QVERIFY(copyDirectory(folder + "/A"_q, folder + u'/' + QString(90, u'f')));
        QCOMPARE(readFile(folder + u'/' + QString(90, u'f') + "/Dash.qml"_q),
                 QByteArray("Item {}"));
    }

    void drivesAndSharesHoldFiles()
    {
        useFolder("C:/"_q);
        const QString share = "//gauge-tests/share/"_q;
        // Tests have one in the place that packaging/windows/wine makes; on a true Windows it would
        // be looked for on the network.
        QVERIFY2(QFileInfo(share).isDir(), "there is no network");
        useFolder(share);
        useFolder(share + QString(150, u's') + u'/' + QString(120, u's') + u'/');
        QVERIFY(removeTree(share + QString(150, u's')));
    }

    void aPathThatIsLongGetsThePrefixThatAllowsIt_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("native");
        const auto row = [](const char *name, const QString &path, const QString &native) {
            QTest::newRow(name) << path << native;
        };
        const QString name(120, u'n');
        const QString tail = name + u'/' + name;
        const QString nativeTail = name + u'\\' + name;
        const QString drive = QDir::currentPath().left(2);
        row("short", "C:/a/b"_q, R"(C:\a\b)"_q);
        row("247 characters", "C:/"_q + QString(244, u'n'), R"(C:\)"_q + QString(244, u'n'));
        row("248 characters", "C:/"_q + QString(245, u'n'), R"(\\?\C:\)"_q + QString(245, u'n'));
        row("share", "//server/share/"_q + tail, R"(\\?\UNC\server\share\)"_q + nativeTail);
        row("root of the drive", "/folder/"_q + tail,
            R"(\\?\)"_q + drive + R"(\folder\)"_q + nativeTail);
        row("way up", "C:/folder/../"_q + tail + "/./file"_q,
            R"(\\?\C:\)"_q + nativeTail + R"(\file)"_q);
        row("prefix", "//?/C:/"_q + tail, R"(\\?\C:\)"_q + nativeTail);
        row("device", "//./pipe/"_q + tail, R"(\\.\pipe\)"_q + nativeTail);
        row("current folder of a drive", "C:folder/"_q + tail, R"(C:folder\)"_q + nativeTail);
        row("dots and spaces at the end", "C:/folder/"_q + tail + ". ."_q,
            R"(\\?\C:\folder\)"_q + nativeTail);
        row("dot at the end of a folder", "C:/folder./"_q + tail,
            R"(\\?\C:\folder\)"_q + nativeTail);
        row("nothing", {}, {});
    }

    void aPathThatIsLongGetsThePrefixThatAllowsIt()
    {
        QFETCH(QString, path);
        QTEST(QString::fromStdWString(platform::nativePath(path)), "native");
    }

    void aShortNameInALongFolderIsALongPath()
    {
        const TemporaryHome home;
        const QString folder = home.path("/") + QString(200 - home.path("/").size(), u'd');
        QVERIFY(QDir().mkpath(folder));
        const QString before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(folder));
        const QString fits = QString::fromStdWString(platform::nativePath(QString(46, u'n')));
        const QString longer = QString::fromStdWString(platform::nativePath(QString(47, u'n')));
        QVERIFY(QDir::setCurrent(before));
        QCOMPARE(fits, QString(46, u'n'));
        QCOMPARE(longer,
                 R"(\\?\)"_q + QDir::toNativeSeparators(folder) + u'\\' + QString(47, u'n'));
    }

    void aRootIsThereAndStays()
    {
        QCOMPARE(platform::createDirectory("C:/"_q), platform::Creation::Exists);
        QVERIFY(makeDirectory("C:/"_q).exists());
        QVERIFY(!moveFile("C:/"_q, "C:/moved"_q, true));
        QVERIFY(QFileInfo("C:/windows"_q).isDir());
    }

    void namesOfDevicesAndWhatTheSystemDropsAreNoFileNames_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("fits");
        for (const char *const name :
             {"con",     "CON",  "nul.txt",  "Aux.qml", "prn", "com1", "LPT9.x", "conin$",
              "CONOUT$", "com¹", "con .txt", "a.",      "a ",  "...",  "a?",     "a*",
              "<",       ">",    "|",        "a\"b",    "a:b", "a/b",  "a\\b",   "tab\tbed"})
            QTest::newRow(name) << QString::fromUtf8(name) << false;
        for (const char *const name : {"console", "null", "com", "com10", "com0", ".dot", "a.b",
                                       "Größe", "仪表", "a b", "%1", "lpt", "xcon"})
            QTest::newRow(name) << QString::fromUtf8(name) << true;
    }

    void namesOfDevicesAndWhatTheSystemDropsAreNoFileNames()
    {
        QFETCH(QString, name);
        QFETCH(bool, fits);
        QCOMPARE(platform::canHoldFileName(name), fits);
    }

    void filesTellTheirVersionAndHaveAnIcon_data()
    {
        QTest::addColumn<QString>("file");
        QTest::newRow("library") << QString::fromUtf8(GAUGE64_FILE);
        QTest::newRow("program") << QString::fromUtf8(GAUGE_HOST);
    }

    void filesTellTheirVersionAndHaveAnIcon()
    {
        QFETCH(QString, file);
        const std::wstring path = QDir::toNativeSeparators(file).toStdWString();
        std::vector<char> block(GetFileVersionInfoSizeW(path.c_str(), nullptr));
        QVERIFY(
            GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(block.size()), block.data()));
        void *value = nullptr;
        UINT size = 0;
        QVERIFY(VerQueryValueW(block.data(), L"\\StringFileInfo\\040904b0\\ProductVersion", &value,
                               &size));
        QCOMPARE(QString::fromWCharArray(static_cast<const wchar_t *>(value)),
                 QString::fromUtf8(GAUGE_VERSION));
        QVERIFY(VerQueryValueW(block.data(), L"\\", &value, &size));
        const auto *fixed = static_cast<const VS_FIXEDFILEINFO *>(value);
        QCOMPARE("%1.%2.%3"_q.arg(HIWORD(fixed->dwProductVersionMS))
                     .arg(LOWORD(fixed->dwProductVersionMS))
                     .arg(HIWORD(fixed->dwProductVersionLS)),
                 QString::fromUtf8(GAUGE_VERSION));
        const wchar_t *const groupIcon = MAKEINTRESOURCEW(14); // RT_GROUP_ICON has narrow letters.
        const HMODULE module = LoadLibraryExW(path.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
        QVERIFY(module != nullptr);
        QVERIFY(FindResourceW(module, MAKEINTRESOURCEW(1), groupIcon) != nullptr);
        FreeLibrary(module);
    }

    void theCoarseClockIsTheSystems()
    {
        const ULONGLONG before = GetTickCount64();
        const std::uint64_t read = platform::systemCounter().tickCount();
        QVERIFY(before <= read && read <= GetTickCount64());
    }
};

QTEST_GUILESS_MAIN(WindowsSystemTest)
#include "WindowsSystemTest.moc"
