#pragma once

#include "telemetry/TelemetryRequest.h"

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
        QStringLiteral("Show only the live dashboard; the same as --view DashboardWindow.")};
    QCommandLineOption view{
        QStringLiteral("view"),
        QStringLiteral("Show only one view: DashboardWindow or DashboardEditor."),
        QStringLiteral("name")};
    QCommandLineOption path{QStringLiteral("path"),
                            QStringLiteral("With --view DashboardEditor: the QML file to edit."),
                            QStringLiteral("file")};
    QCommandLineOption frames{
        QStringLiteral("frames"),
        QStringLiteral("Write frames as PNG files into <dir>, which is created if missing."),
        QStringLiteral("dir")};
    QCommandLineOption count{
        QStringLiteral("count"),
        QStringLiteral("Number of frames to write, 1 to 1000000 (default: 250)."),
        QStringLiteral("n")};
    QCommandLineOption size{
        QStringLiteral("size"),
        QStringLiteral("Size in pixels, 2x2 to 16384x16384, of the frames (default: 480x272) or of "
                       "the view's window (default: its last size)."),
        QStringLiteral("WxH")};
    QCommandLineOption upsideDown{QStringLiteral("upside-down"),
                                  QStringLiteral("Turn the frames by 180 degrees.")};
    QCommandLineOption dashboard{
        QStringLiteral("dashboard"),
        QStringLiteral(
            "Show this dashboard whatever vehicle is driven: a QML file, or a dashboard's name or "
            "id. By default the vehicle decides. Implies --window unless --frames is given."),
        QStringLiteral("file|name|id")};
    QCommandLineOption telemetry{
        QStringLiteral("telemetry"),
        QStringLiteral(
            "Telemetry source: %1; or a file: a recorded drive (pcap or pcapng), or "
            "the JSON description of a feed. demo, the default, is a race of a simulated car; "
            "auto is any game that sends; the others are one feed each.")
            .arg(TelemetryRequest::names().join(QStringLiteral(", "))),
        QStringLiteral("source")};
    QCommandLineOption listen{
        QStringLiteral("listen"),
        QStringLiteral(
            "Listen for games on this address of the computer, such as 0.0.0.0 for all IPv4 "
            "addresses, or in this multicast group. By default only this computer can send."),
        QStringLiteral("address")};
    QCommandLineOption port{QStringLiteral("port"),
                            QStringLiteral("Listen for games on this UDP port only, 1 to 65535 "
                                           "(default: each feed's usual ports)."),
                            QStringLiteral("n")};
    QCommandLineOption feed{
        QStringLiteral("feed"),
        QStringLiteral("Also decode the feed that this JSON file describes. May be repeated."),
        QStringLiteral("file")};
    QCommandLineOption speed{
        QStringLiteral("speed"),
        QStringLiteral("Play a recorded drive this many times as fast, 0.1 to 100 (default: 1)."),
        QStringLiteral("n")};
    QCommandLineOption loop{QStringLiteral("loop"),
                            QStringLiteral("Repeat a recorded drive for ever.")};
    QCommandLineOption duration{QStringLiteral("duration"),
                                QStringLiteral("With 'record': stop after this many seconds."),
                                QStringLiteral("seconds")};
    QCommandLineOption force{QStringLiteral("force"),
                             QStringLiteral("With 'record': overwrite an existing file.")};
    QCommandLineOption demoCars{
        QStringLiteral("demo-cars"),
        QStringLiteral(
            "Number of cars that the demo drives in turn, 20 seconds each, 1 to 3 (default: 1)."),
        QStringLiteral("n")};
    QCommandLineOption startAt{
        QStringLiteral("start-at"),
        QStringLiteral("Start this many seconds into the telemetry (default: 180 in the demo, in "
                       "its third lap; 0 in a recorded drive)."),
        QStringLiteral("seconds")};
    QCommandLineOption mph{
        QStringLiteral("mph"),
        QStringLiteral("Show miles per hour (default: as set; km/h for frames).")};
    QCommandLineOption kmh{QStringLiteral("kmh"), QStringLiteral("Show kilometres per hour.")};
    QCommandLineOption noAcceleration{
        QStringLiteral("no-acceleration"),
        QStringLiteral("Run without OpenGL: a message is shown instead of dashboards.")};
    QCommandLineOption json{QStringLiteral("json"),
                            QStringLiteral("With 'profiles list': print JSON.")};
    QCommandLineOption output{
        QStringLiteral("output"),
        QStringLiteral(
            "With 'preview': the PNG file to write (default: preview.png beside the dashboard)."),
        QStringLiteral("file")};
    QCommandLineOption verbose{QStringLiteral("verbose"),
                               QStringLiteral("Print the library's progress messages.")};

    /// About windows, frames and the demo; no command takes these.
    std::vector<const QCommandLineOption *> picture() const
    {
        return {&window,    &view, &path, &frames,   &count,   &size,          &upsideDown,
                &dashboard, &mph,  &kmh,  &demoCars, &startAt, &noAcceleration};
    }

    /// About telemetry from games; of the commands only 'record' takes these.
    std::vector<const QCommandLineOption *> sources() const
    {
        return {&telemetry, &listen, &port, &feed};
    }

    /// In the order of the help.
    QList<QCommandLineOption> all() const
    {
        return {window,     view,           path,    dashboard, size,  frames,   count,
                upsideDown, telemetry,      listen,  port,      feed,  startAt,  speed,
                loop,       demoCars,       mph,     kmh,       force, duration, json,
                output,     noAcceleration, verbose, version,   help};
    }
};
