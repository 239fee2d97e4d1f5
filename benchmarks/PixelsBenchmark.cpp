#include "dash/HostedDocument.h"
#include "engine/DashboardEngine.h"
#include "host/telemetry/Senders.h"
#include "telemetry/feeds/OutGaugeFeed.h"
#include "telemetry/feeds/RevLimitStore.h"
#include "telemetry/feeds/UdpListener.h"
#include "views/DashboardWindowVM.h"

#include <benchmark/benchmark.h>

#include <QtCore/QEventLoop>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtCore/QThread>
#include <QtGui/QOpenGLContext>
#include <QtGui/QOpenGLFunctions>
#include <QtNetwork/QUdpSocket>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cmath>
#include <memory>
#include <thread>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t Datagrams = 750;
constexpr std::size_t WarmUp = 100; ///< Datagrams during which the dashboard loads.
constexpr std::size_t Shades = 20;  ///< Of the throttle, one a datagram, in turn.

/// No multiple of the engine's tick, so that datagrams come at every phase of it.
constexpr std::chrono::microseconds Period(41'300);

/// A dashboard that ships, with the throttle as a shade of red over its left part.
constexpr char Document[] = "import QtQuick 2.15\n"
                            "Item { width: 480; height: 272\n"
                            "  Loader { source: \"file://" ROAD_DOCUMENT "\" }\n"
                            "  Rectangle { width: 100; height: 272\n"
                            "    color: Qt.rgba(dash_gasPedal_Percent / 100, 0, 0, 1) } }\n";

/// Passes telemetry on to an engine, as the host does.
class EngineSink final : public TelemetrySink
{
public:
    explicit EngineSink(IDashboardEngine &engine)
        : engine(engine)
    {
    }
    void update(const TelemetrySample &sample, const QString & /*vehicle*/) override
    {
        engine.updateTelemetry(sample.vehicle, sample.limits, sample.extended, sample.paused);
    }
    void fallSilent() override {}

private:
    IDashboardEngine &engine;
};

std::unique_ptr<UdpListener> listen(const QTemporaryDir &folder)
{
    std::vector<std::unique_ptr<Feed>> feeds;
    feeds.push_back(std::make_unique<OutGaugeFeed>(
        std::make_unique<RevLimitStore>(folder.filePath(QStringLiteral("cars.ini")))));
    return std::make_unique<UdpListener>(
        std::move(feeds), UdpListener::Settings{{QHostAddress(QHostAddress::LocalHost)}, {0}, {}});
}

/// When each datagram was sent, and when its shade was first in a picture that the window swapped.
struct Times
{
    std::array<Clock::time_point, Datagrams> sent{};
    std::array<Clock::time_point, Datagrams> shown{};
    std::atomic<std::size_t> count{0}; ///< Of those sent.
};

void send(quint16 port, Times &times)
{
    QUdpSocket game;
    Clock::time_point next = Clock::now();
    for (std::size_t i = 0; i < Datagrams; ++i) {
        const float throttle = static_cast<float>(i % Shades) / Shades;
        const QByteArray datagram = Senders::outGauge().reals(48, throttle);
        times.sent[i] = Clock::now();
        times.count = i + 1;
        game.writeDatagram(datagram, QHostAddress::LocalHost, port);
        next += Period;
        std::this_thread::sleep_until(next);
    }
}

/// Looks at each picture of a window, on the thread that draws it.
class Watcher
{
public:
    Watcher(QQuickWindow &window, Times &times)
        : times(times)
    {
        QObject::connect(
            &window, &QQuickWindow::afterRendering, &context, [this, &window] { look(window); },
            Qt::DirectConnection);
        QObject::connect(
            &window, &QQuickWindow::frameSwapped, &context, [this] { note(); },
            Qt::DirectConnection);
    }

private:
    void look(const QQuickWindow &window)
    {
        std::array<unsigned char, 4> pixel{};
        const int x = window.width() / 10;
        const int y = window.height() / 2;
        QOpenGLContext::currentContext()->functions()->glReadPixels(x, y, 1, 1, GL_RGBA,
                                                                    GL_UNSIGNED_BYTE, pixel.data());
        isShade = pixel[1] < 8 && pixel[2] < 8; // Nothing else on the way is red alone.
        shade = static_cast<std::size_t>(std::lround(pixel[0] / 255.0 * Shades)) % Shades;
    }

    /// The shade is that of the last datagram that had it.
    void note()
    {
        const std::size_t sent = times.count;
        if (!isShade || sent == 0)
            return;
        const std::size_t datagram = sent - 1 - (sent - 1 + Shades - shade) % Shades;
        if (datagram < next || datagram >= sent)
            return; // The one before is still there.
        times.shown[datagram] = Clock::now();
        next = datagram + 1;
    }

    Times &times;
    QObject context;
    bool isShade = false;
    std::size_t shade = 0;
    std::size_t next = 0;
};

double percentile(std::vector<double> &values, double share)
{
    std::sort(values.begin(), values.end());
    return values[static_cast<std::size_t>(share * static_cast<double>(values.size() - 1))];
}

/// The whole way from a game to the screen: one datagram for each picture, sent on its own thread,
/// through listener, decoder, the engine's tick and the window.
void datagramToPixels(benchmark::State &state)
{
    const QTemporaryDir folder;
    QFile document(folder.filePath(QStringLiteral("Dash.qml")));
    if (!document.open(QIODevice::WriteOnly) || document.write(Document) < 0) {
        state.SkipWithError("the dashboard can't be written");
        return;
    }
    document.close();
    DashboardEngine engine(false, true);
    static_cast<IDashboardEngine &>(engine).setDashboardFile(document.fileName());
    DashboardWindowVM model(&engine);
    HostedDocument view(QStringLiteral("qrc:/dash/qml/DashboardWindow.qml"), model);
    view.window.resize(int(state.range(0)), int(state.range(1)));
    view.window.show();

    std::vector<double> ways; // ms
    std::size_t passedOver = 0;
    for (auto _ : state) {
        Times times;
        EngineSink sink(engine);
        const auto listener = listen(folder);
        listener->start(sink);
        {
            const Watcher watcher(view.window, times);
            QEventLoop loop;
            const std::unique_ptr<QThread> game(
                QThread::create([&] { send(listener->ports()[0], times); }));
            QObject::connect(game.get(), &QThread::finished, &loop, &QEventLoop::quit);
            game->start();
            loop.exec();
            game->wait();
            view.window.hide(); // Nobody looks any more.
        }
        for (std::size_t i = WarmUp; i < Datagrams; ++i) {
            if (times.shown[i] == Clock::time_point())
                ++passedOver;
            else
                ways.push_back(
                    std::chrono::duration<double, std::milli>(times.shown[i] - times.sent[i])
                        .count());
        }
    }
    if (ways.size() < Datagrams / 2) {
        state.SkipWithError("the datagrams don't reach the screen");
        return;
    }
    state.counters["median_ms"] = percentile(ways, 0.5);
    state.counters["p99_ms"] = percentile(ways, 0.99);
    state.counters["passed_over"] = static_cast<double>(passedOver);
}

BENCHMARK(datagramToPixels)
    ->Name("datagram to pixels")
    ->Args({480, 272})
    ->Args({1440, 816})
    ->Iterations(1)
    ->Repetitions(1)
    ->Unit(benchmark::kSecond);

} // namespace
