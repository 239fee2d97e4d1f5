#pragma once

#include <QtCore/QMessageLogContext>
#include <QtCore/QString>

#include <optional>

/// A message about a document on disk, from the QML engine or from a script's `console.log`.
struct DocumentMessage
{
    QString file; ///< A local path.
    int line = 0; ///< From 1; 0 if unknown.
    QString text; ///< Without file and line.
    bool ofScript = false;

    /// With file and line in front, as the QML engine writes them.
    QString placed() const;

    /// Reads a warning of the QML engine. Nothing if it names no file.
    static std::optional<DocumentMessage> fromWarning(const QString &warning);

    /// Reads a log message. Nothing if it names no file on disk, as for the host's own documents.
    static std::optional<DocumentMessage> fromLog(const QMessageLogContext &context,
                                                  const QString &text);
};
