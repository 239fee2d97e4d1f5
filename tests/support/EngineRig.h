#pragma once

#include "engine/DashboardEngine.h"
#include "support/FakeRenderer.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtTest/QSignalSpy>

/// An engine whose clock and renderers belong to the test and whose ticks the test strikes itself.
class EngineRig
{
public:
    explicit EngineRig(bool hardwareAcceleration = true, bool useMph = false)
        : engine(std::make_unique<DashboardEngine>(
              useMph, hardwareAcceleration,
              EngineSources{[this] { return now; },
                            [this] { return std::make_unique<FakeRenderer>(script); }}))
        , wakeUps(engine.get(), &DashboardEngine::startTimerAsync)
    {
    }

    RendererScript script;
    quint64 now = 1'000'000;
    std::unique_ptr<DashboardEngine> engine;
    QSignalSpy wakeUps;

    void tick() const { invoke("render"); }
    void ticks(int count) const
    {
        for (int i = 0; i < count; ++i)
            tick();
    }
    void startTimer() const { invoke("startTimer"); }

    /// Delivers what was queued to the engine, and no timer's event.
    void deliverQueued() const
    {
        QCoreApplication::sendPostedEvents(engine.get(), QEvent::MetaCall);
    }

    void update(float speedKmh = 0, bool paused = false) const
    {
        VehicleTelemetry vehicle{};
        vehicle.speedKmh = speedKmh;
        engine->updateTelemetry(vehicle, {}, {}, paused);
    }

    /// A tick with something new.
    void freshTick() const
    {
        update();
        tick();
    }

    /// Whether the timer is taken to run, told by whether an update tries to wake it.
    bool takenToRun()
    {
        const int before = wakeUps.count();
        update();
        return wakeUps.count() == before;
    }

private:
    void invoke(const char *slot) const
    {
        QMetaObject::invokeMethod(engine.get(), slot, Qt::DirectConnection);
    }
};
