#include "DemoProperties.h"

#include "dash/HostedDocument.h"
#include "engine/DashboardEngine.h"
#include "views/DashboardWindowVM.h"

#include <benchmark/benchmark.h>

#include <QtCore/QEventLoop>
#include <QtCore/QTimer>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <cstring>
#include <mutex>
#include <vector>

namespace {

using SteadyClock = std::chrono::steady_clock;

/// Both sides signal to a slot of this kind.
class Receiver : public QObject
{
    Q_OBJECT

public:
    int received = 0;

public Q_SLOTS:
    void take() { ++received; }
};

class BareProvider : public QObject
{
    Q_OBJECT

public:
    void deliver(Frame &buffer)
    {
        {
            const std::lock_guard guard(mutex);
            frame.swap(buffer);
        }
        Q_EMIT changed();
    }

Q_SIGNALS:
    void changed();

private:
    std::recursive_mutex mutex;
    Frame frame;
};

/// The window's provider at a window of this size, without an engine.
class WindowBench
{
public:
    explicit WindowBench(QSize size)
    {
        window.resize(size);
        model.initContext(qml.rootContext());
        model.setWindow(&window);
        provider = static_cast<DashboardWindowVM::ImageProvider *>(
            qml.imageProvider(QStringLiteral("dashWindow")));
    }

    QQmlEngine qml;
    DashboardWindowVM model{nullptr};
    QWindow window;
    DashboardWindowVM::ImageProvider *provider = nullptr;
};

constexpr int Width = 1440;
constexpr int Height = 816;
constexpr int TickMs = 40; ///< Of the engine.

void deliverBare(benchmark::State &state)
{
    BareProvider provider;
    Receiver receiver;
    QObject::connect(&provider, &BareProvider::changed, &receiver, &Receiver::take);
    Frame frame(frameBytes(Width, Height));
    for (auto _ : state)
        provider.deliver(frame);
    benchmark::DoNotOptimize(receiver.received);
}

void deliverOurs(benchmark::State &state)
{
    const WindowBench bench({Width, Height});
    Receiver receiver;
    QObject::connect(&bench.model, &DashboardWindowVM::previewChanged, &receiver, &Receiver::take);
    Frame frame(frameBytes(Width, Height));
    IDashboardConsumer &consumer = *bench.provider;
    for (auto _ : state)
        consumer.deliverFrame(frame, Width);
    benchmark::DoNotOptimize(receiver.received);
}

/// Into as many pictures in turn as `requestOurs` fills. Their pages have been touched before.
void requestBare(benchmark::State &state)
{
    const Frame frame(frameBytes(Width, Height), 7);
    std::vector<QImage> pictures;
    for (int i = 0; i < state.range(0); ++i) {
        pictures.emplace_back(Width, Height, QImage::Format_ARGB32_Premultiplied);
        pictures.back().fill(Qt::red);
    }
    std::size_t next = 0;
    for (auto _ : state) {
        std::memcpy(pictures[next].bits(), frame.data(), frame.size());
        benchmark::ClobberMemory();
        next = (next + 1) % pictures.size();
    }
}

/// With the last picture held, as a document does, or with none.
void requestOurs(benchmark::State &state)
{
    const bool held = state.range(0) > 1;
    const WindowBench bench({Width, Height});
    Frame frame(frameBytes(Width, Height), 7);
    bench.provider->deliverFrame(frame, Width);
    QImage shown;
    QSize size;
    for (int i = 0; i < 3; ++i) // Touches the pages of all pictures in use.
        shown = bench.provider->requestImage({}, &size, {});
    if (!held)
        shown = QImage();
    for (auto _ : state) {
        QImage picture = bench.provider->requestImage({}, &size, {});
        benchmark::ClobberMemory();
        if (held)
            shown = std::move(picture);
    }
    if (size != QSize(Width, Height))
        state.SkipWithError("no picture of the frame");
}

double percentile(std::vector<double> &samples, double share)
{
    const auto index = static_cast<std::size_t>(share * double(samples.size() - 1));
    std::nth_element(samples.begin(), samples.begin() + std::ptrdiff_t(index), samples.end());
    return samples[index];
}

/// The whole way of an update: the engine's tick renders, the window's document asks for the
/// picture, and the window swaps it onto the screen. Updates come at every phase of the tick.
void telemetryToScreen(benchmark::State &state)
{
    DashboardEngine dashboardEngine(false, true);
    IDashboardEngine &engine = dashboardEngine;
    engine.setDashboardFile(QStringLiteral(ROAD_DOCUMENT));
    DashboardWindowVM model(&engine);
    HostedDocument document(QStringLiteral("qrc:/dash/qml/DashboardWindow.qml"), model);
    document.window.resize(int(state.range(0)), int(state.range(1)));
    document.window.show();

    const std::vector<TelemetrySample> samples = demoSamples();
    std::size_t moment = 0;
    const auto update = [&] {
        const TelemetrySample &sample = samples[++moment % samples.size()];
        engine.updateTelemetry(sample.vehicle, sample.limits, sample.extended, false);
    };

    QEventLoop loop;
    SteadyClock::time_point handedOut;
    bool requested = false;
    // Connected behind the document, which asks for the picture inside its own slot.
    QObject::connect(&model, &DashboardWindowVM::previewChanged, &loop, [&] {
        handedOut = SteadyClock::now();
        requested = true;
    });
    std::atomic<bool> synchronized{false};
    std::atomic<SteadyClock::rep> swappedAt{0};
    // The GUI thread stands still during the first of these; both may run on a render thread.
    QObject::connect(
        &document.window, &QQuickWindow::beforeSynchronizing, &loop,
        [&] {
            if (requested)
                synchronized = true;
        },
        Qt::DirectConnection);
    QObject::connect(
        &document.window, &QQuickWindow::frameSwapped, &loop,
        [&] {
            if (!synchronized.exchange(false))
                return;
            swappedAt = SteadyClock::now().time_since_epoch().count();
            QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
        },
        Qt::DirectConnection);
    QTimer timer;
    timer.setSingleShot(true);
    timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer, &QTimer::timeout, &loop, [&loop] { loop.exit(1); });
    const auto run = [&](std::chrono::milliseconds longest) {
        timer.start(longest);
        const bool quit = loop.exec() == 0;
        timer.stop();
        return quit;
    };
    const auto awaitScreen = [&] {
        const bool swapped = run(std::chrono::seconds(5));
        requested = false;
        return swapped;
    };
    const auto milliseconds = [](SteadyClock::duration duration) {
        return std::chrono::duration<double, std::milli>(duration).count();
    };

    std::vector<double> handed;
    std::vector<double> shown;
    update();
    awaitScreen(); // The document loads.
    double phase = 0;
    for (auto _ : state) {
        phase = std::fmod(phase + 0.618034, 1.0);
        run(std::chrono::milliseconds(static_cast<int>(phase * TickMs)));

        const auto start = SteadyClock::now();
        update();
        if (!awaitScreen()) {
            state.SkipWithError("the picture does not reach the screen");
            break;
        }
        const SteadyClock::time_point swapped{SteadyClock::duration(swappedAt.load())};
        handed.push_back(milliseconds(handedOut - start));
        shown.push_back(milliseconds(swapped - start));
        state.SetIterationTime(shown.back() / 1000);
    }
    if (shown.empty())
        return;
    state.counters["handed_median_ms"] = percentile(handed, 0.5);
    state.counters["handed_99th_ms"] = percentile(handed, 0.99);
    state.counters["shown_median_ms"] = percentile(shown, 0.5);
    state.counters["shown_99th_ms"] = percentile(shown, 0.99);
}

BENCHMARK(deliverBare)->Name("deliverFrame/bare");
BENCHMARK(deliverOurs)->Name("deliverFrame/ours");

const bool registered = [] {
    for (const int pictures : {1, 2}) {
        const std::string name =
            pictures == 1 ? "requestImage 1440x816" : "requestImage 1440x816, last one held";
        benchmark::RegisterBenchmark((name + "/bare").c_str(), requestBare)
            ->Args({pictures})
            ->Unit(benchmark::kMicrosecond);
        benchmark::RegisterBenchmark((name + "/ours").c_str(), requestOurs)
            ->Args({pictures})
            ->Unit(benchmark::kMicrosecond);
    }
    return true;
}();

BENCHMARK(telemetryToScreen)
    ->Name("telemetry to screen")
    ->Args({480, 272})
    ->Args({Width, Height})
    ->Iterations(300)
    ->Repetitions(3)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

} // namespace

#include "ViewsBenchmarks.moc"
