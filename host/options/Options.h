#pragma once

#include "commands/ProfileCommand.h"
#include "commands/RecordCommand.h"

#include <QtCore/QSize>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtNetwork/QHostAddress>

#include <optional>

/// What the command line asks for.
struct Options
{
    enum class Mode {
        Gallery, ///< The collection of dashboards, and from there everything else.
        View,    ///< One view of the library alone.
        Frames,  ///< Pictures into files.
        Preview, ///< One dashboard's preview picture.
        Lint,    ///< What is wrong with one dashboard.
        Record,  ///< What games send into a file.
        Command, ///< No window and no picture.
    };

    enum class Units { AsSet, Kmh, Mph };

    Mode mode = Mode::Gallery;
    QString view;              ///< Name of the view in mode `View`.
    QString viewPath;          ///< A file for that view; empty for none.
    QString framesDirectory;   ///< Where the PNG files go.
    int frameCount = 250;      ///< Ten seconds at the engine's full rate.
    std::optional<QSize> size; ///< Of the frames, or of the view's window, in pixels.
    bool upsideDown = false;
    QString dashboard; ///< A QML file, or a profile's name or id; empty leaves it to the store.
    QString output;    ///< Mode `Preview`: the file to write; empty for the usual one.
    QString telemetry; ///< One of `telemetryNames`, or a file; empty is as set, or else the demo.
    QStringList feedFiles;      ///< Descriptions of further feeds.
    QHostAddress listenAddress; ///< Of the feeds' ports; null is this computer alone.
    quint16 port = 0;           ///< In place of the feeds' usual ports; 0 leaves those.
    int demoCars = 1;           ///< Cars that the demo drives in turn.
    double startAt = 180;       ///< Seconds into the telemetry.
    double speed = 1;           ///< Of a drive in a file, in times of its own pace.
    bool loop = false;          ///< Play a drive in a file again and again.
    Units units = Units::AsSet;
    bool hardwareAcceleration = true;
    ProfileCommand command; ///< In mode `Command`.
    RecordCommand record;   ///< In mode `Record`.
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
