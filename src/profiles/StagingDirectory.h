#pragma once

#include <QtCore/QString>

#include <memory>

namespace platform {
class DirectoryHold;
}

/// Hidden directory in the dashboards' root in which a copy is built before it is renamed into
/// place, and from which a removed dashboard is deleted. No scan lists it, and no dashboard can
/// have its name. Held while it is in use, so that others can tell when a killed process left it.
/// One thread at a time.
class StagingDirectory
{
public:
    /// Makes one for the dashboard `name` in `root`, which must exist. Null on failure.
    static std::unique_ptr<StagingDirectory> make(const QString &root, const QString &name);

    /// Removes it with all that is still inside.
    ~StagingDirectory();
    StagingDirectory(const StagingDirectory &) = delete;
    StagingDirectory &operator=(const StagingDirectory &) = delete;

    /// The dashboard's directory inside. Doesn't exist at first.
    QString path() const;

    /// Removes what killed processes left in `root`, with the empty directories by which they had
    /// reserved names. Any thread.
    static void removeAbandoned(const QString &root);

private:
    StagingDirectory(QString place, QString name, std::unique_ptr<platform::DirectoryHold> hold);

    QString place;
    QString name;
    std::unique_ptr<platform::DirectoryHold> hold;
};
