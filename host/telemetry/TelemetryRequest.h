#pragma once

#include "telemetry/feeds/UdpListener.h"

#include <QtCore/QStringList>

#include <memory>

class TelemetrySource;
struct Options;

/// The names that `--telemetry` knows.
QStringList telemetryNames();

/// Whether `--telemetry` means a file by this: a drive to play, or the description of a feed.
bool isTelemetryFile(const QString &telemetry);

/// Whether it means a drive.
bool isDriveFile(const QString &telemetry);

/// Makes the source that the options ask for, the demo for an empty name, and prints where it
/// listens. What a driver should know goes to `problems`, a sentence each; null if no telemetry
/// could ever come.
std::unique_ptr<TelemetrySource> makeTelemetry(const Options &options, QStringList &problems);

/// Listens as the options ask, and prints where. Null if no port is open or a description of a feed
/// can't be read.
std::unique_ptr<UdpListener> makeListener(const Options &options, QStringList &problems,
                                          UdpListener::Tap tap = {});
