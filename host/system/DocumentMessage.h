#pragma once

#include <QtCore/QMessageLogContext>
#include <QtCore/QString>

#include <optional>

/// What the QML engine, or a script by `console.log` and its like, says about a document on disk.
struct DocumentMessage
{
    QString file; ///< A local path.
    int line = 0; ///< From 1; 0 if unknown.
    QString text; ///< Without its place.
    bool ofScript = false;

    /// With file and line in front, as the QML engine writes them.
    QString placed() const;

    /// Reads a warning of the QML engine. Nothing if it is about no file.
    static std::optional<DocumentMessage> fromWarning(const QString &warning);

    /// Reads a message on its way to the log. Nothing if it is about no file: the host's own
    /// documents are none.
    static std::optional<DocumentMessage> fromLog(const QMessageLogContext &context,
                                                  const QString &text);
};
