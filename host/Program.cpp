#include "Program.h"

#include "Session.h"
#include "commands/FramesCommand.h"
#include "GaugeLibrary.h"
#include "IDashboardEngine.h"
#include "commands/LintCommand.h"
#include "system/MessageLog.h"
#include "options/Options.h"
#include "commands/PreviewCommand.h"
#include "commands/ProfileCommand.h"
#include "profiles/FindProfile.h"
#include "commands/RecordCommand.h"
#include "telemetry/TelemetryFactory.h"
#include "system/Terminal.h"
#include "telemetry/VehicleNames.h"
#include "ui/WindowSession.h"
#include "telemetry/feeds/UdpListener.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QStandardPaths>

#include <utility>

namespace {

/// What an installation would have done: the place where a user's own dashboards go.
void makeUserFolder()
{
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    if (!QDir::isAbsolutePath(documents))
        return; // The library goes without one, too.
    const QString folder = documents + QStringLiteral("/Orvalentix/Halvorin/Dashboards");
    if (!QDir().mkpath(folder)) {
        printError(QStringLiteral("Could not make '%1', where your own dashboards go.")
                       .arg(QDir::toNativeSeparators(folder)));
    }
}

/// A command shows nothing, so it needs no renderer.
int runCommand(const Options &options, const GaugeLibrary &library)
{
    VehicleNames vehicles;
    const auto engine = library.createEngine(false, false);
    const int result = runProfileCommand(
        options.command, [&] { return library.createProfiles(*engine, vehicles); }, vehicles);
    engine->shutdown();
    return result;
}

/// A preview, or a lint, of one dashboard.
int lookOver(const Options &options, const GaugeLibrary &library)
{
    // Compiled scripts forget their line numbers, which an author needs.
    if (options.mode == Options::Mode::Lint)
        qputenv("QV4_FORCE_INTERPRETER", "1");
    const Cluster cluster(options, library, false);
    const QString document = findDocument(*cluster.store, options.dashboard);
    return options.mode == Options::Mode::Lint
               ? lintDashboard(document, *cluster.engine)
               : makePreview(document, options.output, *cluster.engine);
}

int recordGames(const Options &options)
{
    return recordDrive(options.record, [&options](UdpListener::Tap tap) {
        QStringList problems;
        auto listener = makeListener(options, problems, std::move(tap));
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
    makeUserFolder();
    switch (options.mode) {
    case Options::Mode::Command:
        return runCommand(options, library);
    case Options::Mode::Frames:
        return recordFrames(options, library, log);
    case Options::Mode::Preview:
    case Options::Mode::Lint:
        return lookOver(options, library);
    case Options::Mode::Gallery:
    case Options::Mode::View:
    case Options::Mode::Record:
        break;
    }
    return runWindows(options, library, log);
}
