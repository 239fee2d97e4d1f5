#pragma once

#include "support/EngineRig.h"
#include "support/FakeConsumer.h"

#include <QtCore/QTimer>
#include <QtTest/QtTest>

#include <thread>

/// Catches the engine's private timer at its first real event.
class TimerCatcher : public QObject
{
public:
    TimerCatcher() { QCoreApplication::instance()->installEventFilter(this); }

    QTimer *timer = nullptr;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto *candidate = qobject_cast<QTimer *>(watched);
        if (event->type() == QEvent::Timer && candidate != nullptr && candidate->interval() == 40)
            timer = candidate;
        return false;
    }
};

/// An engine with a document and a consumer, whose timer is known and runs. Nothing is pending.
class RunningEngineRig : public EngineRig
{
public:
    explicit RunningEngineRig(bool hardwareAcceleration = true)
        : EngineRig(hardwareAcceleration)
    {
        engine->setDashboardFile(QStringLiteral("/no/such/Dash.qml"));
        engine->addConsumer(&consumer);
        startTimer();
        TimerCatcher catcher;
        if (QTest::qWaitFor([&catcher] { return catcher.timer != nullptr; }, 30'000))
            timer = catcher.timer;
        freshTick();
        script.calls.clear();
        wakeUps.clear();
    }

    FakeConsumer consumer;
    QTimer *timer = nullptr;
};

inline void fromAnotherThread(const std::function<void()> &work)
{
    std::thread(work).join();
}
