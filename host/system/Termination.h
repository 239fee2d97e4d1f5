#pragma once

#include <memory>

/// While it lives, a request to end the program (SIGTERM, SIGINT, SIGHUP; on Windows Ctrl+C or the
/// closing of the console) calls QCoreApplication::quit and so ends the GUI thread's event loops,
/// also those that begin later. A second request ends the program at once. Signals that the parent
/// process ignored stay ignored.
///
/// Create one, on the GUI thread, after the application object.
class Termination
{
public:
    Termination();
    ~Termination();

    Termination(const Termination &) = delete;
    Termination &operator=(const Termination &) = delete;

    /// Whether the program was asked to end. Any thread.
    static bool requested();

private:
    struct Platform;
    const std::unique_ptr<Platform> platform;
};
