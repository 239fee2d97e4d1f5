#include "FrameSession.h"

#include "FrameRecorder.h"
#include "IDashboardEngine.h"
#include "MessageLog.h"
#include "Options.h"
#include "ProgressBar.h"
#include "TelemetryFeeder.h"
#include "Terminal.h"

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
    QElapsedTimer sinceFirstFrame;
    int updatesSent = 0;
};

Course record(FrameRecorder &recorder, int count, IDashboardEngine &engine, const MessageLog &log,
              const std::function<std::unique_ptr<TelemetryFeeder>()> &startTelemetry)
{
    Course course;
    const ProgressBar bar(count);
    QEventLoop loop;
    QTimer stall;
    stall.setSingleShot(true);
    stall.setInterval(StallMs);
    QObject::connect(&recorder, &FrameRecorder::frameDelivered, &loop, [&](int delivered) {
        if (delivered == 1)
            course.sinceFirstFrame.start();
        stall.start();
        bar.show(delivered);
    });
    QObject::connect(&recorder, &FrameRecorder::finished, &loop, &QEventLoop::quit);
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

    engine.addConsumer(&recorder);
    stall.start();
    const std::unique_ptr<TelemetryFeeder> feeder = startTelemetry();
    loop.exec();
    course.updatesSent = feeder->updatesSent();
    engine.removeConsumer(&recorder);
    recorder.flush();
    return course;
}

} // namespace

int recordFrames(const Options &options, IDashboardEngine &engine, const MessageLog &log,
                 const std::function<std::unique_ptr<TelemetryFeeder>()> &startTelemetry)
{
    if (!QDir().mkpath(options.framesDirectory)) {
        printError(QStringLiteral("Could not make the directory '%1'.")
                       .arg(QDir::toNativeSeparators(options.framesDirectory)));
        return 1;
    }
    FrameRecorder recorder(options.framesDirectory, options.frameCount, options.frameSize,
                           options.upsideDown);
    const Course course = record(recorder, options.frameCount, engine, log, startTelemetry);
    if (course.documentFailed)
        return 1;
    if (course.stalled)
        printError(QStringLiteral("No frame came for %1 seconds.").arg(StallMs / 1000));
    if (!recorder.error().isEmpty())
        printError(recorder.error());

    const double seconds =
        course.sinceFirstFrame.isValid() ? course.sinceFirstFrame.elapsed() / 1000.0 : 0;
    std::printf("%d frames, %dx%d pixels, %.1f frames/s, %d updates sent\n", recorder.written(),
                options.frameSize.width(), options.frameSize.height(),
                seconds > 0 ? (recorder.delivered() - 1) / seconds : 0.0, course.updatesSent);
    return recorder.written() == options.frameCount ? 0 : 1;
}
