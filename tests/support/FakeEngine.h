#pragma once

#include "plugin/IDashboardEngine.h"
#include "support/FakeRenderer.h"

#include <QtGui/QImage>

#include <set>
#include <utility>

/// An engine that renders nothing and writes down what is asked of it.
class FakeEngine final : public IDashboardEngine
{
public:
    bool acceleration = true;
    RendererScript script;
    QImage waiting{480, 272, QImage::Format_ARGB32_Premultiplied};

    QStringList calls;     ///< "add", "remove", "waiting SCALE", "renderer", in order.
    QStringList documents; ///< Which it was told to show, in order.
    std::vector<std::pair<std::uint32_t, bool>> updates; ///< Rpm and pause, in order.
    std::set<IDashboardConsumer *> consumers;
    IDashboardConsumer *last = nullptr; ///< Who was added last, registered or not.

    FakeEngine() { waiting.fill(Qt::darkGreen); }

    QStringList takeCalls() { return std::exchange(calls, {}); }

    void updateTelemetry(const VehicleTelemetry &vehicle, const DisplayLimits &,
                         const ExtendedTelemetry &, bool paused) override
    {
        updates.emplace_back(std::uint32_t(vehicle.rpm), paused); // The record is packed.
    }
    void setDashboardFile(const QString &path) override { documents += path; }
    void shutdown() override {}
    std::unique_ptr<IDashboardRenderer> createRenderer() override
    {
        calls += QStringLiteral("renderer");
        return acceleration ? std::make_unique<FakeRenderer>(script) : nullptr;
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
