#pragma once

#include <QtCore/QString>

class QDir;

/// Changes a folder of dashboards on disk. Each change happens as a whole or leaves the dashboards
/// as they were, even if the process is killed: no scan lists what that leaves behind, and the next
/// object made for the folder clears it away. Any thread; several may work on one folder.
class DashboardTransactions
{
public:
    /// `root` may not exist. Clears away what killed processes have left in it.
    explicit DashboardTransactions(QString root);

    enum class Copied { Done, Taken, NotCreated, NoSource, NotCopied, NotValid };

    /// Copies the dashboard in the directory `source` to `newName`, and makes the root if need be.
    /// `NoSource` for an empty `source`, unless the name is wrong or taken. Of several copies to
    /// one name, in whatever threads and processes, exactly one is `Done`.
    Copied copy(const QString &source, const QString &newName) const;

    /// Whether `newName` is free and can be a directory's name. The rename may still fail.
    bool canRename(const QString &directory, const QString &newName) const;

    /// Renames `dir`, a directory in the root, and points it at the new place. Fails if anything
    /// called `newName` exists.
    bool rename(QDir &dir, const QString &newName) const;

    /// Deletes a dashboard's directory, or the link in its place but not the link's target.
    /// Succeeds if there is none. Deletes nothing if the directory can't be moved away; after any
    /// other failure, such as a file that may not be deleted, some files may be gone.
    bool remove(const QString &directory) const;

private:
    QString root;
};
