#include "BareScene.h"
#include "DemoProperties.h"
#include "IdleRenderer.h"
#include "SwappingConsumer.h"

#include "engine/DashboardEngine.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <memory>
#include <mutex>
#include <vector>

namespace {

constexpr int Width = SwappingConsumer::Width;
constexpr int Height = SwappingConsumer::Height;

void tick(DashboardEngine &engine)
{
    QMetaObject::invokeMethod(&engine, "render", Qt::DirectConnection);
}

void updateTelemetryBare(benchmark::State &state)
{
    const TelemetrySample sample = demoSample(0);
    TelemetrySample kept;
    benchmark::DoNotOptimize(&kept); // Else nobody would see the copies, and they would go.
    std::recursive_mutex mutex;
    for (auto _ : state) {
        const std::lock_guard guard(mutex);
        std::memcpy(&kept.vehicle, &sample.vehicle, sizeof(kept.vehicle));
        std::memcpy(&kept.limits, &sample.limits, sizeof(kept.limits));
        std::memcpy(&kept.extended, &sample.extended, sizeof(kept.extended));
        benchmark::ClobberMemory();
    }
}

void updateTelemetryOurs(benchmark::State &state)
{
    SwappingConsumer consumer;
    DashboardEngine dashboardEngine(
        false, true, {[] { return quint64{1}; }, [] { return std::make_unique<IdleRenderer>(); }});
    IDashboardEngine &engine = dashboardEngine;
    engine.setDashboardFile(QStringLiteral(ROAD_DOCUMENT));
    engine.addConsumer(&consumer);
    QMetaObject::invokeMethod(&dashboardEngine, "startTimer", Qt::DirectConnection);
    const TelemetrySample sample = demoSample(0);
    for (auto _ : state) {
        engine.updateTelemetry(sample.vehicle, sample.limits, sample.extended, false);
        benchmark::ClobberMemory();
    }
}

/// Changes the scene as an engine's tick does, so that both sides draw the same.
void tickBare(benchmark::State &state)
{
    const std::vector<Properties> moments = demoMoments();
    BareScene scene(QStringLiteral(ROAD_DOCUMENT), moments.front(), Width, Height);
    Frame buffer(std::size_t(Width) * Height * 4);
    std::size_t moment = 0;
    for (auto _ : state) {
        scene.set(moments[++moment % moments.size()]);
        for (int consumer = 0; consumer < state.range(0); ++consumer)
            scene.frame(buffer);
    }
}

void tickOurs(benchmark::State &state)
{
    DashboardEngine engine(false, true);
    std::vector<SwappingConsumer> consumers(std::size_t(state.range(0)));
    engine.setDashboardFile(QStringLiteral(ROAD_DOCUMENT));
    for (SwappingConsumer &consumer : consumers)
        engine.addConsumer(&consumer);
    const std::vector<TelemetrySample> samples = demoSamples();
    std::size_t moment = 0;
    for (auto _ : state) {
        const TelemetrySample &sample = samples[++moment % samples.size()];
        engine.updateTelemetry(sample.vehicle, sample.limits, sample.extended, false);
        tick(engine);
    }
    if (consumers.front().delivered == 0)
        state.SkipWithError("no frame was delivered");
}

void firstFrameBare(benchmark::State &state)
{
    const Properties properties = demoMoments().front();
    Frame buffer(std::size_t(Width) * Height * 4);
    for (auto _ : state) {
        BareScene scene(QStringLiteral(ROAD_DOCUMENT), properties, Width, Height);
        scene.frame(buffer);
    }
}

void firstFrameOurs(benchmark::State &state)
{
    const TelemetrySample sample = demoSample(0);
    for (auto _ : state) {
        SwappingConsumer consumer;
        DashboardEngine engine(false, true);
        engine.setDashboardFile(QStringLiteral(ROAD_DOCUMENT));
        engine.addConsumer(&consumer);
        engine.updateTelemetry(sample.vehicle, sample.limits, sample.extended, false);
        tick(engine);
        if (consumer.delivered != 1)
            state.SkipWithError("no frame was delivered");
    }
}

BENCHMARK(updateTelemetryBare)->Name("updateTelemetry/bare");
BENCHMARK(updateTelemetryOurs)->Name("updateTelemetry/ours");

const bool ticksRegistered = [] {
    for (const int consumers : {1, 2, 4, 8}) {
        const std::string name = "tick, " + std::to_string(consumers) + " consumers";
        benchmark::RegisterBenchmark((name + "/bare").c_str(), tickBare)
            ->Args({consumers})
            ->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark((name + "/ours").c_str(), tickOurs)
            ->Args({consumers})
            ->Unit(benchmark::kMillisecond);
    }
    return true;
}();

BENCHMARK(firstFrameBare)->Name("first frame/bare")->Unit(benchmark::kMillisecond);
BENCHMARK(firstFrameOurs)->Name("first frame/ours")->Unit(benchmark::kMillisecond);

} // namespace
