#pragma once

#include "session/SessionOptions.h"

class HostSettings;

/// The options of the next session with windows: the command line's, and the settings' where the
/// command line leaves them open. A setting that the user changes while the program runs wins over
/// both.
class SettledOptions
{
public:
    /// `settings` is borrowed.
    SettledOptions(SessionOptions commandLine, const HostSettings &settings);

    /// The options of a session that is created now.
    SessionOptions take();

private:
    SessionOptions options;
    const HostSettings &settings;
    bool mph; ///< The setting when the last session was created, or the program started.
    QString source;
};
