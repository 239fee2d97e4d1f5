#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

class QUrl;

namespace OVX {

/// A QML document's text at one moment.
struct DocumentSource
{
    static constexpr qint64 MaximumBytes = qint64{64} * 1024 * 1024;

    QByteArray bytes;
    QString error; ///< Why there are no bytes; empty on success.
};

/// Reads a local file or a resource into memory. Qt would map the file, and an editor that
/// truncates a mapped file kills the process. Takes regular files of up to `MaximumBytes`. Any
/// thread.
DocumentSource readDocument(const QUrl &url);

} // namespace OVX
