#include "support/platform/FileSystem.h"

#include <QtCore/QDir>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <array>
#include <utility>

#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>

#include <shlobj.h>

namespace platform {

namespace {

std::wstring nativePath(const QString &path)
{
    return QDir::toNativeSeparators(path).toStdWString();
}

/// Names of devices, which no file may have, whatever its suffix.
bool isDeviceName(const QString &name)
{
    static const QStringList plain{QStringLiteral("CON"), QStringLiteral("PRN"),
                                   QStringLiteral("AUX"), QStringLiteral("NUL")};
    const QString stem = name.section(QLatin1Char('.'), 0, 0).trimmed().toUpper();
    if (plain.contains(stem))
        return true;
    const bool port =
        stem.startsWith(QLatin1String("COM")) || stem.startsWith(QLatin1String("LPT"));
    return port && stem.size() == 4 && stem.at(3) >= QLatin1Char('1') &&
           stem.at(3) <= QLatin1Char('9');
}

} // namespace

std::wstring documentsFolder()
{
    std::array<wchar_t, MAX_PATH> path{};
    const HRESULT status =
        SHGetFolderPathW(nullptr, CSIDL_PERSONAL, nullptr, SHGFP_TYPE_CURRENT, path.data());
    return FAILED(status) ? std::wstring() : std::wstring(path.data());
}

bool canHoldFileName(const QString &name)
{
    static const QString reserved = QStringLiteral("<>:\"/\\|?*");
    for (const QChar character : name) {
        if (character.unicode() < 0x20 || reserved.contains(character))
            return false;
    }
    // The system drops dots and spaces at the end without a word.
    return !name.endsWith(QLatin1Char('.')) && !name.endsWith(QLatin1Char(' ')) &&
           !isDeviceName(name);
}

bool copyFile(const QString &source, const QString &target)
{
    return CopyFileW(nativePath(source).c_str(), nativePath(target).c_str(), FALSE) != 0;
}

bool moveFile(const QString &source, const QString &target, bool replaceExisting)
{
    const DWORD flags = replaceExisting ? MOVEFILE_REPLACE_EXISTING : 0;
    return MoveFileExW(nativePath(source).c_str(), nativePath(target).c_str(), flags) != 0;
}

Creation createDirectory(const QString &path)
{
    if (CreateDirectoryW(nativePath(path).c_str(), nullptr) != 0)
        return Creation::Made;
    return GetLastError() == ERROR_ALREADY_EXISTS ? Creation::Exists : Creation::Failed;
}

Placement placeDirectory(const QString &source, const QString &target)
{
    // No call here replaces a directory; removal takes an empty one only, so nothing gets lost.
    const std::wstring to = nativePath(target);
    if (RemoveDirectoryW(to.c_str()) == 0) {
        const DWORD error = GetLastError();
        if (error == ERROR_DIR_NOT_EMPTY || error == ERROR_DIRECTORY)
            return Placement::Taken;
        if (error != ERROR_FILE_NOT_FOUND)
            return Placement::Failed;
    }
    if (MoveFileExW(nativePath(source).c_str(), to.c_str(), 0) != 0)
        return Placement::Placed;
    const DWORD error = GetLastError();
    const bool taken = error == ERROR_ALREADY_EXISTS || error == ERROR_FILE_EXISTS;
    return taken ? Placement::Taken : Placement::Failed;
}

bool removeLink(const QString &path)
{
    // A link to a directory is itself one here, and goes without what it points at.
    const std::wstring link = nativePath(path);
    return RemoveDirectoryW(link.c_str()) != 0 || DeleteFileW(link.c_str()) != 0;
}

struct DirectoryHold::Native
{
    HANDLE file = INVALID_HANDLE_VALUE;
};

DirectoryHold::DirectoryHold(std::unique_ptr<Native> native)
    : native(std::move(native))
{
}

DirectoryHold::~DirectoryHold()
{
    CloseHandle(native->file);
}

std::unique_ptr<DirectoryHold> DirectoryHold::take(const QString &directory)
{
    // A file that is shared with nobody and goes with its handle, even when the process is killed.
    const std::wstring path = nativePath(directory + QLatin1String("/.held"));
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_ALWAYS,
                                    FILE_ATTRIBUTE_HIDDEN | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return nullptr;
    return std::unique_ptr<DirectoryHold>(
        new DirectoryHold(std::make_unique<Native>(Native{file})));
}

bool DirectoryHold::isExclusive() const
{
    return true;
}

} // namespace platform
