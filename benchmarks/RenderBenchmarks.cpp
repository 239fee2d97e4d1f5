#include "BareScene.h"
#include "DemoProperties.h"

#include "render/DashboardRenderer.h"
#include "render/TelemetryPublisher.h"

#include <benchmark/benchmark.h>

#include <QtCore/QTemporaryDir>
#include <QtCore/QUrl>

#include <memory>

namespace {

/// A document that reads nothing, so that only the writing of properties is measured.
class EmptyDocument
{
public:
    EmptyDocument()
    {
        QFile file(path());
        if (!file.open(QIODevice::WriteOnly))
            qFatal("no temporary directory");
        file.write("import QtQuick 2.15\nItem { width: 480; height: 272 }\n");
    }

    QString path() const { return directory.filePath(QStringLiteral("Dash.qml")); }
    QString folder() const { return directory.path(); }

private:
    QTemporaryDir directory;
};

void publishBare(benchmark::State &state)
{
    const EmptyDocument document;
    const std::vector<Properties> moments = demoMoments();
    BareScene scene(document.path(), moments.front(), 480, 272);
    std::size_t moment = 0;
    for (auto _ : state)
        scene.set(moments[++moment % moments.size()]);
}

void publishOurs(benchmark::State &state)
{
    const EmptyDocument document;
    OVX::QmlOffscreenRenderer offscreen;
    TelemetryPublisher publisher([&offscreen](const QString &name, const QVariant &value) {
        offscreen.setProperty(name, value);
    });
    const std::vector<TelemetrySample> samples = demoSamples();
    const QString profile;
    const TuneInfo tune;
    publisher.publish({samples[0].vehicle, samples[0].limits, samples[0].extended, profile, tune});
    if (!offscreen.loadDocument(QUrl::fromLocalFile(document.path()).toString(), document.folder(),
                                480, 272, OVX::SizeMode::Scale))
        state.SkipWithError("the document does not load");
    std::size_t moment = 0;
    for (auto _ : state) {
        const TelemetrySample &sample = samples[++moment % samples.size()];
        publisher.publish({sample.vehicle, sample.limits, sample.extended, profile, tune, 0.2F});
    }
}

void renderBare(benchmark::State &state, int width, int height)
{
    const std::vector<Properties> moments = demoMoments();
    BareScene scene(QStringLiteral(ROAD_DOCUMENT), moments.front(), width, height);
    Frame buffer(std::size_t(width) * std::size_t(height) * 4);
    for (auto _ : state)
        scene.frame(buffer);
}

void renderOurs(benchmark::State &state, int width, int height)
{
    DashboardRenderer renderer;
    if (!renderer.load(QStringLiteral(ROAD_DOCUMENT), 480, 272))
        state.SkipWithError("the document does not load");
    const TelemetrySample sample = demoSample(0);
    renderer.publishTelemetry(sample.vehicle, sample.limits, sample.extended, {}, {}, 0.2F, false,
                              false, false);
    Frame buffer;
    for (auto _ : state) {
        if (!renderer.renderFrame(buffer, width, height, false))
            state.SkipWithError("no frame");
    }
}

BENCHMARK(publishBare)->Name("publishTelemetry/bare")->Unit(benchmark::kMicrosecond);
BENCHMARK(publishOurs)->Name("publishTelemetry/ours")->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(renderBare, small, 480, 272)
    ->Name("renderFrame 480x272/bare")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(renderOurs, small, 480, 272)
    ->Name("renderFrame 480x272/ours")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(renderBare, large, 1440, 816)
    ->Name("renderFrame 1440x816/bare")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(renderOurs, large, 1440, 816)
    ->Name("renderFrame 1440x816/ours")
    ->Unit(benchmark::kMillisecond);

} // namespace
