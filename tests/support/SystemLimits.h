#pragma once

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QStorageInfo>
#include <QtCore/QString>

#ifdef Q_OS_UNIX

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

/// While it lives, no file can grow beyond `bytes`, as on a full disk.
class FullDisk
{
public:
    explicit FullDisk(rlim_t bytes)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit limit{bytes, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() { setrlimit(RLIMIT_FSIZE, &before); }
    Q_DISABLE_COPY(FullDisk)

private:
    rlimit before{};
};

/// While it lives permissions count, even if root runs the test.
class Unprivileged
{
public:
    Unprivileged() { become(65534); }
    ~Unprivileged() { become(0); }
    Q_DISABLE_COPY(Unprivileged)

private:
    void become(uid_t user) const
    {
        if (isRoot && seteuid(user) != 0)
            qFatal("can't change the user");
    }
    const bool isRoot = geteuid() == 0;
};

inline bool makePipe(const QString &path)
{
    return mkfifo(QFile::encodeName(path).constData(), 0600) == 0;
}

#else

// Tests skip what would need these: Windows limits no process's file sizes, and its pipes are not
// among files.
struct FullDisk
{
    explicit FullDisk(qint64 /*bytes*/) {}
};
inline bool makePipe(const QString & /*path*/)
{
    return false;
}

#endif

/// A folder on another volume than `path`, or an empty text where there is none.
inline QString folderOnOtherVolume(const QString &path)
{
#ifdef Q_OS_WIN
    const QString candidate = QStringLiteral("Z:/dev/shm"); // Wine's.
#else
    const QString candidate = QStringLiteral("/dev/shm");
#endif
    const bool isOther = QStorageInfo(candidate) != QStorageInfo(path);
    return isOther && QFileInfo(candidate).isWritable() ? candidate : QString();
}
