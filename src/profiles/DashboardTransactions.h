#pragma once

#include <QtCore/QString>

class QDir;

/// Changes of a folder of dashboards on disk. Each happens as a whole or leaves the dashboards as
/// they were, also where the process is killed in the middle: what that leaves behind no scan
/// lists, and the next change clears it away.
class DashboardTransactions
{
public:
    /// `root` need not exist.
    explicit DashboardTransactions(QString root);

    enum class Copied { Done, Taken, NotCreated, NoSource, NotCopied, NotValid };

    /// Copies the dashboard in the directory `source` to `newName`. An empty `source` stands for a
    /// dashboard that isn't there, which counts after all that is wrong with the name. Of several
    /// copies to one name, whatever threads and processes they run in, one is `Done`.
    Copied copy(const QString &source, const QString &newName) const;

    /// Whether nothing that is there already, nor the name itself, keeps `directory` from being
    /// renamed to `newName`. The rename may fail all the same.
    bool canRename(const QString &directory, const QString &newName) const;

    /// Renames `dir`, a directory in the root, and points it at the new place. An existing
    /// `newName`, whatever it is, makes it fail.
    bool rename(QDir &dir, const QString &newName) const;

    /// Deletes a dashboard's directory, or the link in its place without what it points at; a
    /// missing one is a success. Nothing is deleted where the directory can't be moved away. After
    /// any other failure, as with a file in it that may not be deleted, some files may be gone.
    bool remove(const QString &directory) const;

private:
    QString root;
};
