#include "TelemetrySourceChoices.h"

#include "feeds/KnownFeeds.h"

#include <QtCore/QtGlobal>

std::vector<TelemetrySourceChoice> telemetrySourceChoices()
{
    std::vector<TelemetrySourceChoice> choices{
        {QStringLiteral("demo"), QT_TRANSLATE_NOOP("TelemetrySources", "Demo race")},
        {QStringLiteral("auto"), QT_TRANSLATE_NOOP("TelemetrySources", "Any game that sends")},
    };
    for (const KnownFeed &feed : knownFeeds())
        choices.push_back({QLatin1String(feed.option), feed.title});
    return choices;
}
