#pragma once

#include <QtCore/QDir>
#include <QtCore/QSettings>
#include <QtCore/QTemporaryDir>

#ifdef Q_OS_WIN
#include "support/UserHive.h"

#include <memory>
#endif

#include <array>

/// A home for one test: documents, settings and temporary files end up in it, so that nothing of
/// the user's is read or written. Restores the environment at the end.
class TemporaryHome
{
public:
    explicit TemporaryHome(const QString &parent = QDir::tempPath())
        : directory(parent + QStringLiteral("/gauge-home-XXXXXX"))
    {
        if (!directory.isValid()) // Its paths would lead to the root.
            qFatal("no home in %s: %s", qPrintable(parent), qPrintable(directory.errorString()));
        for (std::size_t i = 0; i < Names.size(); ++i) {
            before[i] = qgetenv(Names[i]);
            qputenv(Names[i], path(Tails[i]).toLocal8Bit());
        }
        QDir().mkpath(path("/tmp"));
#ifdef Q_OS_WIN
        hive = std::make_unique<UserHive>(path("/Documents"));
#endif
        for (const auto format : {QSettings::NativeFormat, QSettings::IniFormat}) {
            QSettings::setPath(format, QSettings::UserScope, path("/config"));
            QSettings::setPath(format, QSettings::SystemScope, path("/system"));
        }
    }
    ~TemporaryHome()
    {
        for (std::size_t i = 0; i < Names.size(); ++i)
            before[i].isNull() ? qunsetenv(Names[i]) : qputenv(Names[i], before[i]);
    }
    Q_DISABLE_COPY(TemporaryHome)

    QString path(const char *tail = "") const
    {
        return directory.path() + QString::fromUtf8(tail);
    }

    /// The application's own folder under the documents, which isn't there at first.
    QString data(const char *tail = "") const
    {
        return path("/Documents/Orvalentix/Halvorin") + QString::fromUtf8(tail);
    }

private:
    static constexpr std::array<const char *, 7> Names{
        "HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_CONFIG_DIRS", "TMPDIR",
        "TMP"};
    static constexpr std::array<const char *, 7> Tails{"",        "/config", "/data", "/cache",
                                                       "/system", "/tmp",    "/tmp"};

    QTemporaryDir directory;
    std::array<QByteArray, Names.size()> before;
#ifdef Q_OS_WIN
    std::unique_ptr<UserHive> hive;
#endif
};
