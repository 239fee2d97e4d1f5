#include "Options.h"

#include "CommandSyntax.h"
#include "DeclaredOptions.h"
#include "telemetry/demo/DemoCars.h"
#include "telemetry/recordings/Playback.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QRegularExpression>

#include <cmath>
#include <initializer_list>
#include <optional>
#include <type_traits>
#include <vector>

namespace {

constexpr int MaximumFrames = 1'000'000;
constexpr int MaximumSide = 16'384;
constexpr double LongestRecording = 1'000'000; // Seconds; eleven days.

// The views of the library.
const QLatin1String WindowView("DashboardWindow");
const QLatin1String EditorView("DashboardEditor");

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

/// Reads parsed arguments into options, part by part. Reports only the first error.
class OptionsReader
{
public:
    OptionsReader(const QCommandLineParser &parser, const DeclaredOptions &declared)
        : parser(parser)
        , declared(declared)
    {
    }

    ParsedOptions read()
    {
        readCommand();
        readView();
        readPicture();
        readFrames();
        readTelemetry();
        readNetwork();
        readDrive();
        options.session.hardwareAcceleration = !has(declared.noAcceleration);
        options.verbose = has(declared.verbose);
        if (!error.isEmpty())
            return {ParsedOptions::Outcome::Fail, {}, error};
        return {ParsedOptions::Outcome::Run, options, {}};
    }

private:
    bool has(const QCommandLineOption &option) const { return parser.isSet(option); }

    static QString nameOf(const QCommandLineOption &option)
    {
        return QStringLiteral("--") + option.names().constFirst();
    }

    void fail(const QString &text)
    {
        if (error.isEmpty())
            error = text;
    }

    /// Fails if one of the options is set and what it needs isn't there.
    void require(std::initializer_list<const QCommandLineOption *> dependent, bool there,
                 const char *needed)
    {
        for (const QCommandLineOption *option : dependent) {
            if (has(*option) && !there)
                fail(QStringLiteral("%1 needs %2.").arg(nameOf(*option), QLatin1String(needed)));
        }
    }

    /// The value of an option, empty if it isn't set. Fails if it is set to nothing.
    QString textOf(const QCommandLineOption &option, const char *needed)
    {
        QString text = parser.value(option);
        require({&option}, !text.isEmpty(), needed);
        return text;
    }

    /// Reads a number, if the option is set, into `number`. Both limits are included.
    template<typename Number>
    void readNumber(const QCommandLineOption &option, Number least, Number most, Number &number)
    {
        if (!has(option))
            return;
        const QString text = parser.value(option);
        bool isNumber = false;
        Number value{};
        if constexpr (std::is_integral_v<Number>)
            value = text.toInt(&isNumber);
        else
            value = text.toDouble(&isNumber);
        constexpr int Digits = 10;
        if (isNumber && value >= least && value <= most) {
            number = value;
        } else {
            fail(QStringLiteral("%1 takes a number from %2 to %3, not '%4'.")
                     .arg(nameOf(option), QString::number(double(least), 'g', Digits),
                          QString::number(double(most), 'g', Digits), text));
        }
    }

    void readCommand()
    {
        const QStringList words = parser.positionalArguments();
        if (!words.isEmpty()) {
            fail(readCommandWords(words, options));
            std::vector<const QCommandLineOption *> forbidden = declared.picture();
            const auto sources = declared.sources();
            if (options.mode != Options::Mode::Record)
                forbidden.insert(forbidden.end(), sources.begin(), sources.end());
            for (const QCommandLineOption *option : forbidden) {
                if (has(*option)) {
                    fail(QStringLiteral("%1 can't be used with '%2'.")
                             .arg(nameOf(*option), words.constFirst()));
                }
            }
        }
        const bool records = options.mode == Options::Mode::Record;
        const bool lists = options.mode == Options::Mode::Profile &&
                           options.profile.verb == ProfileCommand::Verb::List;
        require({&declared.json}, lists, "'profiles list'");
        require({&declared.output}, options.mode == Options::Mode::Preview, "'preview'");
        require({&declared.duration, &declared.force}, records, "'record'");
        options.profile.json = has(declared.json);
        options.preview.output = textOf(declared.output, "a file");
        options.record.overwrite = has(declared.force);
        readNumber(declared.duration, 1.0, LongestRecording, options.record.seconds);
    }

    void readView()
    {
        QString &view = options.windows.view;
        if (has(declared.view)) {
            view = parser.value(declared.view);
            if (view != WindowView && view != EditorView) {
                fail(QStringLiteral("--view takes %1 or %2, not '%3'.")
                         .arg(WindowView, EditorView, view));
            }
        }
        if (view == EditorView && has(declared.window))
            fail(QStringLiteral("--window and --view DashboardEditor exclude each other."));
        if (view == EditorView && has(declared.dashboard)) {
            fail(QStringLiteral(
                "--dashboard can't be used with the editor; name the file by --path."));
        }
        if (has(declared.window) || (has(declared.dashboard) && !has(declared.frames)))
            view = WindowView;
        require({&declared.path}, view == EditorView, "--view DashboardEditor");
        options.windows.path = textOf(declared.path, "a file");
    }

    void readPicture()
    {
        if (has(declared.size)) {
            const QString text = parser.value(declared.size);
            options.frames.size = options.windows.size = parseSize(text);
            if (!options.frames.size) {
                fail(QStringLiteral("--size takes pixels from 2x2 to %1x%1, like 480x272, not "
                                    "'%2'.")
                         .arg(QString::number(MaximumSide), text));
            }
        }
        options.session.dashboard = textOf(declared.dashboard, "a file, a name or an id");
        if (has(declared.mph) && has(declared.kmh))
            fail(QStringLiteral("--mph and --kmh exclude each other."));
        if (has(declared.mph) || has(declared.kmh))
            options.session.useMph = has(declared.mph);
    }

    void readFrames()
    {
        const bool frames = has(declared.frames);
        const bool view = !options.windows.view.isEmpty();
        if (frames && view)
            fail(QStringLiteral("--frames excludes --window and --view."));
        require({&declared.count, &declared.upsideDown}, frames, "--frames");
        require({&declared.size}, frames || view, "--frames, --window or --view");
        if (frames)
            options.mode = Options::Mode::Frames;
        options.frames.directory = textOf(declared.frames, "a directory");
        options.frames.upsideDown = has(declared.upsideDown);
        readNumber(declared.count, 1, MaximumFrames, options.frames.count);
    }

    void readTelemetry()
    {
        TelemetryRequest &request = options.session.telemetry;
        if (has(declared.telemetry)) {
            request.source = parser.value(declared.telemetry);
            const QStringList names = TelemetryRequest::names();
            if (!names.contains(request.source) && !request.isFile()) {
                fail(QStringLiteral("--telemetry takes %1 or a file, not '%2'.")
                         .arg(names.join(QStringLiteral(", ")), request.source));
            }
        }
        readNumber(declared.demoCars, 1, DemoCars::MaximumCars, request.demoCars);
        if (request.isDrive())
            request.startAt = 0;
        if (has(declared.startAt)) {
            bool isNumber = false;
            request.startAt = parser.value(declared.startAt).toDouble(&isNumber);
            if (!isNumber || !std::isfinite(request.startAt) || request.startAt < 0) {
                fail(QStringLiteral("--start-at takes a number of seconds from 0 up, not '%1'.")
                         .arg(parser.value(declared.startAt)));
            }
        }
    }

    void readNetwork()
    {
        TelemetryRequest &request = options.session.telemetry;
        const bool records = options.mode == Options::Mode::Record;
        const bool isDemo = request.source == QLatin1String("demo");
        if (records && (isDemo || request.isDrive())) {
            fail(QStringLiteral("'record' needs telemetry from games, not --telemetry %1.")
                     .arg(request.source));
        }
        require({&declared.listen, &declared.port}, !isDemo && !request.isDrive(),
                "telemetry from games, such as --telemetry auto");
        if (isDemo && has(declared.feed))
            fail(QStringLiteral("--feed can't be used with the demo."));
        const bool meansGames =
            records || has(declared.listen) || has(declared.port) || has(declared.feed);
        if (request.source.isEmpty() && meansGames)
            request.source = QStringLiteral("auto");
        request.feedFiles = parser.values(declared.feed);
        if (has(declared.listen) &&
            !request.listenAddress.setAddress(parser.value(declared.listen))) {
            fail(QStringLiteral("--listen takes an IP address, such as 0.0.0.0, not '%1'.")
                     .arg(parser.value(declared.listen)));
        }
        constexpr int LargestPort = 65'535;
        int port = 0;
        readNumber(declared.port, 1, LargestPort, port);
        request.port = static_cast<quint16>(port);
    }

    void readDrive()
    {
        TelemetryRequest &request = options.session.telemetry;
        require({&declared.speed, &declared.loop}, request.isDrive(),
                "a recorded drive, --telemetry FILE");
        request.loop = has(declared.loop);
        readNumber(declared.speed, Playback::SlowestSpeed, Playback::FastestSpeed, request.speed);
    }

    const QCommandLineParser &parser;
    const DeclaredOptions &declared;
    Options options;
    QString error;
};

} // namespace

ParsedOptions parseOptions(const QStringList &arguments)
{
    const auto failure = [](const QString &text) {
        return ParsedOptions{ParsedOptions::Outcome::Fail, {}, text};
    };
    const auto print = [](const QString &text) {
        return ParsedOptions{ParsedOptions::Outcome::Print, {}, text};
    };
    const DeclaredOptions declared;
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Shows GAUGE64 dashboards driven by a simulator's telemetry. Without "
                       "arguments it opens the gallery."));
    parser.addOptions(declared.all());
    parser.addPositionalArgument(QStringLiteral("command"),
                                 QStringLiteral("One of the commands below."),
                                 QStringLiteral("[command]"));
    for (const QString &argument : arguments) {
        // Bytes that don't decode would name another file than the user meant.
        if (argument.contains(QChar::ReplacementCharacter))
            return failure(QStringLiteral("An argument isn't valid text: '%1'.").arg(argument));
    }
    if (!parser.parse(arguments))
        return failure(parser.errorText());
    if (parser.isSet(declared.help))
        return print(parser.helpText() + commandsHelp());
    if (parser.isSet(declared.version))
        return print(QStringLiteral("gauge-host " GAUGE_VERSION "\n"));
    return OptionsReader(parser, declared).read();
}
