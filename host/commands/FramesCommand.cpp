#include "FramesCommand.h"

#include "FrameWriter.h"
#include "session/Session.h"
#include "system/MessageLog.h"
#include "system/ProgressBar.h"
#include "system/Terminal.h"

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QEventLoop>
#include <QtCore/QTimer>

#include <cstdio>

namespace {

constexpr int StallMs = 15'000; ///< Longer than any load. Telemetry never pauses this long.

/// How the writing went.
struct Course
{
    bool documentFailed = false;
    bool stalled = false;
    double seconds = 0; ///< From the first frame to the last.
    int updatesSent = 0;
};

/// Starts telemetry once the consumer is registered, and waits for the last frame or a failure.
Course write(FrameWriter &writer, int count, Session &session, const MessageLog &log)
{
    Course course;
    const ProgressBar bar(count);
    QEventLoop loop;
    QElapsedTimer sinceFirstFrame;
    QTimer stall;
    stall.setSingleShot(true);
    stall.setInterval(StallMs);
    QObject::connect(&writer, &FrameWriter::frameDelivered, &loop, [&](int delivered) {
        if (delivered == 1)
            sinceFirstFrame.start();
        course.seconds = static_cast<double>(sinceFirstFrame.nsecsElapsed()) / 1e9;
        stall.start();
        bar.show(delivered);
    });
    QObject::connect(&writer, &FrameWriter::finished, &loop, &QEventLoop::quit);
    QObject::connect(&writer, &FrameWriter::failed, &loop, &QEventLoop::quit, Qt::QueuedConnection);
    QObject::connect(&stall, &QTimer::timeout, &loop, [&] {
        course.stalled = true;
        loop.quit();
    });
    // Queued: the load that reports the failure still has to print the reasons.
    QObject::connect(
        &log, &MessageLog::dashboardFailed, &loop,
        [&] {
            course.documentFailed = true;
            loop.quit();
        },
        Qt::QueuedConnection);

    session.engine->addConsumer(&writer);
    stall.start();
    const QStringList problems = session.startTelemetry();
    for (const QString &problem : problems)
        printError(problem);
    if (session.isFed())
        loop.exec();
    course.updatesSent = session.updatesSent();
    session.engine->removeConsumer(&writer);
    writer.flush();
    return course;
}

} // namespace

int writeFrames(const FramesCommand &command, const SessionOptions &options,
                const GaugeLibrary &library, const MessageLog &log)
{
    Session session(options, library);
    if (!session.chooseDashboard()) {
        printError(QStringLiteral("Found no dashboards, neither built-in ones nor your own."));
        return 1;
    }
    if (!QDir().mkpath(command.directory)) {
        printError(QStringLiteral("Could not create the directory '%1'.")
                       .arg(QDir::toNativeSeparators(command.directory)));
        return 1;
    }
    const QSize size = command.size.value_or(QSize(DashboardWidth, DashboardHeight));
    FrameWriter writer(command.directory, command.count, size, command.upsideDown);
    const Course course = write(writer, command.count, session, log);
    if (course.stalled)
        printError(QStringLiteral("No frame came for %1 seconds.").arg(StallMs / 1000));
    if (!writer.error().isEmpty())
        printError(writer.error());

    const double rate = course.seconds > 0 ? (writer.delivered() - 1) / course.seconds : 0;
    std::printf("frames %d, size %dx%d, rate %.1f/s, telemetry updates %d\n", writer.written(),
                size.width(), size.height(), rate, course.updatesSent);
    const bool whole = writer.written() == command.count && !course.documentFailed;
    return whole ? 0 : 1;
}
