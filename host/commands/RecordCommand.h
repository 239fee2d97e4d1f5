#pragma once

#include "telemetry/feeds/UdpListener.h"

#include <QtCore/QString>

#include <functional>
#include <memory>

/// What the command line asks to be recorded.
struct RecordCommand
{
    QString path;
    bool overwrite = false;
    double seconds = 0; ///< How long to record; 0 is until the user ends it.
};

/// Records what comes in until the system asks for the end, the time is up or an error happens, and
/// prints how it goes.
/// `listen` opens the ports, or gives null with the reason printed. Needs a QCoreApplication. The
/// result is the program's exit code: 0 if anything was recorded and nothing was lost.
int recordDrive(const RecordCommand &command,
                const std::function<std::unique_ptr<UdpListener>(UdpListener::Tap)> &listen);
