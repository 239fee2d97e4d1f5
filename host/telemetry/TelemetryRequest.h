#pragma once

#include "feeds/UdpListener.h"

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtNetwork/QHostAddress>

#include <memory>

class TelemetrySource;

/// Which telemetry is wanted.
struct TelemetryRequest
{
    QString source; ///< One of `names()`, or a file: a drive to play, or the description of a feed.
                    ///< Empty is the demo.
    QStringList feedFiles;      ///< Descriptions of further feeds.
    QHostAddress listenAddress; ///< Of the feeds' ports; null is this computer alone.
    quint16 port = 0;           ///< In place of the feeds' usual ports; 0 leaves those.
    int demoCars = 1;           ///< Cars that the demo drives in turn.
    double startAt = 180;       ///< Seconds into the telemetry.
    double speed = 1;           ///< Of a drive in a file, in times of its own pace.
    bool loop = false;          ///< Play a drive in a file again and again.

    /// The sources that are no files.
    static QStringList names();

    /// Whether `source` means a file.
    bool isFile() const;

    /// Whether it means a drive.
    bool isDrive() const;

    /// Makes the source, and prints where it listens. What a driver should know goes to `problems`,
    /// a sentence each; null if no telemetry could ever come.
    std::unique_ptr<TelemetrySource> makeSource(QStringList &problems) const;

    /// Listens to games, and prints where. Null if no port is open or a description of a feed can't
    /// be read.
    std::unique_ptr<UdpListener> makeListener(QStringList &problems,
                                              UdpListener::Tap tap = {}) const;
};
