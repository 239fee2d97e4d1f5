#pragma once

#include "HostWindow.h"

#include <QtCore/QStringList>
#include <QtCore/QUrl>
#include <QtCore/QVariantList>

/// A modal window in which the user chooses an existing file. GUI thread.
class FileDialog final : public HostWindow
{
    Q_OBJECT
    Q_PROPERTY(QString filter READ filter CONSTANT)
    Q_PROPERTY(QStringList namePatterns READ namePatterns CONSTANT)
    Q_PROPERTY(QUrl startFolder READ startFolder CONSTANT)
    Q_PROPERTY(QString startName READ startName CONSTANT)
    Q_PROPERTY(QVariantList places READ places CONSTANT)

public:
    /// `filter` is a text with name patterns in brackets, such as "Pictures (*.png *.jpg)".
    /// The dialog opens in the folder of `startPath`, or in the nearest existing one above
    /// it; without a path, in the user's documents.
    FileDialog(HostWindow &parent, const QString &title, QString filter, const QString &startPath);

    /// Shows the dialog and blocks in an event loop of its own. Returns the chosen file's
    /// path in native separators; empty if the user chose none or the program ends.
    QString choose();

    QString filter() const { return filterText; }
    QStringList namePatterns() const;
    QUrl startFolder() const { return folder; }
    QString startName() const { return name; }

    /// Shortcuts to folders: maps with "name" and "folder".
    static QVariantList places();

    /// Chooses the file and closes. Returns false if the file does not exist.
    Q_INVOKABLE bool accept(const QUrl &file);

    /// The URL of a typed path, which may be relative to `folder` or begin with ~/.
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
