#pragma once

class GaugeLibrary;
class MessageLog;
struct Options;

/// Writes frames as the options ask, with a progress bar, and ends with a line of figures. The
/// result is the program's exit code: 0 only if every frame was delivered and written.
int recordFrames(const Options &options, const GaugeLibrary &library, const MessageLog &log);
