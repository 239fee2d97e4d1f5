#pragma once

#include "support/TestFiles.h"

#include <QtCore/QTemporaryDir>

/// A folder of documents that is removed when the test is over.
class DocumentFolder : public QTemporaryDir
{
public:
    /// Returns the file's path.
    QString write(const QString &name, const QByteArray &content) const
    {
        writeFile(filePath(name), content);
        return filePath(name);
    }
};
