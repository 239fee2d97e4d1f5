#pragma once

#include "support/SystemLimits.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QString>

/// A QString literal: `"Classic"_q`.
inline QString operator""_q(const char *text, std::size_t size)
{
    return QString::fromUtf8(text, static_cast<int>(size));
}

/// Writes a file, and makes the directories it needs.
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

/// The fastest folder for many small files: in memory. Directories there list the newest entry
/// first.
inline QString fastFolder()
{
#ifdef Q_OS_LINUX
    QString memory = "/dev/shm"_q;
    if (QFileInfo(memory).isWritable())
        return memory;
#endif
    return QDir::tempPath();
}
