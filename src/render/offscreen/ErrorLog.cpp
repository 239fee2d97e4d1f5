#include "render/offscreen/ErrorLog.h"

namespace OVX {

namespace {

/// What a text of the QML engine names in front of its message; the whole of any other text.
QString locationOf(const QString &text)
{
    return text.left(text.indexOf(QLatin1String(": ")));
}

} // namespace

void ErrorLog::append(const QString &text)
{
    if (entries.size() > MaximumEntries)
        return;
    const QString entry =
        text.size() > MaximumLength ? text.left(MaximumLength) + QStringLiteral("...") : text;
    if (entries.contains(entry))
        return;
    const QString location = locationOf(entry);
    int &count = perLocation[location];
    if (count > MaximumPerLocation)
        return;
    ++count;
    if (entries.size() == MaximumEntries)
        entries.append(QStringLiteral("Further errors and warnings are not recorded"));
    else if (count > MaximumPerLocation)
        entries.append(location + QStringLiteral(": Further warnings from here are not recorded"));
    else
        entries.append(entry);
}

void ErrorLog::clear()
{
    entries.clear();
    perLocation.clear();
}

} // namespace OVX
