#include "support/platform/FileSystem_windows.h"
#include "support/platform/FileSystem.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <array>
#include <atomic>
#include <utility>

#include <windows.h>

#include <shlobj.h>

namespace platform {

namespace {

/// Absolute, without `.`, `..` and the dots and spaces that the system drops at the end of names.
/// Empty on failure.
QString fullPath(const QString &native)
{
    const std::wstring given = native.toStdWString();
    std::wstring full(GetFullPathNameW(given.c_str(), 0, nullptr, nullptr), L'\0');
    const DWORD length =
        GetFullPathNameW(given.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
    return length < full.size() ? QString::fromWCharArray(full.data(), static_cast<int>(length))
                                : QString();
}

/// True for `C:name`.
bool isRelativeToDrive(const QString &native)
{
    return native.size() > 1 && native.at(1) == QLatin1Char(':') &&
           (native.size() == 2 || native.at(2) != QLatin1Char('\\'));
}

/// Whether a device has this name, with whatever suffix: no file may have it.
bool isDeviceName(const QString &name)
{
    static const QStringList plain{QStringLiteral("CON"),    QStringLiteral("PRN"),
                                   QStringLiteral("AUX"),    QStringLiteral("NUL"),
                                   QStringLiteral("CONIN$"), QStringLiteral("CONOUT$")};
    // Superscript digits count as well.
    static const QString digits = QStringLiteral("123456789\u00B9\u00B2\u00B3");
    const QString stem = name.section(QLatin1Char('.'), 0, 0).trimmed().toUpper();
    if (plain.contains(stem))
        return true;
    const bool port =
        stem.startsWith(QLatin1String("COM")) || stem.startsWith(QLatin1String("LPT"));
    return port && stem.size() == 4 && digits.contains(stem.at(3));
}

constexpr const char *StagedMove = ".moving.";

/// A file that is being moved has its process's number in its name.
void removeAbandonedMoves(const QString &folder)
{
    const QStringList names = QDir(folder).entryList({QLatin1String(StagedMove) + QLatin1Char('*')},
                                                     QDir::Files | QDir::Hidden, QDir::NoSort);
    for (const QString &name : names) {
        const QString process = name.section(QLatin1Char('.'), 2, 2);
        if (!isRunning(process.toULong(nullptr, 16)))
            DeleteFileW(nativePath(folder + QLatin1Char('/') + name).c_str());
    }
}

void flush(const std::wstring &path)
{
    // Others may have it open already: virus scanners look at new files.
    constexpr DWORD All = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const HANDLE file =
        CreateFileW(path.c_str(), GENERIC_WRITE, All, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return;
    FlushFileBuffers(file);
    CloseHandle(file);
}

/// Moves a file from another volume. The old target stays until the new one is on disk.
bool moveAcrossVolumes(const QString &source, const QString &target, DWORD flags)
{
    static std::atomic<unsigned> count = 0;
    const QString folder = QFileInfo(target).path();
    removeAbandonedMoves(folder);
    const std::wstring staged = nativePath(folder + QLatin1Char('/') + QLatin1String(StagedMove) +
                                           QString::number(GetCurrentProcessId(), 16) +
                                           QLatin1Char('.') + QString::number(++count));
    if (CopyFileW(nativePath(source).c_str(), staged.c_str(), FALSE) == 0) {
        DeleteFileW(staged.c_str());
        return false;
    }
    flush(staged);
    if (MoveFileExW(staged.c_str(), nativePath(target).c_str(), flags) == 0) {
        DeleteFileW(staged.c_str());
        return false;
    }
    DeleteFileW(nativePath(source).c_str());
    return true;
}

} // namespace

std::wstring nativePath(const QString &path)
{
    // A directory must leave room for a short file name.
    constexpr int LongestPlain = MAX_PATH - 12;
    const QString native = QDir::toNativeSeparators(path);
    if (native.startsWith(QLatin1String("\\\\?\\")) || isRelativeToDrive(native))
        return native.toStdWString();
    // On older systems `folder\NUL` is the device, too.
    const QString full = fullPath(native);
    const bool fits = native.size() < LongestPlain && full.size() < LongestPlain;
    if (fits || full.isEmpty() || full.startsWith(QLatin1String("\\\\.\\")))
        return native.toStdWString();
    if (full.startsWith(QLatin1String("\\\\")))
        return (QLatin1String("\\\\?\\UNC") + full.mid(1)).toStdWString();
    return (QLatin1String("\\\\?\\") + full).toStdWString();
}

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
    // The system silently drops dots and spaces at the end.
    return !name.endsWith(QLatin1Char('.')) && !name.endsWith(QLatin1Char(' ')) &&
           !isDeviceName(name);
}

bool isHiddenName(const QString & /*name*/)
{
    return false; // Windows hides by an attribute.
}

bool canReadDirectory(const QString &directory)
{
    WIN32_FIND_DATAW first;
    const HANDLE search =
        FindFirstFileW(nativePath(directory + QLatin1String("/*")).c_str(), &first);
    if (search == INVALID_HANDLE_VALUE)
        return GetLastError() == ERROR_FILE_NOT_FOUND; // The root of an empty drive
    FindClose(search);
    return true;
}

void flushDirectory(const QString & /*directory*/)
{
    // The file system's journal does that.
}

bool copyFile(const QString &source, const QString &target)
{
    const std::wstring to = nativePath(target);
    if (CopyFileW(nativePath(source).c_str(), to.c_str(), FALSE) == 0)
        return false;
    flush(to);
    return true;
}

bool moveFile(const QString &source, const QString &target, bool replaceExisting)
{
    const DWORD flags = replaceExisting ? MOVEFILE_REPLACE_EXISTING : 0;
    if (MoveFileExW(nativePath(source).c_str(), nativePath(target).c_str(), flags) != 0)
        return true;
    return GetLastError() == ERROR_NOT_SAME_DEVICE && moveAcrossVolumes(source, target, flags);
}

Creation createDirectory(const QString &path)
{
    if (CreateDirectoryW(nativePath(path).c_str(), nullptr) != 0)
        return Creation::Made;
    return GetLastError() == ERROR_ALREADY_EXISTS ? Creation::Exists : Creation::Failed;
}

Placement placeDirectory(const QString &source, const QString &target)
{
    // No call replaces a directory. Removing takes only an empty one, so nothing gets lost.
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
    // A link to a directory is itself a directory here; its target stays.
    const std::wstring link = nativePath(path);
    return RemoveDirectoryW(link.c_str()) != 0 || DeleteFileW(link.c_str()) != 0;
}

bool isRunning(std::int64_t process)
{
    const HANDLE handle = OpenProcess(SYNCHRONIZE, FALSE, static_cast<DWORD>(process));
    if (handle == nullptr)
        return GetLastError() == ERROR_ACCESS_DENIED;
    const bool running = WaitForSingleObject(handle, 0) == WAIT_TIMEOUT;
    CloseHandle(handle);
    return running;
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
    // A file that is shared with nobody and vanishes with its handle, also when the process is
    // killed.
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
