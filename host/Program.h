#pragma once

struct Options;

/// Runs what the options ask for. Needs a QGuiApplication; profile commands and recording make do
/// with a QCoreApplication. Returns the program's exit code.
int runProgram(const Options &options);
