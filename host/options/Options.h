#pragma once

#include "commands/FramesCommand.h"
#include "commands/LintCommand.h"
#include "commands/PreviewCommand.h"
#include "commands/ProfileCommand.h"
#include "commands/RecordCommand.h"
#include "session/SessionOptions.h"
#include "ui/WindowRequest.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

/// What the command line asks for.
struct Options
{
    enum class Mode {
        Windows, ///< Show the gallery, or one view of the library alone.
        Frames,  ///< Write pictures to files.
        Preview, ///< Draw one dashboard's preview.
        Lint,    ///< Check one dashboard.
        Record,  ///< Record what games send.
        Profile, ///< List or change the collection of dashboards.
    };

    Mode mode = Mode::Windows;
    WindowRequest windows;
    FramesCommand frames;
    PreviewCommand preview;
    LintCommand lint;
    RecordCommand record;
    ProfileCommand profile;
    SessionOptions session;
    bool verbose = false; ///< Also print the library's progress messages.
};

/// The result of reading a command line.
struct ParsedOptions
{
    enum class Outcome {
        Run,   ///< Run `options`.
        Print, ///< Print `text`, the help or the version.
        Fail,  ///< Print `text`, which says in one line what is wrong.
    };

    Outcome outcome = Outcome::Run;
    Options options;
    QString text;
};

/// Reads the program's arguments, of which the first is the program's name. Needs a
/// QCoreApplication.
ParsedOptions parseOptions(const QStringList &arguments);
