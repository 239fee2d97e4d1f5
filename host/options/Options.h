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
        Windows, ///< The gallery, or one view of the library alone.
        Frames,  ///< Pictures into files.
        Preview, ///< One dashboard's preview picture.
        Lint,    ///< What is wrong with one dashboard.
        Record,  ///< What games send into a file.
        Profile, ///< Something of the collection of dashboards.
    };

    Mode mode = Mode::Windows;
    WindowRequest windows;
    FramesCommand frames;
    PreviewCommand preview;
    LintCommand lint;
    RecordCommand record;
    ProfileCommand profile;
    SessionOptions session;
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
