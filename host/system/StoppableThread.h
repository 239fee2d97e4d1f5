#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>

class QThread;

/// A thread whose work ends when it is asked to: by `stop`, or by the destruction, which wait until
/// it has. `start` and `stop` are called by the owner, the other two by the work itself.
class StoppableThread
{
public:
    StoppableThread();
    ~StoppableThread();
    StoppableThread(const StoppableThread &) = delete;
    StoppableThread &operator=(const StoppableThread &) = delete;

    /// Runs `work` on a new thread of this name. Called once.
    void start(const char *name, std::function<void()> work);

    /// Asks the work to return and waits until it has. May be called again, and without a start.
    void stop();

    /// Sleeps until the moment; false as soon as the work must return.
    bool waitUntil(std::chrono::steady_clock::time_point moment);

    /// Serves the thread's sockets and timers until the work must return.
    void serveUntilStopped();

private:
    std::mutex mutex;
    std::condition_variable stopRequested;
    bool stopping = false;
    std::unique_ptr<QThread> thread;
};
