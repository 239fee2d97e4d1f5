#include "DeadLock.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QLockFile>
#include <QtCore/QSettings>

void removeDeadLock(const QSettings &settings)
{
    // A process that lives gives it back at once.
    constexpr int LongestUseMs = 500;
    constexpr int LongestWaitMs = 900;
    const QFileInfo file(settings.fileName() + QStringLiteral(".lock"));
    if (!file.isFile() || file.isSymLink()) {
        // No lock, but perhaps a pipe, on which QLockFile would wait for ever.
        QFile::remove(file.filePath());
        return;
    }
    QLockFile lock(file.filePath());
    lock.setStaleLockTime(LongestUseMs);
    if (!lock.tryLock(LongestWaitMs))
        lock.removeStaleLockFile();
}
