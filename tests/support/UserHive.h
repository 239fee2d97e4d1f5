#pragma once

#include <QtCore/QDir>
#include <QtCore/QUuid>

#include <windows.h>

#include <shlobj.h>

#include <array>

constexpr const wchar_t *ShellFolders =
    L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\User Shell Folders";

/// Makes `documents` the current user's documents folder, and checks that the system agrees: better
/// no test than one among the user's own documents.
inline void setDocumentsFolder(const QString &documents)
{
    const std::wstring path = QDir::toNativeSeparators(documents).toStdWString();
    RegSetKeyValueW(HKEY_CURRENT_USER, ShellFolders, L"Personal", REG_SZ, path.c_str(),
                    static_cast<DWORD>((path.size() + 1) * sizeof(wchar_t)));
    std::array<wchar_t, MAX_PATH> folder{};
    const bool isMade = QDir().mkpath(documents);
    const HRESULT status =
        SHGetFolderPathW(nullptr, CSIDL_PERSONAL, nullptr, SHGFP_TYPE_CURRENT, folder.data());
    if (!isMade || FAILED(status) || path != folder.data())
        qFatal("the documents folder is '%ls' and not '%s'", folder.data(),
               qUtf8Printable(documents));
}

/// Replaces the current user's registry while it lives, in this process only: settings end up in
/// it, and `documents` is the documents folder.
class UserHive
{
public:
    explicit UserHive(const QString &documents)
    {
        const QString key = QStringLiteral("Software\\gauge-tests\\");
        name = (key + QUuid::createUuid().toString()).toStdWString();
        if (RegCreateKeyW(HKEY_CURRENT_USER, name.c_str(), &root) != ERROR_SUCCESS)
            qFatal("can't make a registry key for the test");
        RegOverridePredefKey(HKEY_CURRENT_USER, root);
        setDocumentsFolder(documents);
    }
    ~UserHive()
    {
        RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
        RegCloseKey(root);
        RegDeleteTreeW(HKEY_CURRENT_USER, name.c_str());
    }
    Q_DISABLE_COPY(UserHive)

private:
    std::wstring name;
    HKEY root = nullptr;
};

/// The same for programs that a test starts. They use the real registry, so such tests run one at a
/// time, and only where packaging/windows/wine has made a user for tests.
class SharedUserHive
{
public:
    explicit SharedUserHive(const QString &documents)
    {
        if (RegGetValueW(HKEY_CURRENT_USER, L"Software\\gauge-tests", L"Disposable", RRF_RT_ANY,
                         nullptr, nullptr, nullptr) != ERROR_SUCCESS)
            qFatal("this test would change the user's own registry");
        RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\Orvalentix");
        setDocumentsFolder(documents);
    }
    ~SharedUserHive()
    {
        RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\Orvalentix");
        RegDeleteKeyValueW(HKEY_CURRENT_USER, ShellFolders, L"Personal");
    }
    Q_DISABLE_COPY(SharedUserHive)
};
