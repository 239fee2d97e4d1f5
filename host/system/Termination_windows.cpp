#include "Termination.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QWinEventNotifier>

#include <atomic>
#include <mutex>
#include <windows.h>

namespace {

std::atomic<bool> wasRequested{false};
std::mutex wakeGuard;
HANDLE wakeEvent = nullptr; ///< Null once it is closed. Guarded.

void wake()
{
    const std::lock_guard lock(wakeGuard);
    if (wakeEvent != nullptr)
        SetEvent(wakeEvent);
}

/// Runs on a thread of the system, which may outlive the Termination object.
BOOL WINAPI request(DWORD type)
{
    if (wasRequested.exchange(true))
        return FALSE; // The system's handler is next and ends the process.
    wake();
    // When a console closes, the process ends when the handler returns: give the program its time.
    if (type != CTRL_C_EVENT && type != CTRL_BREAK_EVENT)
        Sleep(INFINITE);
    return TRUE;
}

} // namespace

struct Termination::Platform
{
    HANDLE event = nullptr;
    std::unique_ptr<QWinEventNotifier> notifier;
};

Termination::Termination()
    : platform(std::make_unique<Platform>())
{
    wasRequested = false;
    platform->event = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    if (platform->event == nullptr)
        return; // Requests keep their default action.
    {
        const std::lock_guard lock(wakeGuard);
        wakeEvent = platform->event;
    }

    // The event is never reset, so that the notifier also ends loops that begin later.
    platform->notifier = std::make_unique<QWinEventNotifier>(platform->event);
    QObject::connect(platform->notifier.get(), &QWinEventNotifier::activated,
                     QCoreApplication::instance(), &QCoreApplication::quit);
    SetConsoleCtrlHandler(request, TRUE);
}

Termination::~Termination()
{
    if (platform->notifier == nullptr)
        return;
    SetConsoleCtrlHandler(request, FALSE);
    platform->notifier.reset();
    const std::lock_guard lock(wakeGuard);
    wakeEvent = nullptr;
    CloseHandle(platform->event);
}

bool Termination::requested()
{
    return wasRequested;
}
