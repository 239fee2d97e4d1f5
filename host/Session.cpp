#include "Session.h"

#include "Dashboards.h"
#include "FrameRecorder.h"
#include "GaugeLibrary.h"
#include "LiveWindow.h"
#include "MessageLog.h"
#include "ProgressBar.h"
#include "TelemetryFeeder.h"
#include "ViewRegistry.h"
#include "telemetry/DemoLap.h"

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QTimer>
#include <QtGui/QGuiApplication>

#include <cstdio>

namespace {

constexpr quint32 DemoSeed = 64;
constexpr int StallMs = 15'000; ///< Longer than any load; telemetry never pauses in between.

void printError(const QString &text)
{
    std::fprintf(stderr, "gauge-host: %s\n", qUtf8Printable(text));
}

std::unique_ptr<TelemetryFeeder> startTelemetry(const Options &options, IDashboardEngine &engine)
{
    return std::make_unique<TelemetryFeeder>(std::make_unique<DemoLap>(DemoSeed), options.startAt,
                                             engine);
}

int showWindow(const Options &options, IDashboardEngine &engine)
{
    LiveWindow window(engine, options.upsideDown);
    window.setTitle(QStringLiteral("%1 - GAUGE64").arg(options.dashboard));
    window.show();
    const auto feeder = startTelemetry(options, engine);
    return QGuiApplication::exec();
}

int recordFrames(const Options &options, IDashboardEngine &engine, const MessageLog &log)
{
    if (!QDir().mkpath(options.framesDirectory)) {
        printError(QStringLiteral("Could not make the directory '%1'.")
                       .arg(QDir::toNativeSeparators(options.framesDirectory)));
        return 1;
    }
    FrameRecorder recorder(options.framesDirectory, options.frameCount, options.frameSize,
                           options.upsideDown);
    QEventLoop loop;
    QTimer stall;
    stall.setSingleShot(true);
    stall.setInterval(StallMs);
    bool stalled = false;
    bool failed = false;
    QElapsedTimer sinceFirstFrame;
    int sent = 0;
    {
        const ProgressBar bar(options.frameCount);
        QObject::connect(&recorder, &FrameRecorder::frameDelivered, &loop, [&](int delivered) {
            if (delivered == 1)
                sinceFirstFrame.start();
            stall.start();
            bar.show(delivered);
        });
        QObject::connect(&recorder, &FrameRecorder::finished, &loop, &QEventLoop::quit);
        QObject::connect(&stall, &QTimer::timeout, &loop, [&] {
            stalled = true;
            loop.quit();
        });
        QObject::connect(
            &log, &MessageLog::dashboardFailed, &loop,
            [&] {
                failed = true;
                loop.quit();
            },
            Qt::QueuedConnection);

        engine.addConsumer(&recorder);
        stall.start();
        const auto feeder = startTelemetry(options, engine);
        loop.exec();
        sent = feeder->updatesSent();
        engine.removeConsumer(&recorder);
        recorder.flush();
    }
    if (failed)
        return 1;
    if (stalled)
        printError(QStringLiteral("No frame came for %1 seconds.").arg(StallMs / 1000));
    if (!recorder.error().isEmpty())
        printError(recorder.error());

    const double seconds = sinceFirstFrame.isValid() ? sinceFirstFrame.elapsed() / 1000.0 : 0;
    std::printf("%d frames, %dx%d pixels, %.1f frames/s, %d updates sent\n", recorder.written(),
                options.frameSize.width(), options.frameSize.height(),
                seconds > 0 ? (recorder.delivered() - 1) / seconds : 0.0, sent);
    return recorder.written() == options.frameCount ? 0 : 1;
}

} // namespace

int runSession(const Options &options)
{
    const MessageLog log(options.verbose);
    const QString programDirectory = QCoreApplication::applicationDirPath();
    const GaugeLibrary library(programDirectory);
    if (!library.error().isEmpty()) {
        printError(library.error());
        return 1;
    }

    ViewRegistry views;
    const std::unique_ptr<IDashboardEngine> engine =
        library.createEngine(options.useMph, options.hardwareAcceleration);
    library.init(views, *engine);
    engine->setDashboardFile(Dashboards(programDirectory + QStringLiteral("/Dashboards"))
                                 .documentFor(options.dashboard));

    const int result = options.mode == Options::Mode::Frames ? recordFrames(options, *engine, log)
                                                             : showWindow(options, *engine);
    engine->shutdown();
    return result;
}
