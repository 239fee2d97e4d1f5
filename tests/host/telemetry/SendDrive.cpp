#include "telemetry/recordings/OpenDrive.h"
#include "telemetry/recordings/Playback.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QCoreApplication>
#include <QtNetwork/QUdpSocket>

#include <chrono>
#include <cstdio>
#include <thread>

// Plays a game: sends the datagrams of a drive in a file again, at the drive's pace, to the ports
// of this computer that they went to.

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("file"), QStringLiteral("A recording or capture."));
    const QCommandLineOption port(QStringLiteral("port"), QStringLiteral("Send there."),
                                  QStringLiteral("N"));
    parser.addOption(port);
    parser.process(application);
    const quint16 wished = parser.value(port).toUShort();

    QString error;
    std::unique_ptr<DatagramReader> reader =
        openDrive(parser.positionalArguments().value(0), error);
    if (reader == nullptr) {
        std::fprintf(stderr, "%s\n", qPrintable(error));
        return 1;
    }
    Playback playback(std::move(reader), {});
    QUdpSocket socket;
    const auto start = std::chrono::steady_clock::now();
    while (const auto due = playback.nextDue()) {
        std::this_thread::sleep_until(start + *due);
        if (const auto datagram = playback.take(*due))
            socket.writeDatagram(datagram->payload, QHostAddress::LocalHost,
                                 wished != 0 ? wished : datagram->sender.toPort);
    }
    return 0;
}
