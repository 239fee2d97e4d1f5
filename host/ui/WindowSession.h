#pragma once

#include <QtCore/QSize>
#include <QtCore/QString>

#include <optional>

class GaugeLibrary;
class MessageLog;
struct SessionOptions;

/// What the command line asks for.
struct WindowRequest
{
    QString view;              ///< The name of one of the library's views; empty is the gallery.
    QString path;              ///< A file for that view; empty for none.
    std::optional<QSize> size; ///< Of the view's window, in pixels.
};

/// Shows the gallery, or one view alone, until the last of their windows has closed or the system
/// asks for an end. Starts over with a new engine when the settings ask for it. The result is the
/// program's exit code.
int runWindows(const WindowRequest &request, const SessionOptions &options,
               const GaugeLibrary &library, const MessageLog &log);
