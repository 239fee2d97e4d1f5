#pragma once

class GaugeLibrary;
class MessageLog;
struct Options;

/// Shows the gallery, or one view alone, until the last of their windows has closed or the system
/// asks for an end. Starts over with a new engine when the settings ask for it. The result is the
/// program's exit code.
int runWindows(const Options &options, const GaugeLibrary &library, const MessageLog &log);
