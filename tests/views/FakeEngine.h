#pragma once

#include "plugin/IDashboardEngine.h"
#include "support/FakeRenderer.h"

#include <QtGui/QImage>

#include <set>
#include <utility>

/// A fake renderer that also has names to tell.
class NamedFieldsRenderer final : public IDashboardRenderer
{
public:
    NamedFieldsRenderer(RendererScript &script, std::set<QString> names)
        : renderer(script)
        , names(std::move(names))
    {
    }

    bool load(const QString &path, int width, int height) override
    {
        return renderer.load(path, width, height);
    }
    bool renderFrame(Frame &buffer, int width, int height, bool upsideDown) override
    {
        return renderer.renderFrame(buffer, width, height, upsideDown);
    }
    const QStringList &errors() override { return renderer.errors(); }
    void publishTelemetry(const VehicleTelemetry &vehicle, const DisplayLimits &limits,
                          const ExtendedTelemetry &extended, const QString &motionProfileName,
                          const TuneInfo &tune, float steeringSmoothing, bool useMph,
                          bool showMarkers, bool paused) override
    {
        renderer.publishTelemetry(vehicle, limits, extended, motionProfileName, tune,
                                  steeringSmoothing, useMph, showMarkers, paused);
    }
    std::set<QString> publishedFields() override { return names; }

private:
    FakeRenderer renderer;
    std::set<QString> names;
};

/// An engine that renders nothing and writes down what views ask of it.
class FakeEngine final : public IDashboardEngine
{
public:
    bool acceleration = true;
    std::set<QString> fields;
    RendererScript script;
    QImage waiting{480, 272, QImage::Format_ARGB32_Premultiplied};

    QStringList calls; ///< "add", "remove", "waiting SCALE", "renderer", in order.
    std::set<IDashboardConsumer *> consumers;
    IDashboardConsumer *last = nullptr; ///< Who was added last, registered or not.

    FakeEngine() { waiting.fill(Qt::darkGreen); }

    QStringList takeCalls() { return std::exchange(calls, {}); }

    void updateTelemetry(const VehicleTelemetry &, const DisplayLimits &, const ExtendedTelemetry &,
                         bool) override
    {
    }
    void setDashboardFile(const QString &) override {}
    void shutdown() override {}
    std::unique_ptr<IDashboardRenderer> createRenderer() override
    {
        calls += QStringLiteral("renderer");
        return acceleration ? std::make_unique<NamedFieldsRenderer>(script, fields) : nullptr;
    }
    void addConsumer(IDashboardConsumer *consumer) override
    {
        calls += QStringLiteral("add");
        consumers.insert(consumer);
        last = consumer;
    }
    void removeConsumer(IDashboardConsumer *consumer) override
    {
        calls += QStringLiteral("remove");
        consumers.erase(consumer);
    }
    bool hasConsumers() override { return !consumers.empty(); }
    std::unique_ptr<QImage> createWaitingImage(int scale) override
    {
        calls += QStringLiteral("waiting %1").arg(scale);
        return std::make_unique<QImage>(waiting);
    }
    void setMotionProfileName(const QString &) override {}
    void setTuneInfo(const QString &, const QString &, const TuneValue &) override {}
};
