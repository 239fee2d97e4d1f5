#include "render/offscreen/ErrorLog.h"

namespace OVX {

void ErrorLog::append(const QString &text)
{
    if (entries.size() > MaximumEntries)
        return;
    const QString entry =
        text.size() > MaximumLength ? text.left(MaximumLength) + QStringLiteral("...") : text;
    if (entries.contains(entry))
        return;
    if (entries.size() == MaximumEntries) {
        entries.append(QStringLiteral("Further errors and warnings are not recorded"));
        return;
    }
    entries.append(entry);
}

} // namespace OVX
