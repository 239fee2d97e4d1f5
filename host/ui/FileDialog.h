#pragma once

#include "HostWindow.h"

#include <QtCore/QStringList>
#include <QtCore/QUrl>
#include <QtCore/QVariantList>

/// Lets the user choose an existing file, in a window above another one. GUI thread.
class FileDialog final : public HostWindow
{
    Q_OBJECT
    Q_PROPERTY(QString filter READ filter CONSTANT)
    Q_PROPERTY(QStringList namePatterns READ namePatterns CONSTANT)
    Q_PROPERTY(QUrl startFolder READ startFolder CONSTANT)
    Q_PROPERTY(QString startName READ startName CONSTANT)
    Q_PROPERTY(QVariantList places READ places CONSTANT)

public:
    /// `filter` is a text with name patterns in brackets, such as "Pictures (*.png *.jpg)". The
    /// dialog begins in the folder of `startPath` or the nearest above it that is there; without a
    /// path in the user's documents.
    FileDialog(HostWindow &parent, const QString &title, QString filter, const QString &startPath);

    /// Shows the dialog and waits in an event loop of its own. The chosen file's path in native
    /// separators, or empty when nothing was chosen or the program ends.
    QString choose();

    QString filter() const { return filterText; }
    QStringList namePatterns() const;
    QUrl startFolder() const { return folder; }
    QString startName() const { return name; }

    /// Folders that are worth a click: maps with "name" and "folder".
    static QVariantList places();

    /// Chooses the file and closes. False if there is none.
    Q_INVOKABLE bool accept(const QUrl &file);

    /// What a text typed as a path stands for: the folder's address, or the file's.
    Q_INVOKABLE static QUrl typed(const QString &path, const QUrl &folder);
    Q_INVOKABLE static bool isFolder(const QUrl &address);
    Q_INVOKABLE static QString nativePath(const QUrl &address);

    /// The last part of a path.
    Q_INVOKABLE static QString fileName(const QUrl &address);

private:
    HostWindow &parent;
    const QString filterText;
    QUrl folder;
    QString name;
    QString chosen;
};
