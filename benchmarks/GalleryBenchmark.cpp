// How quickly the gallery opens with many dashboards, and how evenly it scrolls through them.

#include "DashboardAbstractProfilesManager.h"
#include "profiles/FindProfile.h"
#include "session/GaugeLibrary.h"
#include "support/TemporaryHome.h"
#include "support/TestFiles.h"
#include "telemetry/TelemetryFeeder.h"
#include "telemetry/TelemetryMonitor.h"
#include "telemetry/VehicleNames.h"
#include "telemetry/demo/DemoSource.h"
#include "ui/GalleryWindow.h"
#include "ui/Navigation.h"

#include <QtCore/QEventLoop>
#include <QtCore/QTimer>
#include <QtCore/QVariantAnimation>
#include <QtGui/QGuiApplication>
#include <QtGui/QPainter>
#include <QtQuick/QQuickItem>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <memory>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

constexpr int Dashboards = 200;
constexpr int ScrollMs = 8000;
constexpr int WarmUpMs = 2000;
constexpr int LongestWaitMs = 20'000;

double milliseconds(Clock::duration time)
{
    return std::chrono::duration<double, std::milli>(time).count();
}

/// A picture that compresses as badly as a real dashboard.
QImage makePreview(int number)
{
    QImage image(480, 272, QImage::Format_RGB32);
    QLinearGradient gradient(0, 0, 480, 272);
    gradient.setColorAt(0, QColor::fromHsv(number * 359 / Dashboards, 160, 70));
    gradient.setColorAt(1, Qt::black);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(image.rect(), gradient);
    for (int ring = 0; ring < 12; ++ring) {
        painter.setPen(QPen(QColor::fromHsv((number * 7 + ring * 30) % 360, 200, 230), 3));
        painter.drawEllipse(QPoint(130 + ring % 2 * 220, 136), 20 + ring * 8, 20 + ring * 8);
    }
    painter.drawText(image.rect(), Qt::AlignCenter, QString::number(number));
    return image;
}

void makeDashboards(const TemporaryHome &home)
{
    for (int number = 0; number < Dashboards; ++number) {
        const QString folder = home.data("/Dashboards/Dashboard %1").arg(number);
        writeFile(folder + "/Dash.qml"_q, "import QtQuick 2.15\nRectangle {}\n");
        if (!makePreview(number).save(folder + "/preview.png"_q))
            qFatal("can't write a preview");
    }
}

/// Whether a card with its picture is shown. The scene must be at rest.
bool isFirstCardReady(QQuickItem *grid)
{
    for (int row = 0; row < Dashboards; ++row) {
        QQuickItem *card = nullptr;
        QMetaObject::invokeMethod(grid, "itemAtIndex", Qt::DirectConnection,
                                  QReturnArgument<QQuickItem *>("QQuickItem*", card),
                                  Q_ARG(int, row));
        if (card != nullptr && card->property("pictureReady").toBool())
            return true;
    }
    return false;
}

void wait(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

/// Waits until `done` is true after a frame, and returns when that frame was on the screen. `done`
/// is called on the render thread while the GUI thread waits.
Clock::time_point waitForFrame(QQuickWindow &window, const std::function<bool()> &done)
{
    QEventLoop loop;
    QObject context;
    bool ready = false;
    Clock::time_point shown;
    QObject::connect(
        &window, &QQuickWindow::beforeSynchronizing, &context, [&] { ready = ready || done(); },
        Qt::DirectConnection);
    QObject::connect(
        &window, &QQuickWindow::frameSwapped, &context,
        [&] {
            if (!ready || shown != Clock::time_point())
                return;
            shown = Clock::now();
            QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
        },
        Qt::DirectConnection);
    QTimer::singleShot(LongestWaitMs, &loop, [&] { loop.exit(1); });
    if (loop.exec() != 0)
        qFatal("the first card never came");
    return shown;
}

/// The times from frame to frame while the grid scrolls from top to bottom, in ms.
std::vector<double> scroll(QQuickWindow &window, QQuickItem &grid)
{
    std::vector<Clock::time_point> frames;
    QObject context;
    QVariantAnimation animation;
    animation.setStartValue(0.0);
    animation.setEndValue(grid.property("contentHeight").toReal() - grid.height());
    animation.setDuration(ScrollMs);
    QObject::connect(&animation, &QVariantAnimation::valueChanged, &context,
                     [&](const QVariant &value) { grid.setProperty("contentY", value); });
    QEventLoop loop;
    QObject::connect(&animation, &QVariantAnimation::finished, &loop, &QEventLoop::quit);
    const auto counting = QObject::connect(
        &window, &QQuickWindow::frameSwapped, &context, [&] { frames.push_back(Clock::now()); },
        Qt::DirectConnection);
    animation.start();
    loop.exec();
    QObject::disconnect(counting);

    std::vector<double> times;
    for (std::size_t i = 1; i < frames.size(); ++i)
        times.push_back(milliseconds(frames[i] - frames[i - 1]));
    std::sort(times.begin(), times.end());
    return times;
}

void printFrames(const char *name, const std::vector<double> &times)
{
    if (times.empty())
        qFatal("nothing was drawn");
    const auto over = times.end() - std::upper_bound(times.begin(), times.end(), 33.0);
    std::printf("%-32s %6zu frames  median %5.1f  99th %5.1f  max %5.1f ms  over 33 ms: %d\n", name,
                times.size(), times[times.size() / 2], times[times.size() * 99 / 100], times.back(),
                int(over));
}

} // namespace

int main(int argc, char *argv[])
{
    const TemporaryHome home(fastFolder());
    const QGuiApplication application(argc, argv);
    QCoreApplication::setOrganizationName("Gallery"_q);
    QCoreApplication::setApplicationName("Benchmark"_q);
    makeDashboards(home);

    const GaugeLibrary library(QCoreApplication::applicationDirPath());
    if (!library.error().isEmpty())
        qFatal("%s", qUtf8Printable(library.error()));
    Navigation navigation;
    VehicleNames vehicles;
    TelemetryMonitor monitor;
    const auto engine = library.createEngine(false, true);
    library.init(navigation, *engine);

    const Clock::time_point start = Clock::now();
    const auto store = library.createProfiles(*engine, vehicles);
    store->performAction(findProfile(*store, "Road"_q), DashboardProfileAction::Activate, {});
    {
        GalleryWindow window(navigation, *engine, *store, vehicles, monitor, "Demo race"_q);
        window.openGallery();
        auto *const grid = window.rootObject()->findChild<QQuickItem *>("grid"_q);
        const auto shown = waitForFrame(window, [&] { return isFirstCardReady(grid); });
        std::printf("%d dashboards at %d x %d\n", Dashboards, window.width(), window.height());
        std::printf("First card on screen after       %6.0f ms\n", milliseconds(shown - start));

        wait(WarmUpMs);
        printFrames("Scrolling, no telemetry", scroll(window, *grid));
        const TelemetryFeeder feeder(std::make_unique<DemoSource>(DemoCars(64), 30), *engine,
                                     vehicles, monitor);
        wait(WarmUpMs); // The engine loads the dashboard at its first tick.
        printFrames("Scrolling, live picture", scroll(window, *grid));
    }
    engine->shutdown();
    return 0;
}
