#pragma once

#include <QtCore/QHash>
#include <QtCore/QString>
#include <QtCore/QStringList>

class QQmlError;

namespace OVX {

/// The errors and warnings of one document, bounded so that a document that warns in every frame of
/// a night's drive stays within a fixed size, and still leaves room for what other lines have to
/// say: each distinct text stands once, in the order of its first appearance.
class ErrorLog
{
public:
    static constexpr int MaximumEntries = 200;   ///< In all; one closing line follows.
    static constexpr int MaximumPerLocation = 5; ///< From one line of a document; one line follows.
    static constexpr int MaximumLength = 4096;   ///< Characters of one text; the rest is cut off.

    /// Enters the error's text unless it is there already or its room is used up.
    void append(const QQmlError &error);

    /// The same for a text of no place in a document.
    void append(const QString &text) { append(text, text); }

    void clear();
    bool isEmpty() const { return entries.isEmpty(); }
    const QStringList &list() const { return entries; }

private:
    void append(const QString &text, const QString &location);

    QStringList entries;
    QHash<QString, int> perLocation;
};

} // namespace OVX
