#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <optional>

// How QSettings spells keys and texts in an INI file. Any thread.
namespace IniSyntax {

/// Walks a file's lines. Quotes and a backslash at the end continue a line.
class LineReader
{
public:
    /// `content` is borrowed and must outlive the reader, which starts at byte `from`.
    LineReader(const QByteArray &content, int from)
        : content(content)
        , at(from)
    {
    }

    /// Steps to the next line that is neither empty nor a comment; false at the end.
    bool next();

    char first() const { return content[start]; }
    bool hasValue() const { return equals >= 0; }

    /// The text before the first "=", without spaces around it.
    QByteArray key() const;
    QByteArray value() const;
    QByteArray line() const { return content.mid(start, at - start); }

private:
    void skipComment();

    const QByteArray &content;
    int at;
    int start = 0;
    int equals = -1;
    bool quoted = false;
    bool escaped = false; ///< The file ends with a backslash.
};

QString keyFromFile(const QByteArray &written);
QByteArray keyToFile(const QString &key);

/// The text of a value; nothing for a list or a serialised object.
std::optional<QString> textFromFile(const QByteArray &value, bool utf8);
QByteArray textToFile(const QString &text);

} // namespace IniSyntax
