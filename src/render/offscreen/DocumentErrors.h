#pragma once

#include <QtCore/QHash>
#include <QtCore/QString>
#include <QtCore/QStringList>

class QQmlError;

namespace OVX {

/// Errors and warnings of one document: each distinct text once, in order of first appearance.
/// Bounded in total and for each line of the document, so that a line that warns in every frame
/// neither fills the memory nor hides the other lines.
class DocumentErrors
{
public:
    static constexpr int MaximumEntries = 200;   ///< In total; one closing line follows.
    static constexpr int MaximumPerLocation = 5; ///< From one line of a document; one line follows.
    static constexpr int MaximumLength = 4096;   ///< Characters of one text; the rest is cut off.

    /// Adds the error's text unless it is there already or a limit is reached.
    void append(const QQmlError &error);

    /// The same for a text without a place in a document.
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
