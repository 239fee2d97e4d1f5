#pragma once

#include <QtCore/QString>

#include <memory>

namespace platform {
class DirectoryHold;
}

/// A place under the root of dashboards where one grows before it gets its name, and where one is
/// taken apart. No scan lists what is in there, on the root's own volume though it is, and no
/// dashboard can be called so.
///
/// What a killed process leaves behind can be told from what is in use: the latter is held.
class StagingDirectory
{
public:
    /// Makes one for the dashboard `name` under `root`, which must exist. Null where that fails.
    static std::unique_ptr<StagingDirectory> make(const QString &root, const QString &name);

    /// Removes it with all that is still in it.
    ~StagingDirectory();
    StagingDirectory(const StagingDirectory &) = delete;
    StagingDirectory &operator=(const StagingDirectory &) = delete;

    /// Where the dashboard's directory goes, under its own name. Doesn't exist at first.
    QString path() const;

    /// Clears away what processes that are gone left under `root`, and the empty directories with
    /// which they had reserved a name.
    static void removeAbandoned(const QString &root);

private:
    StagingDirectory(QString place, QString name, std::unique_ptr<platform::DirectoryHold> hold);

    QString place;
    QString name;
    std::unique_ptr<platform::DirectoryHold> hold;
};
