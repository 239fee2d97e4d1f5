#pragma once

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QTemporaryDir>

/// A folder of documents that is gone when the test is over.
class DocumentFolder
{
public:
    QString path(const QString &name) const { return directory.filePath(name); }

    /// Makes the folders on the way too, and gives the file's path.
    QString write(const QString &name, const QByteArray &content) const
    {
        QString target = path(name);
        QFile file(target);
        if (!QDir().mkpath(QFileInfo(target).absolutePath()) ||
            !file.open(QIODevice::WriteOnly | QIODevice::Truncate) ||
            file.write(content) != content.size())
            qFatal("%s: %s", qPrintable(target), qPrintable(file.errorString()));
        return target;
    }

private:
    QTemporaryDir directory;
};
