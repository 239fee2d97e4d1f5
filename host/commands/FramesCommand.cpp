#include "FramesCommand.h"

#include "Session.h"
#include "FrameWriter.h"
#include "system/MessageLog.h"
#include "options/Options.h"
#include "system/ProgressBar.h"
#include "system/Terminal.h"

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QEventLoop>
#include <QtCore/QTimer>

#include <cstdio>

namespace {

constexpr int StallMs = 15'000; ///< Longer than any load; telemetry never pauses in between.

/// How a recording went.
struct Course
{
    bool documentFailed = false;
    bool stalled = false;
    double seconds = 0; ///< From the first frame to the last.
    int updatesSent = 0;
};

/// Telemetry starts when the consumer is in place.
Course record(FrameWriter &recorder, int count, Cluster &cluster, const MessageLog &log)
{
    Course course;
    const ProgressBar bar(count);
    QEventLoop loop;
    QElapsedTimer sinceFirstFrame;
    QTimer stall;
    stall.setSingleShot(true);
    stall.setInterval(StallMs);
    QObject::connect(&recorder, &FrameWriter::frameDelivered, &loop, [&](int delivered) {
        if (delivered == 1)
            sinceFirstFrame.start();
        course.seconds = static_cast<double>(sinceFirstFrame.nsecsElapsed()) / 1e9;
        stall.start();
        bar.show(delivered);
    });
    QObject::connect(&recorder, &FrameWriter::finished, &loop, &QEventLoop::quit);
    QObject::connect(&recorder, &FrameWriter::failed, &loop, &QEventLoop::quit,
                     Qt::QueuedConnection);
    QObject::connect(&stall, &QTimer::timeout, &loop, [&] {
        course.stalled = true;
        loop.quit();
    });
    // Queued, since the report comes from within the load, which goes on to print the reasons.
    QObject::connect(
        &log, &MessageLog::dashboardFailed, &loop,
        [&] {
            course.documentFailed = true;
            loop.quit();
        },
        Qt::QueuedConnection);

    cluster.engine->addConsumer(&recorder);
    stall.start();
    const QStringList problems = cluster.startTelemetry();
    for (const QString &problem : problems)
        printError(problem);
    if (cluster.isFed())
        loop.exec();
    course.updatesSent = cluster.updatesSent();
    cluster.engine->removeConsumer(&recorder);
    recorder.flush();
    return course;
}

} // namespace

int recordFrames(const Options &options, const GaugeLibrary &library, const MessageLog &log)
{
    Cluster cluster(options, library, options.units == Options::Units::Mph);
    if (!cluster.chooseDashboard()) {
        printError(QStringLiteral("There are no dashboards beside the program, nor of your own."));
        return 1;
    }
    if (!QDir().mkpath(options.framesDirectory)) {
        printError(QStringLiteral("Could not make the directory '%1'.")
                       .arg(QDir::toNativeSeparators(options.framesDirectory)));
        return 1;
    }
    const QSize size = options.size.value_or(QSize(480, 272)); // What dashboards are drawn for.
    FrameWriter recorder(options.framesDirectory, options.frameCount, size, options.upsideDown);
    const Course course = record(recorder, options.frameCount, cluster, log);
    if (course.stalled)
        printError(QStringLiteral("No frame came for %1 seconds.").arg(StallMs / 1000));
    if (!recorder.error().isEmpty())
        printError(recorder.error());

    const double rate = course.seconds > 0 ? (recorder.delivered() - 1) / course.seconds : 0;
    std::printf("%d %s, %dx%d pixels, %.1f frames/s, %d updates sent\n", recorder.written(),
                recorder.written() == 1 ? "frame" : "frames", size.width(), size.height(), rate,
                course.updatesSent);
    const bool whole = recorder.written() == options.frameCount && !course.documentFailed;
    return whole ? 0 : 1;
}
