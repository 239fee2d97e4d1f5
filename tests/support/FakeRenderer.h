#pragma once

#include "plugin/IDashboardRenderer.h"
#include "plugin/TelemetryRecords.h"

#include <QtCore/QStringList>

#include <functional>
#include <optional>
#include <set>
#include <vector>

/// The arguments of one publication.
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

/// Tells fake renderers what to do, and records what was asked of them. Outlives them.
struct RendererScript
{
    bool loads = true;
    bool renders = true;
    unsigned char fill = 1;           ///< Every byte of the next picture.
    std::optional<std::size_t> bytes; ///< Wrong size of the next picture.
    QStringList errors;
    std::set<QString> fields;
    std::function<void()> duringLoad;
    std::function<void()> duringPublish;
    std::function<void()> duringRender;

    int destroyed = 0;
    QStringList calls; ///< "load PATH WxH", "publish", "render WxH", in order.
    std::vector<PublishedRecords> publications;
    std::vector<RenderCall> renderCalls;

    int count(const QString &call) const { return calls.filter(call).size(); }
};

/// A renderer that fills its pictures with one byte and records its calls.
class FakeRenderer final : public IDashboardRenderer
{
public:
    explicit FakeRenderer(RendererScript &script)
        : script(script)
    {
    }
    ~FakeRenderer() override { ++script.destroyed; }

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
        buffer.assign(script.bytes.value_or(frameBytes(width, height)), script.fill);
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
