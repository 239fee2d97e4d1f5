#include "render/offscreen/DocumentErrors.h"

#include <QtQml/QQmlError>

namespace OVX {

void DocumentErrors::append(const QQmlError &error)
{
    // The location is the text before the description. A path in it may hold any character.
    const QString text = error.toString();
    append(text, text.chopped(error.description().size()));
}

void DocumentErrors::append(const QString &text, const QString &location)
{
    if (entries.size() > MaximumEntries)
        return;
    const QString entry =
        text.size() > MaximumLength ? text.left(MaximumLength) + QStringLiteral("...") : text;
    if (entries.contains(entry))
        return;
    int &count = perLocation[location];
    if (count > MaximumPerLocation)
        return;
    ++count;
    if (entries.size() == MaximumEntries)
        entries.append(QStringLiteral("Further errors and warnings are not recorded"));
    else if (count > MaximumPerLocation)
        entries.append(location + QStringLiteral("Further warnings from here are not recorded"));
    else
        entries.append(entry);
}

void DocumentErrors::clear()
{
    entries.clear();
    perLocation.clear();
}

} // namespace OVX
