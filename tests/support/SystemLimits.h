#pragma once

#include <QtCore/QFile>
#include <QtCore/QString>

#ifdef Q_OS_UNIX

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

/// While it lives a file takes so many bytes and no more, as on a disk that is full.
class FullDisk
{
public:
    explicit FullDisk(rlim_t bytes)
        : handler(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit limit{bytes, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, handler);
    }
    FullDisk(const FullDisk &) = delete;
    FullDisk &operator=(const FullDisk &) = delete;

private:
    void (*handler)(int);
    rlimit before{};
};

/// While it lives permissions count, also in a test that the superuser runs.
class Unprivileged
{
public:
    Unprivileged()
        : before(geteuid())
    {
        if (before == 0 && seteuid(65534) != 0)
            qFatal("can't become nobody");
    }
    ~Unprivileged()
    {
        if (before == 0 && seteuid(0) != 0)
            qFatal("can't become root again");
    }
    Unprivileged(const Unprivileged &) = delete;
    Unprivileged &operator=(const Unprivileged &) = delete;

private:
    uid_t before;
};

/// A folder for the test on another volume than `path`, or an empty text where there is none.
inline QString folderOnOtherVolume(const QString &path)
{
    struct stat here
    {
    }, there{};
    const char *const candidate = "/dev/shm";
    const bool other = stat(QFile::encodeName(path).constData(), &here) == 0 &&
                       stat(candidate, &there) == 0 && here.st_dev != there.st_dev &&
                       access(candidate, W_OK) == 0;
    return other ? QString::fromLatin1(candidate) : QString();
}

/// Makes a pipe that has a name in the file system.
inline bool makePipe(const QString &path)
{
    return mkfifo(QFile::encodeName(path).constData(), 0600) == 0;
}

/// Begins a test of what only one system has. The list of one-sided tests tells the reason.
#define NEEDS_POSIX() static_cast<void>(0)

#else

#include <QtCore/QFileInfo>

/// Windows has no limit on the size of files for one process.
struct FullDisk
{
    explicit FullDisk(qint64 /*bytes*/) { qFatal("the test needs NEEDS_POSIX()"); }
};

/// Windows asks access lists in place of permissions, and Wine keeps none.
struct Unprivileged
{
    Unprivileged() { qFatal("the test needs NEEDS_POSIX()"); }
};

/// A folder for the test on another volume than `path`, or an empty text where there is none. Under
/// Wine the memory disk is one.
inline QString folderOnOtherVolume(const QString & /*path*/)
{
    const QString candidate = QStringLiteral("Z:/dev/shm");
    return QFileInfo(candidate).isWritable() ? candidate : QString();
}

/// Pipes have a file system of their own here.
inline bool makePipe(const QString & /*path*/)
{
    qFatal("the test needs NEEDS_POSIX()");
}

#define NEEDS_POSIX() QSKIP("one-sided: POSIX", )

#endif
