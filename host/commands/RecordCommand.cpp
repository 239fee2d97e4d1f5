#include "RecordCommand.h"

#include "system/Terminal.h"
#include "system/Termination.h"
#include "telemetry/recordings/RecordingWriter.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QTimer>

#include <cstdio>

namespace {

constexpr int CheckPeriodMs = 100;

QString megabytes(qint64 bytes)
{
    return QStringLiteral("%1 MB").arg(static_cast<double>(bytes) / 1e6, 0, 'f', 2);
}

QString summary(const RecordingWriter::Progress &progress, double seconds)
{
    const double rate = seconds > 0 ? static_cast<double>(progress.datagrams) / seconds : 0;
    return QStringLiteral("datagrams %1, time %2 s, rate %3/s, size %4")
        .arg(progress.datagrams)
        .arg(seconds, 0, 'f', 1)
        .arg(rate, 0, 'f', 1)
        .arg(megabytes(progress.bytes));
}

/// Waits until time is up, the writer fails or the program is to end, and shows the progress.
/// Returns the time in seconds.
double waitForEnd(const RecordingWriter &writer, double seconds)
{
    QElapsedTimer elapsed;
    elapsed.start();
    const auto soFar = [&elapsed] { return static_cast<double>(elapsed.nsecsElapsed()) / 1e9; };
    QEventLoop loop;
    QTimer check;
    QObject::connect(&check, &QTimer::timeout, &loop, [&] {
        const bool timeIsUp = seconds > 0 && soFar() >= seconds;
        if (timeIsUp || !writer.error().isEmpty()) {
            loop.quit();
            return;
        }
        if (standardErrorIsTerminal()) {
            clearLine();
            std::fputs(qUtf8Printable(summary(writer.progress(), soFar())), stderr);
            std::fflush(stderr);
        }
    });
    check.start(CheckPeriodMs);
    loop.exec();
    clearLine();
    return soFar();
}

} // namespace

int recordDrive(const RecordCommand &command,
                const std::function<std::unique_ptr<UdpListener>(UdpListener::Tap)> &listen)
{
    const Termination termination; // Lives until the last datagram is written.
    RecordingWriter writer(command.path, command.overwrite ? RecordingWriter::Existing::Overwrite
                                                           : RecordingWriter::Existing::Keep);
    if (!writer.error().isEmpty()) {
        printError(writer.error());
        return 1;
    }
    double seconds = 0;
    {
        const std::unique_ptr<UdpListener> listener =
            listen([&writer](const Datagram &datagram) { writer.add(datagram); });
        if (listener == nullptr)
            return 1;
        printLine(QStringLiteral("Recording to '%1'. Stop with Ctrl+C.")
                      .arg(QDir::toNativeSeparators(command.path)));
        seconds = waitForEnd(writer, command.seconds);
    }
    writer.flush();
    const RecordingWriter::Progress progress = writer.progress();
    if (!writer.error().isEmpty())
        printError(writer.error());
    if (progress.dropped > 0)
        printError(QStringLiteral("Datagrams lost: %1.").arg(progress.dropped));
    if (progress.datagrams == 0) {
        if (progress.dropped == 0)
            printError(QStringLiteral("No datagrams arrived, so no file was written."));
        return 1;
    }
    std::printf("%s\n", qUtf8Printable(summary(progress, seconds)));
    return writer.error().isEmpty() && progress.dropped == 0 ? 0 : 1;
}
