#include "SessionOptions.h"

#include "HostSettings.h"

#include <utility>

SessionOptions::SessionOptions(Options commandLine, const HostSettings &settings)
    : options(std::move(commandLine))
    , settings(settings)
    , mph(settings.useMph())
    , source(settings.telemetrySource())
{
}

Options SessionOptions::take()
{
    const bool unitsChanged = mph != settings.useMph();
    const bool sourceChanged = source != settings.telemetrySource();
    mph = settings.useMph();
    source = settings.telemetrySource();
    if (unitsChanged || options.units == Options::Units::AsSet)
        options.units = mph ? Options::Units::Mph : Options::Units::Kmh;
    if (sourceChanged || options.telemetry.isEmpty())
        options.telemetry = source;
    return options;
}
