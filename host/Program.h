#pragma once

struct Options;

/// Runs what the options ask for, from the loading of the library to its end. Needs a
/// QGuiApplication, or a QCoreApplication for a command. The result is the program's exit code.
int runProgram(const Options &options);
