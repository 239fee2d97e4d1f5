#include "Program.h"

#include "IDashboardEngine.h"
#include "commands/FramesCommand.h"
#include "commands/LintCommand.h"
#include "commands/PreviewCommand.h"
#include "commands/ProfileCommand.h"
#include "commands/RecordCommand.h"
#include "options/Options.h"
#include "profiles/FindProfile.h"
#include "session/GaugeLibrary.h"
#include "session/Session.h"
#include "system/MessageLog.h"
#include "system/Terminal.h"
#include "telemetry/VehicleNames.h"
#include "telemetry/feeds/UdpListener.h"
#include "ui/RunWindows.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QStandardPaths>

#include <utility>

namespace {

/// Creates the folder for the user's own dashboards, as no installer does it for each user.
void createUserFolder()
{
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    if (!QDir::isAbsolutePath(documents))
        return; // The library also does without.
    const QString folder = documents + QStringLiteral("/Orvalentix/Halvorin/Dashboards");
    if (!QDir().mkpath(folder)) {
        printError(QStringLiteral("Could not create '%1', the folder for your own dashboards.")
                       .arg(QDir::toNativeSeparators(folder)));
    }
}

int runProfiles(const Options &options, const GaugeLibrary &library)
{
    VehicleNames vehicles;
    const auto engine = library.createEngine(false, false); // Shows nothing: needs no renderer.
    const int result = runProfileCommand(
        options.profile, [&] { return library.createProfiles(*engine, vehicles); }, vehicles);
    engine->shutdown();
    return result;
}

int preview(const Options &options, const GaugeLibrary &library)
{
    const Session session(options.session, library);
    const QString document = findDocument(*session.store, options.preview.dashboard);
    return makePreview(document, options.preview.output, *session.engine);
}

int lint(const Options &options, const GaugeLibrary &library)
{
    // Compiled scripts lose their line numbers, which an author needs.
    qputenv("QV4_FORCE_INTERPRETER", "1");
    const Session session(options.session, library);
    return lintDashboard(findDocument(*session.store, options.lint.dashboard), *session.engine);
}

int recordGames(const Options &options)
{
    return recordDrive(options.record, [&options](UdpListener::Tap tap) {
        QStringList problems;
        auto listener = options.session.telemetry.makeListener(problems, std::move(tap));
        for (const QString &problem : qAsConst(problems))
            printError(problem);
        return listener;
    });
}

} // namespace

int runProgram(const Options &options)
{
    const MessageLog log(options.verbose);
    if (options.mode == Options::Mode::Record)
        return recordGames(options); // Needs no library.
    const GaugeLibrary library(QCoreApplication::applicationDirPath());
    if (!library.error().isEmpty()) {
        printError(library.error());
        return 1;
    }
    createUserFolder();
    switch (options.mode) {
    case Options::Mode::Profile:
        return runProfiles(options, library);
    case Options::Mode::Frames:
        return writeFrames(options.frames, options.session, library, log);
    case Options::Mode::Preview:
        return preview(options, library);
    case Options::Mode::Lint:
        return lint(options, library);
    case Options::Mode::Windows:
    case Options::Mode::Record:
        break;
    }
    return runWindows(options.windows, options.session, library, log);
}
