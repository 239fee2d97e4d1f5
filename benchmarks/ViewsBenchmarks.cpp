#include "views/DashboardWindowVM.h"

#include <benchmark/benchmark.h>

#include <QtGui/QImage>
#include <QtGui/QWindow>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>

#include <cstring>
#include <mutex>
#include <vector>

namespace {

/// Receives the signals of both sides.
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

/// Copies into as many pictures in turn as `requestOurs` fills; their pages are in use already.
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

/// With the last picture held, as a document holds it, or with none.
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

} // namespace

#include "ViewsBenchmarks.moc"
