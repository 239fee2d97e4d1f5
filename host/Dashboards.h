#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

/// The dashboards that ship beside the program: one directory each, with a document "Dash.qml".
class Dashboards
{
public:
    explicit Dashboards(QString root);

    /// The names, sorted.
    QStringList names() const;

    /// The absolute path of the document that `fileOrName` stands for. An existing file goes before
    /// a name; what is neither stays a path, for the engine to report.
    QString documentFor(const QString &fileOrName) const;

private:
    QString root;
};
