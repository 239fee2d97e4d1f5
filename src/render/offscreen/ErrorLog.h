#pragma once

#include <QtCore/QStringList>

namespace OVX {

/// The errors and warnings of one document, bounded so that a document that warns in every frame of
/// a night's drive stays within a fixed size: each distinct text stands once, in the order of its
/// first appearance.
class ErrorLog
{
public:
    static constexpr int MaximumEntries = 200; ///< Distinct texts; one closing line follows.
    static constexpr int MaximumLength = 4096; ///< Characters of one text; the rest is cut off.

    /// Enters `text` unless it is there already or the log is full.
    void append(const QString &text);

    void clear() { entries.clear(); }
    bool isEmpty() const { return entries.isEmpty(); }
    const QStringList &list() const { return entries; }

private:
    QStringList entries;
};

} // namespace OVX
