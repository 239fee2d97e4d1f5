#include "Options.h"

#include "CommandSyntax.h"
#include "DeclaredOptions.h"
#include "telemetry/demo/DemoCars.h"
#include "telemetry/recordings/Playback.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QRegularExpression>

#include <cmath>
#include <optional>
#include <vector>

namespace {

constexpr int MaximumFrames = 1'000'000;
constexpr int MaximumSide = 16'384;

// The views of the library.
const QLatin1String WindowView("DashboardWindow");
const QLatin1String EditorView("DashboardEditor");

ParsedOptions failure(const QString &text)
{
    return {ParsedOptions::Outcome::Fail, {}, text};
}

std::optional<QSize> parseSize(const QString &text)
{
    static const QRegularExpression pattern(QStringLiteral("^(\\d{1,5})[xX](\\d{1,5})$"));
    const QRegularExpressionMatch match = pattern.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    const QSize size(match.captured(1).toInt(), match.captured(2).toInt());
    const auto usable = [](int side) { return side >= 2 && side <= MaximumSide; };
    return usable(size.width()) && usable(size.height()) ? std::optional(size) : std::nullopt;
}

/// Reads a whole number within limits; nothing if it is none.
std::optional<int> parseCount(const QString &text, int largest)
{
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    return isNumber && number >= 1 && number <= largest ? std::optional(number) : std::nullopt;
}

// Each of these reads a part of the command line into `options`. The result says what is wrong, or
// is empty.

QString readCommand(const QCommandLineParser &parser, const DeclaredOptions &declared,
                    Options &options)
{
    const QStringList words = parser.positionalArguments();
    if (words.isEmpty())
        return {};
    const QString error = readCommandWords(words, options);
    if (!error.isEmpty())
        return error;
    std::vector<const QCommandLineOption *> forbidden = declared.picture();
    if (options.mode != Options::Mode::Record) {
        const auto sources = declared.sources();
        forbidden.insert(forbidden.end(), sources.begin(), sources.end());
    }
    for (const QCommandLineOption *option : forbidden) {
        if (parser.isSet(*option)) {
            return QStringLiteral("--%1 doesn't go with '%2'.")
                .arg(option->names().constFirst(), words.constFirst());
        }
    }
    options.profile.json = parser.isSet(declared.json);
    return {};
}

QString readMode(const QCommandLineParser &parser, const DeclaredOptions &declared,
                 Options &options)
{
    const bool lists = options.mode == Options::Mode::Profile &&
                       options.profile.verb == ProfileCommand::Verb::List;
    if (parser.isSet(declared.json) && !lists)
        return QStringLiteral("--json goes with 'profiles list'.");
    options.preview.output = parser.value(declared.output);
    if (parser.isSet(declared.output) &&
        (options.mode != Options::Mode::Preview || options.preview.output.isEmpty()))
        return QStringLiteral("--output takes a file and goes with 'preview'.");
    return {};
}

QString readView(const QCommandLineParser &parser, const DeclaredOptions &declared,
                 Options &options)
{
    if (parser.isSet(declared.view)) {
        options.windows.view = parser.value(declared.view);
        if (options.windows.view != WindowView && options.windows.view != EditorView) {
            return QStringLiteral("--view knows %1 and %2, not '%3'.")
                .arg(WindowView, EditorView, options.windows.view);
        }
    }
    if (parser.isSet(declared.window)) {
        if (options.windows.view == EditorView)
            return QStringLiteral("--window and --view DashboardEditor exclude each other.");
        options.windows.view = WindowView;
    }
    if (parser.isSet(declared.dashboard) && !parser.isSet(declared.frames)) {
        if (options.windows.view == EditorView)
            return QStringLiteral("--dashboard goes with no editor; name the file with --path.");
        options.windows.view = WindowView;
    }
    if (parser.isSet(declared.path)) {
        options.windows.path = parser.value(declared.path);
        if (options.windows.view != EditorView)
            return QStringLiteral("--path goes with --view DashboardEditor.");
        if (options.windows.path.isEmpty())
            return QStringLiteral("--path needs a file.");
    }
    return {};
}

QString readFrames(const QCommandLineParser &parser, const DeclaredOptions &declared,
                   Options &options)
{
    if (!parser.isSet(declared.frames)) {
        for (const QCommandLineOption *option : {&declared.count, &declared.upsideDown}) {
            if (parser.isSet(*option))
                return QStringLiteral("--%1 goes with --frames.").arg(option->names().constFirst());
        }
        if (parser.isSet(declared.size) && options.windows.view.isEmpty())
            return QStringLiteral("--size goes with --frames, --window or --view.");
        return {};
    }
    if (!options.windows.view.isEmpty())
        return QStringLiteral("--frames shows no window, so it excludes --window and --view.");
    options.mode = Options::Mode::Frames;
    options.frames.directory = parser.value(declared.frames);
    return options.frames.directory.isEmpty() ? QStringLiteral("--frames needs a directory.")
                                              : QString();
}

QString readPicture(const QCommandLineParser &parser, const DeclaredOptions &declared,
                    Options &options)
{
    if (parser.isSet(declared.count)) {
        const QString text = parser.value(declared.count);
        const std::optional<int> count = parseCount(text, MaximumFrames);
        if (!count) {
            return QStringLiteral("--count takes a number from 1 to %1, not '%2'.")
                .arg(QString::number(MaximumFrames), text);
        }
        options.frames.count = *count;
    }
    if (parser.isSet(declared.size)) {
        const QString text = parser.value(declared.size);
        const std::optional<QSize> size = parseSize(text);
        if (!size) {
            return QStringLiteral("--size takes pixels from 2x2 to 16384x16384, like 480x272, not "
                                  "'%1'.")
                .arg(text);
        }
        options.frames.size = options.windows.size = *size;
    }
    if (parser.isSet(declared.dashboard)) {
        options.session.dashboard = parser.value(declared.dashboard);
        if (options.session.dashboard.isEmpty())
            return QStringLiteral("--dashboard needs a file, a name or an id.");
    }
    options.frames.upsideDown = parser.isSet(declared.upsideDown);
    return {};
}

QString readTelemetry(const QCommandLineParser &parser, const DeclaredOptions &declared,
                      Options &options)
{
    TelemetryRequest &request = options.session.telemetry;
    if (parser.isSet(declared.telemetry)) {
        request.source = parser.value(declared.telemetry);
        const QStringList names = TelemetryRequest::names();
        if (!names.contains(request.source) && !request.isFile())
            return QStringLiteral("--telemetry knows %1, and files, not '%2'.")
                .arg(names.join(QStringLiteral(", ")), request.source);
    }
    if (parser.isSet(declared.demoCars)) {
        const QString text = parser.value(declared.demoCars);
        const std::optional<int> cars = parseCount(text, DemoCars::MaximumCars);
        if (!cars) {
            return QStringLiteral("--demo-cars takes a number from 1 to %1, not '%2'.")
                .arg(QString::number(DemoCars::MaximumCars), text);
        }
        request.demoCars = *cars;
    }
    if (parser.isSet(declared.startAt)) {
        bool isNumber = false;
        request.startAt = parser.value(declared.startAt).toDouble(&isNumber);
        if (!isNumber || !std::isfinite(request.startAt) || request.startAt < 0) {
            return QStringLiteral("--start-at takes seconds from 0 on, not '%1'.")
                .arg(parser.value(declared.startAt));
        }
    }
    return {};
}

QString readNetwork(const QCommandLineParser &parser, const DeclaredOptions &declared,
                    Options &options)
{
    TelemetryRequest &request = options.session.telemetry;
    const bool hears = options.mode == Options::Mode::Record ||
                       (request.source != QLatin1String("demo") && !request.isDrive());
    for (const QCommandLineOption *option : {&declared.listen, &declared.port}) {
        if (parser.isSet(*option) && !hears) {
            return QStringLiteral("--%1 goes with --telemetry auto or a feed of games.")
                .arg(option->names().constFirst());
        }
    }
    // Who records, or names a port or a feed, means games.
    const bool meansGames = options.mode == Options::Mode::Record ||
                            parser.isSet(declared.listen) || parser.isSet(declared.port) ||
                            parser.isSet(declared.feed);
    if (request.source.isEmpty() && meansGames)
        request.source = QStringLiteral("auto");
    if (parser.isSet(declared.listen) &&
        !request.listenAddress.setAddress(parser.value(declared.listen))) {
        return QStringLiteral("--listen takes an IP address, such as 0.0.0.0, not '%1'.")
            .arg(parser.value(declared.listen));
    }
    if (parser.isSet(declared.port)) {
        const std::optional<int> port = parseCount(parser.value(declared.port), 65'535);
        if (!port) {
            return QStringLiteral("--port takes a number from 1 to 65535, not '%1'.")
                .arg(parser.value(declared.port));
        }
        request.port = static_cast<quint16>(*port);
    }
    return {};
}

/// Reads a number within limits, ends included, if the option is set.
QString readNumber(const QCommandLineParser &parser, const QCommandLineOption &option, double least,
                   double most, double &number)
{
    if (!parser.isSet(option))
        return {};
    bool isNumber = false;
    number = parser.value(option).toDouble(&isNumber);
    if (isNumber && number >= least && number <= most)
        return {};
    return QStringLiteral("--%1 takes a number from %2 to %3, not '%4'.")
        .arg(option.names().constFirst(), QString::number(least), QString::number(most),
             parser.value(option));
}

QString readDrive(const QCommandLineParser &parser, const DeclaredOptions &declared,
                  Options &options)
{
    TelemetryRequest &request = options.session.telemetry;
    constexpr double LongestRecording = 1'000'000; // Seconds; eleven days.
    const bool records = options.mode == Options::Mode::Record;
    const bool plays = request.isDrive();
    for (const QCommandLineOption *option : {&declared.duration, &declared.force}) {
        if (parser.isSet(*option) && !records)
            return QStringLiteral("--%1 goes with 'record'.").arg(option->names().constFirst());
    }
    for (const QCommandLineOption *option : {&declared.speed, &declared.loop}) {
        if (parser.isSet(*option) && (!plays || records)) {
            return QStringLiteral("--%1 goes with a recorded drive, --telemetry FILE.")
                .arg(option->names().constFirst());
        }
    }
    if (records && parser.isSet(declared.telemetry) &&
        (plays || request.source == QLatin1String("demo")))
        return QStringLiteral("'record' takes what games send, not --telemetry %1.")
            .arg(request.source);
    if (plays && !parser.isSet(declared.startAt))
        request.startAt = 0;
    if (parser.isSet(declared.feed) && !records && request.source == QLatin1String("demo"))
        return QStringLiteral("--feed doesn't go with the demo.");
    request.feedFiles = parser.values(declared.feed);
    request.loop = parser.isSet(declared.loop);
    options.record.overwrite = parser.isSet(declared.force);
    const QString error = readNumber(parser, declared.speed, Playback::SlowestSpeed,
                                     Playback::FastestSpeed, request.speed);
    return error.isEmpty()
               ? readNumber(parser, declared.duration, 1, LongestRecording, options.record.seconds)
               : error;
}

QString readUnits(const QCommandLineParser &parser, const DeclaredOptions &declared,
                  Options &options)
{
    const bool mph = parser.isSet(declared.mph);
    const bool kmh = parser.isSet(declared.kmh);
    if (mph && kmh)
        return QStringLiteral("--mph and --kmh exclude each other.");
    if (mph || kmh)
        options.session.useMph = mph;
    return {};
}

} // namespace

ParsedOptions parseOptions(const QStringList &arguments)
{
    const DeclaredOptions declared;
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Shows dashboards of GAUGE64, driven by a simulator's telemetry. Without "
                       "arguments it opens the gallery."));
    parser.addOptions(declared.all());
    parser.addPositionalArgument(
        QStringLiteral("command"),
        QStringLiteral("'record ...', 'profiles ...' and others, see below."),
        QStringLiteral("[command]"));
    for (const QString &argument : arguments) {
        // What stands for bytes that are no text would name another file than was meant.
        if (argument.contains(QChar::ReplacementCharacter))
            return failure(QStringLiteral("An argument is no valid text: '%1'.").arg(argument));
    }
    if (!parser.parse(arguments))
        return failure(parser.errorText());
    if (parser.isSet(declared.help))
        return {ParsedOptions::Outcome::Print, {}, parser.helpText() + commandsHelp()};
    if (parser.isSet(declared.version)) {
        return {
            ParsedOptions::Outcome::Print, {}, QStringLiteral("gauge-host " GAUGE_VERSION "\n")};
    }

    Options options;
    for (const auto read : {readCommand, readMode, readView, readPicture, readFrames, readTelemetry,
                            readNetwork, readDrive, readUnits}) {
        const QString error = read(parser, declared, options);
        if (!error.isEmpty())
            return failure(error);
    }
    options.session.hardwareAcceleration = !parser.isSet(declared.noAcceleration);
    options.verbose = parser.isSet(declared.verbose);
    return {ParsedOptions::Outcome::Run, options, {}};
}
