#pragma once

#include "telemetry/recordings/OpenDrive.h"

#include <QtCore/QDebug>

#include <vector>

/// What a real game sent; `file` is one of drives/.
inline std::vector<Datagram> realDrive(const QString &file)
{
    QString error;
    const auto reader = openDrive(QStringLiteral(GAUGE_DRIVES "/") + file, error);
    if (reader == nullptr)
        qFatal("%s", qPrintable(error));
    std::vector<Datagram> datagrams;
    while (auto datagram = reader->next())
        datagrams.push_back(*std::move(datagram));
    return datagrams;
}
