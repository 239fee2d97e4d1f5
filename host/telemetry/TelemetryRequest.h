#pragma once

#include "feeds/UdpListener.h"

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtNetwork/QHostAddress>

#include <memory>

class TelemetrySource;

/// Which telemetry a session wants.
struct TelemetryRequest
{
    QString source; ///< One of `names()`, or a file: a drive to play, or the description of a feed.
                    ///< Empty is the demo.
    QStringList feedFiles;      ///< Descriptions of further feeds.
    QHostAddress listenAddress; ///< Where to listen; null is this computer only.
    quint16 port = 0;           ///< Instead of the feeds' usual ports; 0 keeps those.
    int demoCars = 1;           ///< Cars that the demo drives in turn.
    double startAt = 180;       ///< Seconds into the telemetry.
    double speed = 1;           ///< Of a recorded drive; 1 is its own pace.
    bool loop = false;          ///< Play a recorded drive again and again.

    /// The sources that have a name.
    static QStringList names();

    /// Whether `source` means a file.
    bool isFile() const;

    /// Whether that file is a recorded drive.
    bool isDrive() const;

    /// Makes the source and prints where it listens. Adds what the driver should know to
    /// `problems`, a sentence each. Null if no telemetry could ever come.
    std::unique_ptr<TelemetrySource> makeSource(QStringList &problems) const;

    /// Listens to games, and prints where. Null if no port is open or a description of a feed can't
    /// be read.
    std::unique_ptr<UdpListener> makeListener(QStringList &problems,
                                              UdpListener::Tap tap = {}) const;
};
