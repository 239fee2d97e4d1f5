#pragma once

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QString>

#include <windows.h>

#include <shlobj.h>

#include <array>

/// The registry below the current user in the hands of a test.
namespace userHive {

constexpr const wchar_t *ShellFolders =
    L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\User Shell Folders";
constexpr const wchar_t *Settings = L"Software\\Orvalentix";

inline std::wstring native(const QString &path)
{
    return QDir::toNativeSeparators(path).toStdWString();
}

/// Names the documents folder below `root`, makes it, and asks the system whether it is that now:
/// rather no test than one among the user's own documents.
inline void setDocuments(HKEY root, const QString &documents)
{
    const std::wstring path = native(documents);
    RegSetKeyValueW(root, ShellFolders, L"Personal", REG_SZ, path.c_str(),
                    static_cast<DWORD>((path.size() + 1) * sizeof(wchar_t)));
    if (!QDir().mkpath(documents))
        qFatal("can't make %s", qUtf8Printable(documents));
}

inline void verifyDocuments(const QString &documents)
{
    std::array<wchar_t, MAX_PATH> folder{};
    const HRESULT status =
        SHGetFolderPathW(nullptr, CSIDL_PERSONAL, nullptr, SHGFP_TYPE_CURRENT, folder.data());
    if (FAILED(status) || native(documents) != folder.data())
        qFatal("the documents folder is '%ls' and not '%s'", folder.data(),
               qUtf8Printable(documents));
}

} // namespace userHive

/// Stands in for the registry below the current user while it lives, in this process only: settings
/// end up in it, and its documents folder is the one given.
class UserHive
{
public:
    explicit UserHive(const QString &documents)
    {
        static int count = 0;
        name = QStringLiteral("Software\\gauge-tests\\%1-%2")
                   .arg(QCoreApplication::applicationPid())
                   .arg(++count)
                   .toStdWString();
        if (RegCreateKeyW(HKEY_CURRENT_USER, name.c_str(), &root) != ERROR_SUCCESS)
            qFatal("can't make a registry key for the test");
        userHive::setDocuments(root, documents);
        RegOverridePredefKey(HKEY_CURRENT_USER, root);
        userHive::verifyDocuments(documents);
    }
    ~UserHive()
    {
        RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
        RegCloseKey(root);
        RegDeleteTreeW(HKEY_CURRENT_USER, name.c_str());
    }
    UserHive(const UserHive &) = delete;
    UserHive &operator=(const UserHive &) = delete;

private:
    std::wstring name;
    HKEY root = nullptr;
};

/// The same for programs that the test starts, which share the one true registry: such tests run
/// one at a time, and only where packaging/windows/wine has made a user for tests.
class SharedUserHive
{
public:
    explicit SharedUserHive(const QString &documents)
    {
        if (RegGetValueW(HKEY_CURRENT_USER, L"Software\\gauge-tests", L"Disposable", RRF_RT_ANY,
                         nullptr, nullptr, nullptr) != ERROR_SUCCESS)
            qFatal("this test would change the user's own registry");
        RegDeleteTreeW(HKEY_CURRENT_USER, userHive::Settings);
        userHive::setDocuments(HKEY_CURRENT_USER, documents);
        userHive::verifyDocuments(documents);
    }
    ~SharedUserHive()
    {
        RegDeleteTreeW(HKEY_CURRENT_USER, userHive::Settings);
        RegDeleteKeyValueW(HKEY_CURRENT_USER, userHive::ShellFolders, L"Personal");
    }
    SharedUserHive(const SharedUserHive &) = delete;
    SharedUserHive &operator=(const SharedUserHive &) = delete;
};
