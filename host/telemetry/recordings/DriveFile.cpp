#include "DriveFile.h"

#include "CaptureReader.h"
#include "RecordingReader.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

std::unique_ptr<DatagramReader> openDrive(const QString &path, QString &error)
{
    constexpr int BeginningSize = 16;
    const QString shown = QDir::toNativeSeparators(path);
    auto file = std::make_unique<QFile>(path);
    // A pipe would wait for ever, and none can start over.
    const QFileInfo there(path);
    if (there.exists() && !there.isFile()) {
        error = QStringLiteral("'%1' is no file.").arg(shown);
        return nullptr;
    }
    if (!file->open(QIODevice::ReadOnly)) {
        error = QStringLiteral("Could not open '%1': %2.").arg(shown, file->errorString());
        return nullptr;
    }
    const QByteArray beginning = file->peek(BeginningSize);
    std::unique_ptr<DatagramReader> reader;
    QString reason;
    if (RecordingReader::recognises(beginning))
        reader = RecordingReader::open(std::move(file), reason);
    else if (CaptureReader::recognises(beginning))
        reader = CaptureReader::open(path, reason);
    else if (beginning.isEmpty())
        reason = QStringLiteral("is empty.");
    else
        reason = QStringLiteral("is neither a recording of a drive nor a capture (pcap, pcapng).");
    error = reader != nullptr ? QString() : QStringLiteral("'%1' %2").arg(shown, reason);
    return reader;
}
