#pragma once

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QString>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

/// Text of a test: `"Classic"_q`.
inline QString operator""_q(const char *text, std::size_t size)
{
    return QString::fromUtf8(text, static_cast<int>(size));
}

/// Writes a file, with the directories it needs.
inline void writeFile(const QString &path, const QByteArray &content)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("can't write %s", qUtf8Printable(path));
}

inline QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

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

/// Where many small files are written fastest: in memory, where a directory also lists what came
/// last first.
inline QString fastFolder()
{
    const QString memory = "/dev/shm"_q;
    return QFileInfo(memory).isWritable() ? memory : QDir::tempPath();
}

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
