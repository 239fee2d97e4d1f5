#pragma once

#include "telemetry/feeds/KnownFeeds.h"

#include <QtCore/QCommandLineOption>
#include <QtCore/QList>
#include <QtCore/QString>

#include <vector>

/// The options of the command line, with the help on each.
struct DeclaredOptions
{
    QCommandLineOption help{{QStringLiteral("h"), QStringLiteral("help")},
                            QStringLiteral("Show this help.")};
    QCommandLineOption version{{QStringLiteral("v"), QStringLiteral("version")},
                               QStringLiteral("Show the version.")};
    QCommandLineOption window{
        QStringLiteral("window"),
        QStringLiteral("Show the live dashboard alone; the same as --view DashboardWindow.")};
    QCommandLineOption view{
        QStringLiteral("view"),
        QStringLiteral("Show one view alone: DashboardWindow or DashboardEditor."),
        QStringLiteral("name")};
    QCommandLineOption path{QStringLiteral("path"),
                            QStringLiteral("With --view DashboardEditor: the QML file to edit."),
                            QStringLiteral("file")};
    QCommandLineOption frames{
        QStringLiteral("frames"),
        QStringLiteral("Write the frames as PNG files into <dir>, which is made if missing."),
        QStringLiteral("dir")};
    QCommandLineOption count{QStringLiteral("count"),
                             QStringLiteral("Frames to write, 1 to 1000000 (default: 250)."),
                             QStringLiteral("n")};
    QCommandLineOption size{
        QStringLiteral("size"),
        QStringLiteral("Size in pixels, 2x2 to 16384x16384: of the frames (default: 480x272), or "
                       "of the view's window (default: as it was left)."),
        QStringLiteral("WxH")};
    QCommandLineOption upsideDown{QStringLiteral("upside-down"),
                                  QStringLiteral("Turn the frames by 180 degrees.")};
    QCommandLineOption dashboard{
        QStringLiteral("dashboard"),
        QStringLiteral(
            "Show this one, whatever vehicle is driven: a QML file, or the name or id of "
            "a dashboard. Without it the collection decides. Goes with --window, which it implies, "
            "and --frames."),
        QStringLiteral("file|name|id")};
    QCommandLineOption telemetry{
        QStringLiteral("telemetry"),
        QStringLiteral("Where telemetry comes from: demo, a lap of a simulated car (the default); "
                       "auto, whatever game sends; or one feed alone: %1; or a "
                       "file: a recorded drive, or the JSON description of a feed.")
            .arg(knownFeedOptions().join(QStringLiteral(", "))),
        QStringLiteral("source")};
    QCommandLineOption listen{
        QStringLiteral("listen"),
        QStringLiteral("Hear games on this address of the computer, such as 0.0.0.0 for all of "
                       "IPv4, or in this multicast group, and so from other computers (default: "
                       "from this one only)."),
        QStringLiteral("address")};
    QCommandLineOption port{
        QStringLiteral("port"),
        QStringLiteral("Hear games on this UDP port alone, 1 to 65535 (default: the usual ones)."),
        QStringLiteral("n")};
    QCommandLineOption feed{
        QStringLiteral("feed"),
        QStringLiteral("Understand the feed that this JSON file describes, too. May be repeated."),
        QStringLiteral("file")};
    QCommandLineOption speed{QStringLiteral("speed"),
                             QStringLiteral("Play a drive at this many times its own pace, 0.1 to "
                                            "100 (default: 1)."),
                             QStringLiteral("n")};
    QCommandLineOption loop{QStringLiteral("loop"),
                            QStringLiteral("Play a drive again and again.")};
    QCommandLineOption duration{QStringLiteral("duration"),
                                QStringLiteral("With 'record': end after this many seconds."),
                                QStringLiteral("seconds")};
    QCommandLineOption force{QStringLiteral("force"),
                             QStringLiteral("With 'record': overwrite a file that is there.")};
    QCommandLineOption demoCars{
        QStringLiteral("demo-cars"),
        QStringLiteral("Cars that the demo drives in turn, 20 seconds each, 1 to 3 (default: 1)."),
        QStringLiteral("n")};
    QCommandLineOption startAt{QStringLiteral("start-at"),
                               QStringLiteral("Begin this many seconds into the telemetry "
                                              "(default: 180 in the demo, in its third lap; 0 in "
                                              "a recorded drive)."),
                               QStringLiteral("seconds")};
    QCommandLineOption mph{
        QStringLiteral("mph"),
        QStringLiteral("Ask dashboards for miles per hour (default: as set; km/h for frames).")};
    QCommandLineOption kmh{QStringLiteral("kmh"),
                           QStringLiteral("Ask dashboards for kilometres per hour.")};
    QCommandLineOption noAcceleration{
        QStringLiteral("no-acceleration"),
        QStringLiteral("Run without OpenGL: consumers get a message instead of dashboards.")};
    QCommandLineOption json{QStringLiteral("json"),
                            QStringLiteral("With 'profiles list': print JSON.")};
    QCommandLineOption output{QStringLiteral("output"),
                              QStringLiteral("With 'preview': the PNG file to write (default: "
                                             "preview.png beside the dashboard)."),
                              QStringLiteral("file")};
    QCommandLineOption verbose{QStringLiteral("verbose"),
                               QStringLiteral("Print the library's progress messages.")};

    /// What a recording can't use.
    std::vector<const QCommandLineOption *> picture() const
    {
        return {&window,    &view, &path, &frames,   &count,   &size,          &upsideDown,
                &dashboard, &mph,  &kmh,  &demoCars, &startAt, &noAcceleration};
    }

    /// Where telemetry comes from.
    std::vector<const QCommandLineOption *> sources() const
    {
        return {&telemetry, &listen, &port, &feed};
    }

    QList<QCommandLineOption> all() const
    {
        return {window,    view,   path,  frames, count,  size,    upsideDown, dashboard,
                telemetry, listen, port,  feed,   speed,  loop,    demoCars,   startAt,
                mph,       kmh,    force, json,   output, verbose, duration,   noAcceleration,
                help,      version};
    }
};
