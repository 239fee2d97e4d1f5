#include "SourceTokens.h"

#include <algorithm>

namespace {

using Kind = SourceToken::Kind;
using Tokens = std::vector<SourceToken>;

bool isWordCharacter(QChar c)
{
    return c.isLetterOrNumber() || c == QLatin1Char('_') || c == QLatin1Char('$');
}

class Splitter
{
public:
    explicit Splitter(const QString &source)
        : source(source)
    {
    }

    Tokens split()
    {
        while (place < source.size()) {
            if (at("//"))
                skipTo(QLatin1String("\n"), 0);
            else if (at("/*"))
                skipTo(QLatin1String("*/"), 2);
            else if (source.at(place) == QLatin1Char('/') && regexMayStand())
                takeQuoted(QLatin1Char('/'), false);
            else if (QStringLiteral("\"'`").contains(source.at(place)))
                takeQuoted(source.at(place), true);
            else if (isWordCharacter(source.at(place)))
                takeWord();
            else
                takeMark();
        }
        return tokens;
    }

private:
    bool at(const char *text) const { return source.midRef(place).startsWith(QLatin1String(text)); }

    void moveTo(int next)
    {
        line += source.midRef(place, next - place).count(QLatin1Char('\n'));
        place = next;
    }

    void skipTo(QLatin1String end, int length)
    {
        const int found = source.indexOf(end, place + 2);
        moveTo(found < 0 ? source.size() : found + length);
    }

    /// After a value a slash divides; anywhere else it begins a regular expression.
    bool regexMayStand() const
    {
        if (tokens.empty())
            return true;
        const SourceToken &last = tokens.back();
        return last.kind == Kind::Mark && last.text != QLatin1String(")") &&
               last.text != QLatin1String("]");
    }

    void takeQuoted(QChar quote, bool isString)
    {
        int end = place + 1;
        while (end < source.size() && source.at(end) != quote)
            end += source.at(end) == QLatin1Char('\\') ? 2 : 1;
        end = std::min(end, source.size());
        if (isString)
            tokens.push_back({Kind::String, source.mid(place + 1, end - place - 1), line});
        moveTo(std::min(end + 1, source.size()));
    }

    void takeWord()
    {
        int end = place;
        // A number keeps its decimal point.
        const auto belongs = [this, &end] {
            const QChar c = source.at(end);
            return isWordCharacter(c) ||
                   (c == QLatin1Char('.') && source.at(place).isDigit() && end > place);
        };
        while (end < source.size() && belongs())
            ++end;
        tokens.push_back({Kind::Word, source.mid(place, end - place), line});
        place = end;
    }

    void takeMark()
    {
        if (!source.at(place).isSpace())
            tokens.push_back({Kind::Mark, source.at(place), line});
        moveTo(place + 1);
    }

    const QString &source;
    Tokens tokens;
    int place = 0;
    int line = 1;
};

} // namespace

std::vector<SourceToken> sourceTokens(const QString &source)
{
    return Splitter(source).split();
}
