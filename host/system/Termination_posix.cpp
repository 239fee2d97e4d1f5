#include "Termination.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QSocketNotifier>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr std::array Signals{SIGTERM, SIGINT, SIGHUP};

std::atomic<bool> wasRequested{false};
std::atomic<int> wakeEnd{-1};
static_assert(std::atomic<bool>::is_always_lock_free && std::atomic<int>::is_always_lock_free,
              "a signal handler must not wait");

/// Sets the handler of all signals but those that are ignored, as SIGHUP is under nohup.
void handleSignals(void (*handler)(int))
{
    for (const int number : Signals) {
        struct sigaction current = {};
        sigaction(number, nullptr, &current);
        if (current.sa_handler == SIG_IGN)
            continue;
        struct sigaction wanted = {};
        wanted.sa_handler = handler;
        wanted.sa_flags = SA_RESTART;
        sigemptyset(&wanted.sa_mask);
        sigaction(number, &wanted, nullptr);
    }
}

// Async-signal-safe calls only. From here on a second signal kills.
void request(int /*number*/)
{
    const int savedErrno = errno;
    handleSignals(SIG_DFL);
    wasRequested = true;
    const char byte = 0;
    [[maybe_unused]] const ssize_t written = write(wakeEnd, &byte, 1);
    errno = savedErrno;
}

} // namespace

struct Termination::Platform
{
    std::array<int, 2> ends{-1, -1};
    std::unique_ptr<QSocketNotifier> notifier;
};

Termination::Termination()
    : platform(std::make_unique<Platform>())
{
    wasRequested = false;
    if (pipe(platform->ends.data()) != 0)
        return; // Signals keep their default action.
    for (const int end : platform->ends)
        fcntl(end, F_SETFD, FD_CLOEXEC);
    fcntl(platform->ends[1], F_SETFL, O_NONBLOCK);
    wakeEnd = platform->ends[1];

    // The byte is never read, so that the notifier also ends loops that begin later.
    platform->notifier =
        std::make_unique<QSocketNotifier>(platform->ends[0], QSocketNotifier::Read);
    QObject::connect(platform->notifier.get(), &QSocketNotifier::activated,
                     QCoreApplication::instance(), &QCoreApplication::quit);
    handleSignals(request);
}

Termination::~Termination()
{
    if (platform->notifier == nullptr)
        return;
    handleSignals(SIG_DFL);
    platform->notifier.reset();
    wakeEnd = -1;
    for (const int end : platform->ends)
        close(end);
}

bool Termination::requested()
{
    return wasRequested;
}
