#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

class QUrl;

namespace OVX {

/// The text of a QML document as it was at one moment.
struct DocumentSource
{
    static constexpr qint64 MaximumBytes = qint64{64} * 1024 * 1024;

    QByteArray bytes;
    QString error; ///< Why there are no bytes; empty for a document that was read.
};

/// Reads a local file or a resource into memory. Qt would map the file instead, and an editor that
/// truncates a mapped file ends the process. Only regular files of at most `MaximumBytes` are read.
DocumentSource readDocument(const QUrl &url);

} // namespace OVX
