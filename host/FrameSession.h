#pragma once

#include <functional>
#include <memory>

class IDashboardEngine;
class MessageLog;
class TelemetryFeeder;
struct Options;

/// Writes frames as the options ask, with a progress bar, and ends with a line of figures.
/// Telemetry starts when the consumer is in place. The result is the program's exit code: 0 only if
/// every frame was delivered and written.
int recordFrames(const Options &options, IDashboardEngine &engine, const MessageLog &log,
                 const std::function<std::unique_ptr<TelemetryFeeder>()> &startTelemetry);
