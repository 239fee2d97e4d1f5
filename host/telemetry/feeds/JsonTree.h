#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <optional>
#include <vector>

struct JsonMember;

/// A value of a JSON text that knows in which line it stands, so that messages can say so.
struct JsonValue
{
    enum class Kind { Null, Boolean, Number, Text, Object, Array };

    Kind kind = Kind::Null;
    int line = 0;                    ///< From 1 on.
    double number = 0;               ///< `Number` only.
    QString text;                    ///< `Text` only.
    std::vector<JsonMember> members; ///< `Object` only; in the text's order.
    std::vector<JsonValue> items;    ///< `Array` only.

    /// Null if it has no such member.
    const JsonValue *member(const QString &name) const;
};

struct JsonMember
{
    QString name;
    int line = 0; ///< Of the name.
    JsonValue value;
};

struct JsonError
{
    int line = 0;
    QString text; ///< A sentence without its full stop.
};

/// Reads a JSON text in UTF-8. Two members of one name are an error, as is nesting beyond 16
/// levels. Any bytes are safe.
std::optional<JsonValue> parseJson(const QByteArray &text, JsonError &error);
