#pragma once

#include "support/TestFiles.h"

#include <QtCore/QTemporaryDir>

/// A folder of documents that is removed when the test is over.
class DocumentFolder
{
public:
    QString path(const QString &name = {}) const { return directory.filePath(name); }

    /// Returns the file's path.
    QString write(const QString &name, const QByteArray &content) const
    {
        writeFile(path(name), content);
        return path(name);
    }

private:
    QTemporaryDir directory;
};
