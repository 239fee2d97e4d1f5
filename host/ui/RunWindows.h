#pragma once

class GaugeLibrary;
class MessageLog;
struct SessionOptions;
struct WindowRequest;

/// Shows the gallery, or one view alone, until the last window has closed or the system asks the
/// program to end. Starts a new session when the user wants changed settings applied. Returns the
/// program's exit code.
int runWindows(const WindowRequest &request, const SessionOptions &options,
               const GaugeLibrary &library, const MessageLog &log);
