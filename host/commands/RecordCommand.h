#pragma once

#include "telemetry/feeds/UdpListener.h"

#include <QtCore/QString>

#include <functional>
#include <memory>

/// Recording a drive, as the command line asks for it.
struct RecordCommand
{
    QString path; ///< The pcap file.
    bool overwrite = false;
    double seconds = 0; ///< How long to record; 0 until the user stops it.
};

/// Records datagrams until the system asks the program to end, time is up or an error occurs, and
/// prints its progress. `listen` opens the ports; if it can't, it prints why and returns null. GUI
/// thread. Returns the program's exit code: 0 if something was recorded and nothing lost.
int recordDrive(const RecordCommand &command,
                const std::function<std::unique_ptr<UdpListener>(UdpListener::Tap)> &listen);
