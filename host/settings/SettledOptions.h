#pragma once

#include "session/SessionOptions.h"

class HostSettings;

/// What each session with windows is built with: the command line, and the settings for what it
/// leaves open. What the user changes in the settings while the program runs goes before either.
class SettledOptions
{
public:
    /// `settings` is borrowed.
    SettledOptions(SessionOptions commandLine, const HostSettings &settings);

    /// For a session that is built now.
    SessionOptions take();

private:
    SessionOptions options;
    const HostSettings &settings;
    bool mph; ///< As set when a session was built last, or the program began.
    QString source;
};
