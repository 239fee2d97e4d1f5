#include "Options.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QRegularExpression>

#include <cmath>
#include <optional>

namespace {

constexpr int MaximumFrames = 1'000'000;
constexpr int MaximumSide = 16'384;

struct Declared
{
    QCommandLineOption help{{QStringLiteral("h"), QStringLiteral("help")},
                            QStringLiteral("Show this help.")};
    QCommandLineOption version{{QStringLiteral("v"), QStringLiteral("version")},
                               QStringLiteral("Show the version.")};
    QCommandLineOption window{QStringLiteral("window"),
                              QStringLiteral("Show the live dashboard in a window (the default).")};
    QCommandLineOption frames{
        QStringLiteral("frames"),
        QStringLiteral("Write the frames as PNG files into <dir>, which is made if missing."),
        QStringLiteral("dir")};
    QCommandLineOption count{QStringLiteral("count"),
                             QStringLiteral("Frames to write, 1 to 1000000 (default: 250)."),
                             QStringLiteral("n")};
    QCommandLineOption size{
        QStringLiteral("size"),
        QStringLiteral("Size of the frames in pixels, 2x2 to 16384x16384 (default: 480x272)."),
        QStringLiteral("WxH")};
    QCommandLineOption upsideDown{QStringLiteral("upside-down"),
                                  QStringLiteral("Turn the picture by 180 degrees.")};
    QCommandLineOption dashboard{
        QStringLiteral("dashboard"),
        QStringLiteral("A QML file, or the name of a shipped dashboard (default: Road)."),
        QStringLiteral("file|name")};
    QCommandLineOption telemetry{
        QStringLiteral("telemetry"),
        QStringLiteral("Where telemetry comes from: demo, a lap of a simulated car (the default)."),
        QStringLiteral("source")};
    QCommandLineOption startAt{
        QStringLiteral("start-at"),
        QStringLiteral("Begin this many seconds into the telemetry (default: 0)."),
        QStringLiteral("seconds")};
    QCommandLineOption mph{QStringLiteral("mph"),
                           QStringLiteral("Ask dashboards for miles per hour.")};
    QCommandLineOption noAcceleration{
        QStringLiteral("no-acceleration"),
        QStringLiteral("Run without OpenGL: consumers get a message instead of dashboards.")};
    QCommandLineOption verbose{QStringLiteral("verbose"),
                               QStringLiteral("Print the library's progress messages.")};

    QList<QCommandLineOption> all() const
    {
        return {window,  frames, count,          size,    upsideDown, dashboard, telemetry,
                startAt, mph,    noAcceleration, verbose, help,       version};
    }
};

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

} // namespace

ParsedOptions parseOptions(const QStringList &arguments)
{
    const Declared declared;
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Shows a dashboard of GAUGE64, driven by a simulator's telemetry."));
    parser.addOptions(declared.all());
    if (!parser.parse(arguments))
        return failure(parser.errorText());
    if (parser.isSet(declared.help))
        return {ParsedOptions::Outcome::Print, {}, parser.helpText()};
    if (parser.isSet(declared.version))
        return {
            ParsedOptions::Outcome::Print, {}, QStringLiteral("gauge-host " GAUGE_VERSION "\n")};
    if (!parser.positionalArguments().isEmpty())
        return failure(QStringLiteral("Unexpected argument '%1'.")
                           .arg(parser.positionalArguments().constFirst()));

    Options options;
    if (parser.isSet(declared.frames)) {
        if (parser.isSet(declared.window))
            return failure(QStringLiteral("--window and --frames exclude each other."));
        options.mode = Options::Mode::Frames;
        options.framesDirectory = parser.value(declared.frames);
        if (options.framesDirectory.isEmpty())
            return failure(QStringLiteral("--frames needs a directory."));
    } else if (parser.isSet(declared.count)) {
        return failure(QStringLiteral("--count goes with --frames."));
    }
    if (parser.isSet(declared.count)) {
        bool isNumber = false;
        options.frameCount = parser.value(declared.count).toInt(&isNumber);
        if (!isNumber || options.frameCount < 1 || options.frameCount > MaximumFrames)
            return failure(QStringLiteral("--count takes a number from 1 to %1, not '%2'.")
                               .arg(QString::number(MaximumFrames), parser.value(declared.count)));
    }
    if (parser.isSet(declared.size)) {
        const std::optional<QSize> size = parseSize(parser.value(declared.size));
        if (!size)
            return failure(QStringLiteral("--size takes pixels from 2x2 to 16384x16384, like "
                                          "480x272, not '%1'.")
                               .arg(parser.value(declared.size)));
        options.frameSize = *size;
    }
    if (parser.isSet(declared.dashboard))
        options.dashboard = parser.value(declared.dashboard);
    if (options.dashboard.isEmpty())
        return failure(QStringLiteral("--dashboard needs a file or a name."));
    if (parser.isSet(declared.telemetry))
        options.telemetry = parser.value(declared.telemetry);
    if (options.telemetry != QLatin1String("demo"))
        return failure(
            QStringLiteral("--telemetry knows only 'demo', not '%1'.").arg(options.telemetry));
    if (parser.isSet(declared.startAt)) {
        bool isNumber = false;
        options.startAt = parser.value(declared.startAt).toDouble(&isNumber);
        if (!isNumber || !std::isfinite(options.startAt) || options.startAt < 0)
            return failure(QStringLiteral("--start-at takes seconds from 0 on, not '%1'.")
                               .arg(parser.value(declared.startAt)));
    }
    options.upsideDown = parser.isSet(declared.upsideDown);
    options.useMph = parser.isSet(declared.mph);
    options.hardwareAcceleration = !parser.isSet(declared.noAcceleration);
    options.verbose = parser.isSet(declared.verbose);
    return {ParsedOptions::Outcome::Run, options, {}};
}
