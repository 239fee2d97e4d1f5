#include "StoppableThread.h"

#include <QtCore/QEventLoop>

#include <utility>

StoppableThread::~StoppableThread()
{
    stop();
}

void StoppableThread::start(std::function<void()> work)
{
    thread = std::thread([this, work = std::move(work)] { run(work); });
}

void StoppableThread::stop()
{
    if (!thread.joinable())
        return;
    {
        const std::lock_guard guard(mutex);
        stopping = true;
        if (loop != nullptr)
            QMetaObject::invokeMethod(
                loop, [loop = loop] { loop->quit(); }, Qt::QueuedConnection);
    }
    stopRequested.notify_all();
    thread.join();
}

bool StoppableThread::waitUntil(std::chrono::steady_clock::time_point moment)
{
    std::unique_lock lock(mutex);
    return !stopRequested.wait_until(lock, moment, [this] { return stopping; });
}

void StoppableThread::serveUntilStopped()
{
    {
        const std::lock_guard guard(mutex);
        if (stopping)
            return;
    }
    loop->exec();
}

void StoppableThread::run(const std::function<void()> &work)
{
    QEventLoop ownLoop; // Sockets and timers can't be made before the thread has one.
    {
        const std::lock_guard guard(mutex);
        loop = &ownLoop;
    }
    work();
    const std::lock_guard guard(mutex);
    loop = nullptr;
}
