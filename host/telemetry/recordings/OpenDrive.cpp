#include "OpenDrive.h"

#include "CaptureReader.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

std::unique_ptr<DatagramReader> openDrive(const QString &path, QString &error)
{
    const QByteArray formerRecording = QByteArray::fromHex("8b445249560d0a1a");
    const QString shown = QDir::toNativeSeparators(path);
    QFile file(path);
    // A pipe may never end, and can't be rewound.
    const QFileInfo there(path);
    if (there.exists() && !there.isFile()) {
        error = QStringLiteral("'%1' is not a file.").arg(shown);
        return nullptr;
    }
    if (!file.open(QIODevice::ReadOnly)) {
        error = QStringLiteral("Could not open '%1': %2.").arg(shown, file.errorString());
        return nullptr;
    }
    const QByteArray beginning = file.peek(formerRecording.size());
    std::unique_ptr<DatagramReader> reader;
    QString reason;
    if (CaptureReader::recognises(beginning))
        reader = CaptureReader::open(path, reason);
    else if (beginning.isEmpty())
        reason = QStringLiteral("is empty.");
    else if (beginning == formerRecording)
        reason =
            QStringLiteral("was recorded by an earlier version, whose format is no longer read.");
    else
        reason = QStringLiteral("is neither a recorded drive nor another capture (pcap, pcapng).");
    error = reader != nullptr ? QString() : QStringLiteral("'%1' %2").arg(shown, reason);
    return reader;
}
