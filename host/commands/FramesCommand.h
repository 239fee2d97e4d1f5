#pragma once

#include <QtCore/QSize>
#include <QtCore/QString>

#include <optional>

class GaugeLibrary;
class MessageLog;
struct SessionOptions;

/// What the command line asks for.
struct FramesCommand
{
    QString directory;         ///< Where the PNG files go.
    int count = 250;           ///< Ten seconds at the engine's full rate.
    std::optional<QSize> size; ///< In pixels; without a value what dashboards are drawn for.
    bool upsideDown = false;
};

/// Writes frames as the command asks, with a progress bar, and ends with a line of figures. The
/// result is the program's exit code: 0 only if every frame was delivered and written.
int writeFrames(const FramesCommand &command, const SessionOptions &options,
                const GaugeLibrary &library, const MessageLog &log);
