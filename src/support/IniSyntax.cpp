#include "support/IniSyntax.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstring>

namespace IniSyntax {

namespace {

bool isLineEnd(char c)
{
    return c == '\n' || c == '\r';
}

bool isSpace(char c)
{
    return c == ' ' || c == '\t';
}

/// Length of the line end at `at`: one byte, or two different ones.
int lineEndLength(const QByteArray &text, int at)
{
    const bool two = at + 1 < text.size() && isLineEnd(text[at + 1]) && text[at + 1] != text[at];
    return two ? 2 : 1;
}

/// The value of a digit, or `base` for any other character.
uint digitValue(char c, uint base)
{
    uint value = base;
    if (c >= '0' && c <= '9')
        value = static_cast<uint>(c - '0');
    else if (c >= 'a' && c <= 'f')
        value = static_cast<uint>(c - 'a' + 10);
    else if (c >= 'A' && c <= 'F')
        value = static_cast<uint>(c - 'A' + 10);
    return value < base ? value : base;
}

constexpr char EscapeLetters[] = R"(abfnrtv"?'\)";
constexpr char EscapedCharacters[] = "\a\b\f\n\r\t\v\"?'\\";

/// Resolves a value's escapes and quotes. Serialised objects still look like texts here.
class ValueReader
{
public:
    ValueReader(const QByteArray &value, bool utf8)
        : value(value)
        , utf8(utf8)
    {
    }

    /// Nothing for a list.
    std::optional<QString> text()
    {
        skipSpaces();
        while (at < value.size()) {
            const char here = value[at];
            if (here == ',' && !quoted)
                return std::nullopt;
            if (here == '\\') {
                readEscape();
                fixedLength = result.size();
            } else if (here == '"') {
                ++at;
                anyQuotes = true;
                quoted = !quoted;
                if (!quoted) {
                    skipSpaces();
                    fixedLength = result.size();
                }
            } else {
                readPlain();
            }
        }
        while (!anyQuotes && result.size() > fixedLength && isSpace(result.back().toLatin1()))
            result.chop(1);
        return result;
    }

private:
    void skipSpaces()
    {
        while (at < value.size() && isSpace(value[at]))
            ++at;
    }

    void readPlain()
    {
        // The first byte may be a comma within quotes.
        const int from = at++;
        while (at < value.size() && value[at] != '\\' && value[at] != '"' && value[at] != ',')
            ++at;
        const char *const bytes = value.constData() + from;
        result +=
            utf8 ? QString::fromUtf8(bytes, at - from) : QString::fromLatin1(bytes, at - from);
    }

    void readEscape()
    {
        if (++at == value.size())
            return;
        const char letter = value[at];
        const char *const known = letter != '\0' ? std::strchr(EscapeLetters, letter) : nullptr;
        if (known != nullptr) {
            result += QLatin1Char(EscapedCharacters[known - EscapeLetters]);
            ++at;
        } else if (letter == 'x') {
            ++at;
            readNumber(16);
        } else if (digitValue(letter, 8) < 8) {
            readNumber(8);
        } else {
            at += isLineEnd(letter) ? lineEndLength(value, at) : 1;
        }
    }

    /// Reads all digits; too large a number keeps its lowest bits.
    void readNumber(uint base)
    {
        const int from = at;
        uint number = 0;
        for (; at < value.size() && digitValue(value[at], base) < base; ++at)
            number = number * base + digitValue(value[at], base);
        if (at > from)
            result += QChar(static_cast<ushort>(number));
    }

    const QByteArray &value;
    const bool utf8;
    int at = 0;
    bool quoted = false;
    bool anyQuotes = false;
    int fixedLength = 0; ///< Spaces up to here are part of the text.
    QString result;
};

/// A value that begins so and ends with a bracket is no text for QSettings.
constexpr std::array<const char *, 6> ObjectForms{"@ByteArray(", "@Variant(", "@DateTime(",
                                                  "@Rect(",      "@Size(",    "@Point("};

QByteArray hexadecimal(uint number)
{
    return "\\x" + QByteArray::number(number, 16);
}

} // namespace

bool LineReader::next()
{
    start = at;
    while (start < content.size() && (isSpace(content[start]) || isLineEnd(content[start])))
        ++start;
    equals = -1;
    quoted = false;
    escaped = false;
    for (at = start; at < content.size(); ++at) {
        const char here = content[at];
        if (here == ';' && at == start) {
            skipComment();
        } else if (here == '\\') {
            escaped = ++at >= content.size();
            if (!escaped && isLineEnd(content[at]))
                at += lineEndLength(content, at) - 1;
        } else if (here == '"') {
            quoted = !quoted;
        } else if (!quoted && (isLineEnd(here) || here == ';')) {
            break;
        } else if (here == '=' && !quoted && equals < 0) {
            equals = at;
        }
    }
    at = qMin(at, content.size());
    return start < content.size();
}

/// Moves the line's beginning behind the comment, and `at` just before it.
void LineReader::skipComment()
{
    while (start < content.size() && !isLineEnd(content[start]))
        ++start;
    while (start < content.size() && (isSpace(content[start]) || isLineEnd(content[start])))
        ++start;
    at = start - 1;
}

QByteArray LineReader::key() const
{
    int end = equals;
    while (end > start && isSpace(content[end - 1]))
        --end;
    return content.mid(start, end - start);
}

QByteArray LineReader::value() const
{
    QByteArray result = content.mid(equals + 1, at - equals - 1);
    // The file was cut off here. In a new file the value must not swallow what follows it.
    if (escaped)
        result.chop(1);
    if (quoted)
        result += '"';
    return result;
}

QString keyFromFile(const QByteArray &written)
{
    QString result;
    for (int i = 0; i < written.size(); ++i) {
        const char here = written[i];
        if (here == '\\') {
            result += QLatin1Char('/');
            continue;
        }
        if (here == '%' && i + 1 < written.size()) {
            const bool isLong = written[i + 1] == 'U';
            const QByteArray digits = written.mid(i + (isLong ? 2 : 1), isLong ? 4 : 2);
            bool ok = false;
            const int code = digits.toInt(&ok, 16);
            if (ok && digits.size() == (isLong ? 4 : 2)) {
                result += QChar(static_cast<ushort>(code));
                i += isLong ? 5 : 2;
                continue;
            }
        }
        result += QLatin1Char(here);
    }
    return result;
}

QByteArray keyToFile(const QString &key)
{
    QByteArray result;
    for (const QChar character : key) {
        const ushort code = character.unicode();
        const char letter = code < 0x80 ? static_cast<char>(code) : '\0';
        if (letter == '/')
            result += '\\';
        else if (letter != '\0' &&
                 (std::isalnum(letter) != 0 || std::strchr("_-.", letter) != nullptr))
            result += letter;
        else if (code <= 0xff)
            result += '%' + QByteArray::number(code, 16).rightJustified(2, '0').toUpper();
        else
            result += "%U" + QByteArray::number(code, 16).rightJustified(4, '0').toUpper();
    }
    return result;
}

std::optional<QString> textFromFile(const QByteArray &value, bool utf8)
{
    std::optional<QString> text = ValueReader(value, utf8).text();
    if (!text || !text->startsWith(QLatin1Char('@')))
        return text;
    // A text's own "@" is doubled, and a text with a zero character is wrapped in "@String()".
    if (text->startsWith(QLatin1String("@@")))
        return text->mid(1);
    if (!text->endsWith(QLatin1Char(')')))
        return text;
    const QLatin1String string("@String(");
    if (text->startsWith(string))
        return text->mid(string.size(), text->size() - string.size() - 1);
    const bool isObject =
        *text == QLatin1String("@Invalid()") ||
        std::any_of(ObjectForms.begin(), ObjectForms.end(),
                    [&](const char *form) { return text->startsWith(QLatin1String(form)); });
    return isObject ? std::nullopt : text;
}

QByteArray textToFile(const QString &text)
{
    QString marked = text;
    if (text.contains(QChar::Null))
        marked = QStringLiteral("@String(%1)").arg(text);
    else if (text.startsWith(QLatin1Char('@')))
        marked.prepend(QLatin1Char('@'));

    QByteArray result;
    bool afterNumber = false; // A digit here would be read as part of the number.
    for (const QChar character : qAsConst(marked)) {
        const ushort code = character.unicode();
        const char letter = code < 0x7f ? static_cast<char>(code) : '\x7f';
        if (afterNumber && digitValue(letter, 16) < 16) {
            result += hexadecimal(code);
            continue;
        }
        afterNumber = false;
        const char *const special = letter != '\0' && letter != '?' && letter != '\''
                                        ? std::strchr(EscapedCharacters, letter)
                                        : nullptr;
        if (letter == '\0') {
            result += "\\0";
            afterNumber = true;
        } else if (special != nullptr) {
            result += '\\';
            result += EscapeLetters[special - EscapedCharacters];
        } else if (letter < 0x20 || letter == '\x7f') {
            result += hexadecimal(code);
            afterNumber = true;
        } else {
            result += letter;
        }
    }
    const bool quotes = text.contains(QLatin1Char(';')) || text.contains(QLatin1Char(',')) ||
                        text.contains(QLatin1Char('=')) || result.startsWith(' ') ||
                        result.endsWith(' ');
    return quotes ? '"' + result + '"' : result;
}

} // namespace IniSyntax
