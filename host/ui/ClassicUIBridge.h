#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>

/// Dialogs that a document waits for. The QML type `ClassicUIBridge` of the module of that name.
class ClassicUIBridge : public QObject
{
    Q_OBJECT

public:
    /// Registers the QML type, once.
    static void registerType();

    /// Asks for an existing file, above `window`, which is a window of the host. Returns when the
    /// user has chosen: the path in native separators, or empty when nothing was chosen.
    Q_INVOKABLE static QString getExistingFile(QObject *window, const QString &title,
                                               const QString &filter, const QString &startPath);
};
