#pragma once

#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#ifdef Q_OS_WIN
#include "support/UserHive.h"
#endif

/// A user of their own for programs that a test starts, gone with the object. On Windows all such
/// users share the one registry, so that only one may live at a time: see `program_test`.
class ProgramHome
{
public:
#ifdef Q_OS_WIN
    ProgramHome()
        : hive(directory.filePath(QStringLiteral("Documents")))
    {
    }
#endif

    QString path() const
    {
        return directory.path();
    }
    QString filePath(const QString &name) const
    {
        return directory.filePath(name);
    }

    /// Where the user's dashboards are.
    QString userFolder() const
    {
        return filePath(QStringLiteral("Documents/Orvalentix/Halvorin/Dashboards"));
    }

    QProcessEnvironment environment() const
    {
        QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
        for (const char *name : {"HOME", "XDG_RUNTIME_DIR", "XDG_CACHE_HOME", "XDG_CONFIG_HOME"})
            variables.insert(QLatin1String(name), path());
        // Drivers keep memory to their end, and the leak check can't tell it from the program's.
        variables.insert(QStringLiteral("ASAN_OPTIONS"), QStringLiteral("detect_leaks=0"));
        return variables;
    }

private:
    QTemporaryDir directory;
#ifdef Q_OS_WIN
    SharedUserHive hive;
#endif
};
