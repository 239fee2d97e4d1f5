#pragma once

#include "ProfileCommands.h"

#include <QtCore/QSize>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>

/// What the command line asks for.
struct Options
{
    enum class Mode { Window, Frames, Command };

    Mode mode = Mode::Window;
    QString framesDirectory;   ///< Where the PNG files go.
    int frameCount = 250;      ///< Ten seconds at the engine's full rate.
    std::optional<QSize> size; ///< Of the frames, or of the window at first, in pixels.
    bool upsideDown = false;
    QString dashboard; ///< A QML file, or a profile's name or id; empty leaves it to the store.
    QString telemetry = QStringLiteral("demo");
    int demoCars = 1;     ///< Cars that the demo drives in turn.
    double startAt = 180; ///< Seconds into the telemetry.
    bool useMph = false;
    bool hardwareAcceleration = true;
    ProfileCommand command; ///< In mode `Command`.
    bool verbose = false;   ///< Progress messages of the library, too.
};

/// What came of reading a command line.
struct ParsedOptions
{
    enum class Outcome {
        Run,   ///< `options` hold.
        Print, ///< `text` is what was asked for: the help or the version.
        Fail,  ///< `text` says in one line what is wrong.
    };

    Outcome outcome = Outcome::Run;
    Options options;
    QString text;
};

/// Reads the program's arguments, the program's own name first. Needs a QCoreApplication for the
/// help.
ParsedOptions parseOptions(const QStringList &arguments);
