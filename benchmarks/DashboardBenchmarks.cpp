#include "DemoProperties.h"

#include "render/DashboardRenderer.h"

#include <benchmark/benchmark.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>

namespace {

constexpr double TickSeconds = 0.04;

/// A shipped dashboard after its first frame.
class Shown
{
public:
    explicit Shown(const std::string &name, int width = 480, int height = 272)
        : width(width)
        , height(height)
    {
        const QString path =
            QStringLiteral(DASHBOARDS_DIRECTORY "/%1/Dash.qml").arg(QString::fromStdString(name));
        isLoaded = renderer.load(path, width, height);
    }

    void publish(const TelemetrySample &sample)
    {
        renderer.publishTelemetry(sample.vehicle, sample.limits, sample.extended, {}, {}, 0.2F,
                                  false, false, false);
    }

    bool render() { return isLoaded && renderer.renderFrame(frame, width, height, false); }

private:
    DashboardRenderer renderer;
    const int width;
    const int height;
    Frame frame;
    bool isLoaded = false;
};

void tick(benchmark::State &state, const std::string &name, int width, int height)
{
    Shown dashboard(name, width, height);
    const std::vector<TelemetrySample> samples = demoSamples();
    std::size_t moment = 0;
    for (auto _ : state) {
        dashboard.publish(samples[++moment % samples.size()]);
        if (!dashboard.render())
            state.SkipWithError("no frame");
    }
    // In real time: software OpenGL works on threads of its own.
    state.counters["of a tick"] =
        benchmark::Counter(TickSeconds * static_cast<double>(state.iterations()),
                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

/// Cost of a publication alone: bindings that run again, and items that take new values.
void publication(benchmark::State &state, const std::string &name, bool changes)
{
    Shown dashboard(name);
    const std::vector<TelemetrySample> samples = demoSamples();
    std::size_t moment = 0;
    for (auto _ : state)
        dashboard.publish(samples[changes ? ++moment % samples.size() : 0]);
}

} // namespace

void registerDashboardBenchmarks()
{
    const QStringList folders =
        QDir(QStringLiteral(DASHBOARDS_DIRECTORY)).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &folder : folders) {
        const std::string name = folder.toStdString();
        benchmark::RegisterBenchmark(("tick 480x272 " + name).c_str(), tick, name, 480, 272)
            ->UseRealTime()
            ->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark(("tick 1440x816 " + name).c_str(), tick, name, 1440, 816)
            ->UseRealTime()
            ->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark(("publication, changed " + name).c_str(), publication, name,
                                     true)
            ->UseRealTime()
            ->Unit(benchmark::kMicrosecond);
        benchmark::RegisterBenchmark(("publication, unchanged " + name).c_str(), publication, name,
                                     false)
            ->UseRealTime()
            ->Unit(benchmark::kMicrosecond);
    }
}
