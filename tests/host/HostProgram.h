#pragma once

#include "support/TestFiles.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#ifdef Q_OS_WIN
#include "support/UserHive.h"
#endif

/// How a run of the program ended, and what it printed.
struct Run
{
    int exitCode = -1; ///< -1 if it crashed or didn't end.
    QString output;
    QString errors;
};

/// gauge-host with a user of its own, who is gone with the object. On Windows all such users share
/// the one registry, so that only one may live at a time: see `program_test`.
class HostProgram
{
public:
#ifdef Q_OS_WIN
    HostProgram()
        : hive(path("Documents"))
    {
    }
#endif

    /// A path in the user's home.
    QString path(const char *tail) const
    {
        return home.filePath(QString::fromUtf8(tail));
    }

    /// The folder of one of the user's dashboards.
    QString dashboard(const QString &name) const
    {
        return path("Documents/Orvalentix/Halvorin/Dashboards/") + name;
    }

    void start(QProcess &process, const QStringList &arguments, const QStringList &unset = {}) const
    {
        QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
        for (const char *name : {"HOME", "XDG_RUNTIME_DIR", "XDG_CACHE_HOME", "XDG_CONFIG_HOME"})
            variables.insert(QLatin1String(name), home.path());
        // Drivers keep memory to their end, and the leak check can't tell it from the program's.
        variables.insert("ASAN_OPTIONS"_q, "detect_leaks=0"_q);
        for (const QString &name : unset)
            variables.remove(name);
        process.setProcessEnvironment(variables);
        process.start(QStringLiteral(GAUGE_HOST), arguments);
    }

    static Run finish(QProcess &process)
    {
        constexpr int LongestRunMs = 120'000;
        if (process.state() != QProcess::NotRunning)
            process.waitForFinished(LongestRunMs);
        if (process.state() != QProcess::NotRunning || process.exitStatus() == QProcess::CrashExit)
            return {};
        const auto text = [](QByteArray bytes) {
            return QString::fromUtf8(bytes.replace("\r\n", "\n"));
        };
        return {process.exitCode(), text(process.readAllStandardOutput()),
                text(process.readAllStandardError())};
    }

    Run run(const QStringList &arguments, const QStringList &unset = {}) const
    {
        QProcess process;
        start(process, arguments, unset);
        return finish(process);
    }

    /// The same with the arguments in one line, which spaces separate.
    Run run(const char *line) const
    {
        return run(QString::fromUtf8(line).split(QLatin1Char(' '), Qt::SkipEmptyParts));
    }

private:
    QTemporaryDir home;
#ifdef Q_OS_WIN
    SharedUserHive hive;
#endif
};

/// An address of this computer that no other test listens on, so that the usual ports are free.
inline QString ownAddress()
{
    const qint64 number = QCoreApplication::applicationPid();
    return QStringLiteral("127.64.%1.%2").arg(number / 254 % 256).arg(number % 254 + 1);
}
