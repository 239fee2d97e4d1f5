#pragma once

#include "support/TestFiles.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtGui/QImage>
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
    /// A path in the user's home.
    QString path(const char *tail) const { return home.filePath(QString::fromUtf8(tail)); }

    /// The arguments are in one line, as in a shell, and in a list.
    void start(QProcess &process, const char *line, const QStringList &more = {}) const
    {
        QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
        for (const char *name : {"HOME", "XDG_RUNTIME_DIR", "XDG_CACHE_HOME", "XDG_CONFIG_HOME"})
            variables.insert(QLatin1String(name), home.path());
        // Drivers keep memory to their end, and the leak check can't tell it from the program's.
        variables.insert("ASAN_OPTIONS"_q, "detect_leaks=0"_q);
        process.setProcessEnvironment(variables);
        process.start(QStringLiteral(GAUGE_HOST),
                      QProcess::splitCommand(QString::fromUtf8(line)) + more);
    }

    static Run finish(QProcess &process)
    {
        constexpr int LongestRunMs = 120'000;
        if (process.state() != QProcess::NotRunning && !process.waitForFinished(LongestRunMs))
            return {};
        const auto text = [](QByteArray bytes) {
            return QString::fromUtf8(bytes.replace("\r\n", "\n"));
        };
        return {process.exitStatus() == QProcess::CrashExit ? -1 : process.exitCode(),
                text(process.readAllStandardOutput()), text(process.readAllStandardError())};
    }

    Run run(const char *line, const QStringList &more = {}) const
    {
        QProcess process;
        start(process, line, more);
        return finish(process);
    }

    /// The frames that were written into `path("frames")`.
    QList<QImage> frames() const
    {
        QList<QImage> images;
        const QDir folder(path("frames"));
        const QStringList names = folder.entryList({"*.png"_q}, QDir::Files, QDir::Name);
        for (const QString &name : names)
            images += QImage(folder.filePath(name));
        return images;
    }

private:
    QTemporaryDir home;
#ifdef Q_OS_WIN
    SharedUserHive hive{path("Documents")};
#endif
};

/// An address of this computer that no other test listens on, so that the usual ports are free.
inline QString ownAddress()
{
    const qint64 number = QCoreApplication::applicationPid();
    return QStringLiteral("127.64.%1.%2").arg(number / 254 % 256).arg(number % 254 + 1);
}
