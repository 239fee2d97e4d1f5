#include "StoppableThread.h"

#include <QtCore/QEventLoop>
#include <QtCore/QThread>

#include <utility>

StoppableThread::StoppableThread() = default;

StoppableThread::~StoppableThread()
{
    stop();
}

void StoppableThread::start(const char *name, std::function<void()> work)
{
    thread.reset(QThread::create(std::move(work)));
    thread->setObjectName(QLatin1String(name));
    thread->start();
}

void StoppableThread::stop()
{
    if (thread == nullptr)
        return;
    {
        const std::lock_guard guard(mutex);
        stopping = true;
    }
    stopRequested.notify_all();
    thread->quit();
    thread->wait();
}

bool StoppableThread::waitUntil(std::chrono::steady_clock::time_point moment)
{
    std::unique_lock lock(mutex);
    return !stopRequested.wait_until(lock, moment, [this] { return stopping; });
}

void StoppableThread::serveUntilStopped()
{
    // Once `quit` was called, before this too, no loop of the thread runs any longer.
    QEventLoop().exec();
}
