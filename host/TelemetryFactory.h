#pragma once

#include <QtCore/QStringList>

#include <memory>

class TelemetrySource;
struct Options;

/// The names that `--telemetry` knows.
QStringList telemetryNames();

/// Makes the source that the options ask for. Prints what a driver should know; null, with the
/// reason printed, if no telemetry could ever come.
std::unique_ptr<TelemetrySource> makeTelemetry(const Options &options);
