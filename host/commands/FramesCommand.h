#pragma once

#include <QtCore/QSize>
#include <QtCore/QString>

#include <optional>

class GaugeLibrary;
class MessageLog;
struct SessionOptions;

/// Writing frames, as the command line asks for it.
struct FramesCommand
{
    QString directory;         ///< Where the PNG files go.
    int count = 250;           ///< Ten seconds at the engine's full rate.
    std::optional<QSize> size; ///< In pixels; by default what dashboards are drawn for.
    bool upsideDown = false;
};

/// Writes the frames with a progress bar, and prints a summary. GUI thread. Returns the program's
/// exit code: 0 only if every frame was delivered and written.
int writeFrames(const FramesCommand &command, const SessionOptions &options,
                const GaugeLibrary &library, const MessageLog &log);
