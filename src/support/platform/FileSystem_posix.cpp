#include "support/platform/FileSystem.h"

#include <QtCore/QByteArray>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QStandardPaths>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace platform {

namespace {

class Descriptor
{
public:
    explicit Descriptor(int fd)
        : fd(fd)
    {
    }
    Descriptor(Descriptor &&other) noexcept
        : fd(std::exchange(other.fd, -1))
    {
    }
    ~Descriptor() { close(); }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;
    Descriptor &operator=(Descriptor &&) = delete;

    bool isOpen() const { return fd >= 0; }
    int get() const { return fd; }

    /// Some file systems report a full disk only here.
    bool close() { return fd < 0 || ::close(std::exchange(fd, -1)) == 0; }

private:
    int fd;
};

bool writeAll(int fd, const char *data, std::size_t size)
{
    while (size > 0) {
        const ssize_t written = ::write(fd, data, size);
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        data += written;
        size -= static_cast<std::size_t>(written);
    }
    return true;
}

/// True also on a file system that has no flush.
bool flush(int fd)
{
    return ::fsync(fd) == 0 || errno == EINVAL;
}

bool copyContent(int from, int to)
{
    std::array<char, 65'536> buffer; // NOLINT(*-member-init): filled by every read
    for (;;) {
        const ssize_t count = ::read(from, buffer.data(), buffer.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return count == 0;
        if (!writeAll(to, buffer.data(), static_cast<std::size_t>(count)))
            return false;
    }
}

/// Best effort: a file system without permissions or times can still hold the content.
void copyAttributes(const struct stat &from, int to)
{
    static_cast<void>(::fchmod(to, from.st_mode & 0777));
    const std::array<timespec, 2> times{from.st_atim, from.st_mtim};
    static_cast<void>(::futimens(to, times.data()));
}

/// Opens only a regular file: a link may lead to a pipe, and opening that would wait forever.
Descriptor openSource(const QByteArray &path, struct stat &info)
{
    Descriptor file(::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (file.isOpen() && (::fstat(file.get(), &info) != 0 || !S_ISREG(info.st_mode)))
        file.close();
    return file;
}

/// For file systems that can't rename without replacing.
bool linkAndUnlink(const QByteArray &source, const QByteArray &target)
{
    if (::link(source.constData(), target.constData()) != 0)
        return false;
    if (::unlink(source.constData()) == 0)
        return true;
    ::unlink(target.constData());
    return false;
}

bool renameExclusively(const QByteArray &source, const QByteArray &target)
{
#ifdef RENAME_NOREPLACE
    if (::renameat2(AT_FDCWD, source.constData(), AT_FDCWD, target.constData(), RENAME_NOREPLACE) ==
        0)
        return true;
    if (errno != EINVAL && errno != ENOSYS)
        return false;
#endif
    return linkAndUnlink(source, target);
}

bool renameFile(const QByteArray &source, const QByteArray &target, bool replaceExisting)
{
    if (replaceExisting)
        return ::rename(source.constData(), target.constData()) == 0;
    return renameExclusively(source, target);
}

/// A file that is still being moved is locked; others were left by killed processes.
void removeAbandonedMoves(const QString &folder)
{
    const QStringList names = QDir(folder).entryList({QStringLiteral(".moving.??????")},
                                                     QDir::Files | QDir::Hidden, QDir::NoSort);
    for (const QString &name : names) {
        const QByteArray path = QFile::encodeName(folder + QLatin1Char('/') + name);
        const Descriptor file(
            ::open(path.constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
        if (file.isOpen() && ::flock(file.get(), LOCK_EX | LOCK_NB) == 0)
            ::unlink(path.constData());
    }
}

/// Moves a file from another volume. The old target stays until the new one is on disk.
bool moveAcrossVolumes(const QByteArray &source, const QByteArray &target, bool replaceExisting)
{
    struct stat info
    {
    };
    const Descriptor from = openSource(source, info);
    if (!from.isOpen())
        return false;

    const QString folder = QFileInfo(QFile::decodeName(target)).path();
    removeAbandonedMoves(folder);
    QByteArray staged = QFile::encodeName(folder) + "/.moving.XXXXXX";
    Descriptor to(::mkostemp(staged.data(), O_CLOEXEC));
    if (!to.isOpen())
        return false;
    static_cast<void>(::flock(to.get(), LOCK_EX | LOCK_NB));

    bool ok = copyContent(from.get(), to.get());
    copyAttributes(info, to.get());
    ok = ok && flush(to.get());
    ok = to.close() && ok;
    if (!ok || !renameFile(staged, target, replaceExisting)) {
        ::unlink(staged.constData());
        return false;
    }
    flushDirectory(folder);
    ::unlink(source.constData());
    return true;
}

} // namespace

std::wstring documentsFolder()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    // A relative path would be another folder in each working directory.
    return QDir::isAbsolutePath(folder) ? folder.toStdWString() : std::wstring();
}

bool canHoldFileName(const QString &name)
{
    // A name that the locale's encoding can't express comes back as another one.
    return !name.contains(QChar::Null) && QFile::decodeName(QFile::encodeName(name)) == name;
}

bool isHiddenName(const QString &name)
{
    return name.startsWith(QLatin1Char('.'));
}

bool canReadDirectory(const QString &directory)
{
    // The dot needs the permission to search, too; without it entries have no type.
    const QByteArray path = QFile::encodeName(directory + QLatin1String("/."));
    return Descriptor(::open(path.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)).isOpen();
}

void flushDirectory(const QString &directory)
{
    const QByteArray path = QFile::encodeName(directory);
    const Descriptor opened(::open(path.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (opened.isOpen())
        static_cast<void>(flush(opened.get()));
}

bool copyFile(const QString &source, const QString &target)
{
    struct stat sourceInfo
    {
    };
    const Descriptor from = openSource(QFile::encodeName(source), sourceInfo);
    if (!from.isOpen())
        return false;

    Descriptor to(::open(QFile::encodeName(target).constData(),
                         O_WRONLY | O_CREAT | O_CLOEXEC | O_NONBLOCK, S_IRUSR | S_IWUSR));
    struct stat targetInfo
    {
    };
    if (!to.isOpen() || ::fstat(to.get(), &targetInfo) != 0)
        return false;
    // Truncated only below, since both paths may lead to one file.
    if (sourceInfo.st_dev == targetInfo.st_dev && sourceInfo.st_ino == targetInfo.st_ino)
        return false;
    if (::ftruncate(to.get(), 0) != 0 || !copyContent(from.get(), to.get()))
        return false;
    copyAttributes(sourceInfo, to.get());
    return flush(to.get()) && to.close();
}

bool moveFile(const QString &source, const QString &target, bool replaceExisting)
{
    const QByteArray from = QFile::encodeName(source);
    const QByteArray to = QFile::encodeName(target);
    if (renameFile(from, to, replaceExisting))
        return true;
    return errno == EXDEV && moveAcrossVolumes(from, to, replaceExisting);
}

Creation createDirectory(const QString &path)
{
    if (::mkdir(QFile::encodeName(path).constData(), 0777) == 0)
        return Creation::Made;
    return errno == EEXIST ? Creation::Exists : Creation::Failed;
}

Placement placeDirectory(const QString &source, const QString &target)
{
    // rename(2) replaces an empty directory in a single step.
    const QByteArray from = QFile::encodeName(source);
    const QByteArray to = QFile::encodeName(target);
    if (::rename(from.constData(), to.constData()) == 0)
        return Placement::Placed;
    const bool taken = errno == ENOTEMPTY || errno == EEXIST || errno == ENOTDIR;
    return taken ? Placement::Taken : Placement::Failed;
}

bool removeLink(const QString &path)
{
    return ::unlink(QFile::encodeName(path).constData()) == 0;
}

bool isRunning(std::int64_t process)
{
    return ::kill(static_cast<pid_t>(process), 0) == 0 || errno == EPERM;
}

struct DirectoryHold::Native
{
    Descriptor directory;
    bool exclusive = false;
};

DirectoryHold::DirectoryHold(std::unique_ptr<Native> native)
    : native(std::move(native))
{
}

DirectoryHold::~DirectoryHold() = default;

std::unique_ptr<DirectoryHold> DirectoryHold::take(const QString &directory)
{
    const QByteArray path = QFile::encodeName(directory);
    Descriptor opened(::open(path.constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!opened.isOpen())
        return nullptr;
    const bool exclusive = ::flock(opened.get(), LOCK_EX | LOCK_NB) == 0;
    if (!exclusive && errno == EWOULDBLOCK)
        return nullptr;

    // Its last holder may have removed it between the open and the lock.
    struct stat held
    {
    }, named{};
    if (::fstat(opened.get(), &held) != 0 || ::lstat(path.constData(), &named) != 0 ||
        held.st_dev != named.st_dev || held.st_ino != named.st_ino)
        return nullptr;
    auto native = std::make_unique<Native>(Native{std::move(opened), exclusive});
    return std::unique_ptr<DirectoryHold>(new DirectoryHold(std::move(native)));
}

bool DirectoryHold::isExclusive() const
{
    return native->exclusive;
}

} // namespace platform
