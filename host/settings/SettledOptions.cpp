#include "SettledOptions.h"

#include "HostSettings.h"

#include <utility>

SettledOptions::SettledOptions(SessionOptions commandLine, const HostSettings &settings)
    : options(std::move(commandLine))
    , settings(settings)
    , mph(settings.useMph())
    , source(settings.telemetrySource())
{
}

SessionOptions SettledOptions::take()
{
    const bool unitsChanged = mph != settings.useMph();
    const bool sourceChanged = source != settings.telemetrySource();
    mph = settings.useMph();
    source = settings.telemetrySource();
    if (unitsChanged || !options.useMph)
        options.useMph = mph;
    if (sourceChanged || options.telemetry.source.isEmpty())
        options.telemetry.source = source;
    return options;
}
