#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

class QEventLoop;

/// A thread whose work ends when it is asked to: by `stop`, or by the destruction, which wait until
/// it has. It can have sockets and timers, so it needs an application object. `start` and `stop`
/// are called by the owner, the other two by the work itself.
class StoppableThread
{
public:
    StoppableThread() = default;
    ~StoppableThread();
    StoppableThread(const StoppableThread &) = delete;
    StoppableThread &operator=(const StoppableThread &) = delete;

    /// Runs `work` on a new thread. Called once.
    void start(std::function<void()> work);

    /// Asks the work to return and waits until it has. May be called again, and without a start.
    void stop();

    /// Sleeps until the moment; false as soon as the work must return.
    bool waitUntil(std::chrono::steady_clock::time_point moment);

    /// Serves the thread's sockets and timers until the work must return.
    void serveUntilStopped();

private:
    void run(const std::function<void()> &work);

    std::mutex mutex;
    std::condition_variable stopRequested;
    bool stopping = false;
    QEventLoop *loop = nullptr; ///< The thread's, while it runs.
    std::thread thread;         ///< Not Qt's, on which the thread sanitizer sees nothing.
};
