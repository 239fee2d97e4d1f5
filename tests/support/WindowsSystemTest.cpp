#include "support/Files.h"
#include "support/platform/FileSystem_windows.h"

#include "TemporaryHome.h"
#include "TestFiles.h"

#include <QtTest/QtTest>

#include <vector>
#include <windows.h>

class WindowsSystemTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void longPathsGetThePrefixThatAllowsThem()
    {
        const QString name(244, u'n');
        const std::vector<std::pair<QString, QString>> rows{
            {"C:/"_q + name, R"(C:\)"_q + name},
            {"C:/n"_q + name, R"(\\?\C:\n)"_q + name},
            {"C:/f/./x/../n"_q + name + ". ."_q, R"(\\?\C:\f\n)"_q + name},
            {"//server/share/"_q + name, R"(\\?\UNC\server\share\)"_q + name},
            {"//?/C:/f/"_q + name, R"(\\?\C:\f\)"_q + name},
            {"//./pipe/"_q + name, R"(\\.\pipe\)"_q + name},
            {"C:folder/"_q + name, R"(C:folder\)"_q + name}};
        for (const auto &[path, native] : rows)
            QCOMPARE(QString::fromStdWString(platform::nativePath(path)), native);
    }

    void drivesAndSharesHoldFiles()
    {
        const TemporaryHome home;
        writeFile(home.path("/source/sub/file"), "text");
        for (const QString &folder : // packaging/windows/wine makes the share.
             {"C:/gauge"_q, "//gauge-tests/share/"_q + QString(150, u's') + "/gauge"_q}) {
            QVERIFY(copyDirectory(home.path("/source"), folder));
            QVERIFY(moveFile(folder + "/sub/file"_q, folder + "/file"_q, false));
            QCOMPARE(readFile(folder + "/file"_q), QByteArray("text"));
            QVERIFY(removeTree(folder) && !QFileInfo::exists(folder));
        }
    }

    void libraryAndProgramHaveAVersionAndAnIcon()
    {
        const QString version = "ProductVersion"_q + QChar(0) + QString::fromUtf8(GAUGE_VERSION);
        const QByteArray bytes(reinterpret_cast<const char *>(version.utf16()), version.size() * 2);
        for (const char *const file : {GAUGE64_FILE, GAUGE_HOST}) {
            QVERIFY(readFile(QString::fromUtf8(file)).contains(bytes));
            const HMODULE module = LoadLibraryExA(file, nullptr, LOAD_LIBRARY_AS_DATAFILE);
            QVERIFY(FindResource(module, MAKEINTRESOURCE(1), RT_GROUP_ICON) != nullptr);
            FreeLibrary(module);
        }
    }
};

QTEST_GUILESS_MAIN(WindowsSystemTest)
#include "WindowsSystemTest.moc"
