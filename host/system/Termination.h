#pragma once

#include <memory>

/// While it lives, a request of the system to end the program (SIGTERM, SIGINT, SIGHUP; on Windows
/// Ctrl+C and the closing of the console) ends the GUI thread's event loops through
/// QCoreApplication::quit, also those that begin later. A second request ends the program at once.
/// What the parent process had ignored stays ignored.
///
/// Make one, on the GUI thread, after the application object.
class Termination
{
public:
    Termination();
    ~Termination();

    Termination(const Termination &) = delete;
    Termination &operator=(const Termination &) = delete;

    /// Whether the system has asked. Any thread.
    static bool requested();

private:
    struct Platform;
    const std::unique_ptr<Platform> platform;
};
