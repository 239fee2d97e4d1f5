#include "Termination.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QWinEventNotifier>

#include <atomic>
#include <windows.h>

namespace {

std::atomic<bool> wasRequested{false};
std::atomic<HANDLE> wakeEvent{nullptr};

/// Runs on a thread of the system's own.
BOOL WINAPI request(DWORD type)
{
    if (wasRequested.exchange(true))
        return FALSE; // The system's own handler follows, which ends the process.
    SetEvent(wakeEvent);
    // Where a console closes, the process ends with the handler: this leaves the program its time.
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
        return; // Then a request does what it does without us.
    wakeEvent = platform->event;

    // The event is never reset, so the notifier also ends a loop that begins after the first quit.
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
    CloseHandle(platform->event);
}

bool Termination::requested()
{
    return wasRequested;
}
