#pragma once

#include "plugin/IDashboardRenderer.h"
#include "plugin/TelemetryRecords.h"

#include <QtCore/QStringList>

#include <algorithm>
#include <functional>
#include <optional>
#include <set>
#include <vector>

/// What a renderer was told in one publication.
struct PublishedRecords
{
    VehicleTelemetry vehicle;
    DisplayLimits limits;
    ExtendedTelemetry extended;
    QString motionProfileName;
    TuneInfo tune;
    float steeringSmoothing;
    bool useMph;
    bool showMarkers;
    bool paused;
};

struct RenderCall
{
    std::size_t sizeBefore;
    int width;
    int height;
    bool upsideDown;
};

/// What fake renderers are to do and what was asked of them. Outlives them.
struct RendererScript
{
    bool loads = true;
    bool renders = true;
    unsigned char fill = 1;           ///< Every byte of the next picture.
    std::optional<std::size_t> bytes; ///< Of the next picture, if it has not the size it should.
    QStringList errors;
    std::set<QString> fields;
    std::function<void()> duringLoad;
    std::function<void()> duringPublish;
    std::function<void()> duringRender;
    std::function<void()> duringDestruction;

    int made = 0;
    int destroyed = 0;
    QStringList calls; ///< "load PATH WxH", "publish", "render WxH", in order.
    std::vector<PublishedRecords> publications;
    std::vector<RenderCall> renderCalls;

    int count(const QString &prefix) const
    {
        return static_cast<int>(std::count_if(
            calls.cbegin(), calls.cend(), [&](const QString &c) { return c.startsWith(prefix); }));
    }
};

/// A renderer that paints every byte alike and writes down what it was asked.
class FakeRenderer final : public IDashboardRenderer
{
public:
    explicit FakeRenderer(RendererScript &script)
        : script(script)
    {
        ++script.made;
    }
    ~FakeRenderer() override
    {
        ++script.destroyed;
        if (script.duringDestruction)
            script.duringDestruction();
    }
    FakeRenderer(const FakeRenderer &) = delete;
    FakeRenderer &operator=(const FakeRenderer &) = delete;

    bool load(const QString &path, int width, int height) override
    {
        script.calls += QStringLiteral("load %1 %2x%3").arg(path).arg(width).arg(height);
        if (script.duringLoad)
            script.duringLoad();
        return script.loads;
    }

    bool renderFrame(Frame &buffer, int width, int height, bool upsideDown) override
    {
        script.calls += QStringLiteral("render %1x%2").arg(width).arg(height);
        script.renderCalls.push_back({buffer.size(), width, height, upsideDown});
        if (script.duringRender)
            script.duringRender();
        if (!script.renders)
            return false;
        buffer.resize(script.bytes.value_or(frameBytes(width, height)));
        std::fill(buffer.begin(), buffer.end(), script.fill);
        return true;
    }

    const QStringList &errors() override { return script.errors; }

    void publishTelemetry(const VehicleTelemetry &vehicle, const DisplayLimits &limits,
                          const ExtendedTelemetry &extended, const QString &motionProfileName,
                          const TuneInfo &tune, float steeringSmoothing, bool useMph,
                          bool showMarkers, bool paused) override
    {
        script.calls += QStringLiteral("publish");
        script.publications.push_back({vehicle, limits, extended, motionProfileName, tune,
                                       steeringSmoothing, useMph, showMarkers, paused});
        if (script.duringPublish)
            script.duringPublish();
    }

    std::set<QString> publishedFields() override { return script.fields; }

private:
    RendererScript &script;
};
