#pragma once

#include "engine/DashboardEngine.h"
#include "support/FakeConsumer.h"
#include "support/FakeRenderer.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QTimer>
#include <QtTest/QtTest>

/// An engine with a fake clock, fake renderers and a consumer, whose ticks the test runs itself.
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
    FakeConsumer consumer;
    quint64 now = 1'000'000; ///< Milliseconds.
    std::unique_ptr<DashboardEngine> engine;
    QSignalSpy wakeUps; ///< Attempts to start the timer.

    /// Sets a document, which needn't exist for fake renderers, and adds the consumers.
    void show(std::initializer_list<FakeConsumer *> others = {})
    {
        engine->setDashboardFile(QStringLiteral("/no/such/Dash.qml"));
        engine->addConsumer(&consumer);
        for (FakeConsumer *other : others)
            engine->addConsumer(other);
    }

    void tick(int count = 1) const
    {
        for (int i = 0; i < count; ++i)
            invoke("render");
    }
    void start() const { invoke("startTimer"); }

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

    /// Ticks with something new.
    void freshTick(int count = 1) const
    {
        for (int i = 0; i < count; ++i) {
            update();
            tick();
        }
    }

private:
    void invoke(const char *slot) const
    {
        QMetaObject::invokeMethod(engine.get(), slot, Qt::DirectConnection);
    }
};

/// An engine that shows a document, and whose timer runs and is known. Nothing is pending.
class RunningEngineRig : public EngineRig, private QObject
{
public:
    explicit RunningEngineRig(bool hardwareAcceleration = true)
        : EngineRig(hardwareAcceleration)
    {
        show();
        start();
        QCoreApplication::instance()->installEventFilter(this);
        while (timer == nullptr)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        freshTick();
        script.calls.clear();
        wakeUps.clear();
    }

    QTimer *timer = nullptr; ///< The engine's private one, found when it first fires.

private:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto *fired = qobject_cast<QTimer *>(watched);
        if (event->type() == QEvent::Timer && fired != nullptr && fired->interval() == 40)
            timer = fired;
        return false;
    }
};
