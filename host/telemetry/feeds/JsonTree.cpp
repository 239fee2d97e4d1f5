#include "JsonTree.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

constexpr std::size_t DeepestNesting = 16;
constexpr int NumberOverflow = 406; ///< The parser's number for it.

/// Where the parser is. It reads one character beyond a number, so the last one read doesn't count.
struct Position
{
    int line = 1;
    bool afterLineEnd = false;

    void pass(char character)
    {
        line += afterLineEnd ? 1 : 0;
        afterLineEnd = character == '\n';
    }
};

/// Gives the parser the text and notes how far it has come.
class CountingIterator
{
public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char *;
    using reference = const char &;

    CountingIterator(const char *at, Position &position)
        : at(at)
        , position(&position)
    {
    }

    reference operator*() const { return *at; }

    CountingIterator &operator++()
    {
        position->pass(*at++);
        return *this;
    }

    bool operator==(const CountingIterator &other) const { return at == other.at; }
    bool operator!=(const CountingIterator &other) const { return at != other.at; }

private:
    const char *at;
    Position *position;
};

/// Takes the parser's events and builds the tree. A false answer ends the parsing.
class TreeBuilder final : public nlohmann::json_sax<nlohmann::json>
{
public:
    explicit TreeBuilder(const Position &position)
        : position(position)
    {
    }

    JsonValue root;
    JsonError error;

    bool null() override { return put(JsonValue::Kind::Null) != nullptr; }
    bool boolean(bool /*value*/) override { return put(JsonValue::Kind::Boolean) != nullptr; }
    bool binary(binary_t & /*value*/) override { return false; } // Not in JSON's text.

    bool number_integer(number_integer_t value) override
    {
        return number(static_cast<double>(value));
    }

    bool number_unsigned(number_unsigned_t value) override
    {
        return number(static_cast<double>(value));
    }

    bool number_float(number_float_t value, const string_t & /*text*/) override
    {
        return number(value);
    }

    bool string(string_t &value) override
    {
        put(JsonValue::Kind::Text)->text = QString::fromStdString(value);
        return true;
    }

    bool start_object(std::size_t /*members*/) override { return open(JsonValue::Kind::Object); }
    bool end_object() override { return close(); }
    bool start_array(std::size_t /*items*/) override { return open(JsonValue::Kind::Array); }
    bool end_array() override { return close(); }

    bool key(string_t &value) override
    {
        const QString name = QString::fromStdString(value);
        if (const JsonValue *first = levels.back()->member(name)) {
            return fail(QStringLiteral("'%1' stands here a second time; the first is in line %2")
                            .arg(name)
                            .arg(first->line));
        }
        levels.back()->members.push_back({name, position.line, {}});
        return true;
    }

    bool parse_error(std::size_t /*place*/, const std::string & /*token*/,
                     const nlohmann::detail::exception &exception) override
    {
        if (exception.id == NumberOverflow)
            return fail(QStringLiteral("a number is too large"));
        // What stands before the last colon repeats the place.
        const QString reason = QString::fromUtf8(exception.what()).simplified();
        return fail(QStringLiteral("no valid JSON: ") +
                    reason.mid(reason.indexOf(QStringLiteral(": ")) + 2));
    }

private:
    bool fail(const QString &text)
    {
        error = {position.line, text};
        return false;
    }

    bool number(double value)
    {
        put(JsonValue::Kind::Number)->number = value;
        return true;
    }

    JsonValue *put(JsonValue::Kind kind)
    {
        JsonValue *value = &root;
        if (!levels.empty()) {
            JsonValue &parent = *levels.back();
            if (parent.kind == JsonValue::Kind::Object) {
                value = &parent.members.back().value;
            } else {
                parent.items.emplace_back();
                value = &parent.items.back();
            }
        }
        value->kind = kind;
        value->line = position.line;
        return value;
    }

    bool open(JsonValue::Kind kind)
    {
        if (levels.size() == DeepestNesting)
            return fail(QStringLiteral("the nesting is too deep"));
        // A container only grows while none of its children is open, so the pointers hold.
        levels.push_back(put(kind));
        return true;
    }

    bool close()
    {
        levels.pop_back();
        return true;
    }

    const Position &position;
    std::vector<JsonValue *> levels; ///< The containers that are open, the outermost first.
};

} // namespace

const JsonValue *JsonValue::member(const QString &name) const
{
    const auto found = std::find_if(members.begin(), members.end(),
                                    [&name](const JsonMember &each) { return each.name == name; });
    return found != members.end() ? &found->value : nullptr;
}

std::optional<JsonValue> parseJson(const QByteArray &text, JsonError &error)
{
    const int zero = text.indexOf('\0');
    if (zero >= 0) {
        // The parser would take it for the end.
        error = {1 + static_cast<int>(std::count(text.begin(), text.begin() + zero, '\n')),
                 QStringLiteral("no valid JSON: a zero byte")};
        return std::nullopt;
    }
    Position position;
    TreeBuilder builder(position);
    if (nlohmann::json::sax_parse(CountingIterator(text.begin(), position),
                                  CountingIterator(text.end(), position), &builder))
        return std::move(builder.root);
    error = builder.error;
    return std::nullopt;
}
