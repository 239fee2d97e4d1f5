#include "AbandonedLock.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QLockFile>
#include <QtCore/QSettings>

void removeAbandonedLock(const QSettings &settings)
{
    // A living process releases it at once.
    constexpr int LongestUseMs = 500;
    constexpr int LongestWaitMs = 900;
    const QFileInfo file(settings.fileName() + QStringLiteral(".lock"));
    if (!file.isFile() || file.isSymLink()) {
        // Not a lock, but perhaps a pipe, for which QLockFile would wait for ever.
        QFile::remove(file.filePath());
        return;
    }
    QLockFile lock(file.filePath());
    lock.setStaleLockTime(LongestUseMs);
    if (!lock.tryLock(LongestWaitMs))
        lock.removeStaleLockFile();
}
