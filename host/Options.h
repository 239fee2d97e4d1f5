#pragma once

#include <QtCore/QSize>
#include <QtCore/QString>
#include <QtCore/QStringList>

/// What the command line asks for.
struct Options
{
    enum class Mode { Window, Frames };

    Mode mode = Mode::Window;
    QString framesDirectory;   ///< Where the PNG files go.
    int frameCount = 250;      ///< Ten seconds at the engine's full rate.
    QSize frameSize{480, 272}; ///< Pixels.
    bool upsideDown = false;
    QString dashboard = QStringLiteral("Road"); ///< A QML file, or the name of a shipped dashboard.
    QString telemetry = QStringLiteral("demo");
    double startAt = 0; ///< Seconds into the telemetry.
    bool useMph = false;
    bool hardwareAcceleration = true;
    bool verbose = false; ///< Progress messages of the library, too.
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
