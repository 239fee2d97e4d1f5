#include "FeedDescription.h"

#include "JsonTree.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QRegularExpression>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>
#include <vector>

namespace {

using Kind = JsonValue::Kind;
using Type = FeedDescription::Type;

using Names = std::vector<const char *>;

constexpr int LargestDatagram = 65'507;
constexpr int LongestText = 256;
constexpr QLatin1String Comment("comment"); ///< Allowed in every object.

struct TypeName
{
    const char *name;
    Type type;
    int size;
    bool whole;
};

constexpr std::array<TypeName, 8> Types{{
    {"u8", Type::U8, 1, true},
    {"i8", Type::I8, 1, true},
    {"u16", Type::U16, 2, true},
    {"i16", Type::I16, 2, true},
    {"u32", Type::U32, 4, true},
    {"i32", Type::I32, 4, true},
    {"f32", Type::F32, 4, false},
    {"f64", Type::F64, 8, false},
}};

const TypeName &entryOf(Type type)
{
    return *std::find_if(Types.begin(), Types.end(),
                         [type](const TypeName &each) { return each.type == type; });
}

/// Reads the tree of a description and collects what is wrong with it.
class DescriptionReader
{
public:
    DescriptionReader(QString fileName, QStringList &errors)
        : fileName(std::move(fileName))
        , errors(errors)
    {
    }

    FeedDescription read(const JsonValue &root);
    void fail(int line, const QString &text);

private:
    void readLengths(const JsonValue &root);
    void readConditions(const JsonValue &root);
    void readCondition(const JsonValue &value);
    void readVehicle(const JsonValue &value);
    void readField(const JsonMember &member);
    std::optional<FeedDescription::Number> readNumber(const JsonValue &value,
                                                      const Names &furtherMembers);

    bool isObject(const JsonValue &value, const char *what, const Names &members);
    const JsonValue *need(const JsonValue &object, const char *name);
    std::optional<QString> text(const JsonValue *value, const char *what);
    std::optional<double> number(const JsonValue *value, const char *what);
    std::optional<int> whole(const JsonValue *value, const char *what, int least, int most);
    void checkEnd(int line, int offset, int size);

    const QString fileName;
    QStringList &errors;
    FeedDescription description;
    int surelyThere = 0; ///< Bytes that every datagram has.
};

void DescriptionReader::fail(int line, const QString &text)
{
    errors += QStringLiteral("%1:%2: %3.").arg(fileName).arg(line).arg(text);
}

bool DescriptionReader::isObject(const JsonValue &value, const char *what, const Names &members)
{
    if (value.kind != Kind::Object) {
        fail(value.line, QStringLiteral("%1 must be an object, { ... }").arg(QLatin1String(what)));
        return false;
    }
    for (const JsonMember &member : value.members) {
        const bool known = std::any_of(members.begin(), members.end(), [&member](const char *name) {
            return member.name == QLatin1String(name);
        });
        if (!known && member.name != Comment) {
            fail(member.line,
                 QStringLiteral("'%1' is not known in %2").arg(member.name, QLatin1String(what)));
        }
    }
    return true;
}

const JsonValue *DescriptionReader::need(const JsonValue &object, const char *name)
{
    const JsonValue *value = object.member(QLatin1String(name));
    if (value == nullptr)
        fail(object.line, QStringLiteral("'%1' is missing").arg(QLatin1String(name)));
    return value;
}

// Each of these takes null for a member that is missing, which is told elsewhere or no fault.

std::optional<QString> DescriptionReader::text(const JsonValue *value, const char *what)
{
    if (value == nullptr)
        return std::nullopt;
    if (value->kind != Kind::Text || value->text.trimmed().isEmpty()) {
        fail(value->line, QStringLiteral("'%1' must be a text").arg(QLatin1String(what)));
        return std::nullopt;
    }
    if (value->text.size() > LongestText) {
        fail(value->line, QStringLiteral("'%1' is longer than %2 characters")
                              .arg(QLatin1String(what))
                              .arg(LongestText));
        return std::nullopt;
    }
    return value->text;
}

std::optional<double> DescriptionReader::number(const JsonValue *value, const char *what)
{
    if (value == nullptr)
        return std::nullopt;
    if (value->kind != Kind::Number) {
        fail(value->line, QStringLiteral("'%1' must be a number").arg(QLatin1String(what)));
        return std::nullopt;
    }
    return value->number;
}

std::optional<int> DescriptionReader::whole(const JsonValue *value, const char *what, int least,
                                            int most)
{
    if (value == nullptr)
        return std::nullopt;
    const double found = value->kind == Kind::Number ? value->number : least - 1.0;
    if (found < least || found > most || found != std::floor(found)) {
        fail(value->line, QStringLiteral("'%1' must be a whole number from %2 to %3")
                              .arg(QLatin1String(what))
                              .arg(least)
                              .arg(most));
        return std::nullopt;
    }
    return static_cast<int>(found);
}

void DescriptionReader::checkEnd(int line, int offset, int size)
{
    if (surelyThere > 0 && offset + size > surelyThere) {
        fail(line, QStringLiteral("offset %1 and %2 bytes reach beyond the length of %3 bytes")
                       .arg(offset)
                       .arg(size)
                       .arg(surelyThere));
    }
}

FeedDescription DescriptionReader::read(const JsonValue &root)
{
    if (!isObject(root, "a description",
                  {"name", "port", "length", "minimumLength", "endianness", "recognise", "vehicle",
                   "fields"}))
        return {};
    description.name = text(need(root, "name"), "name").value_or(QString());
    description.port =
        static_cast<quint16>(whole(need(root, "port"), "port", 1, 65'535).value_or(0));
    readLengths(root);
    if (const JsonValue *order = root.member(QStringLiteral("endianness"))) {
        description.bigEndian = order->text == QLatin1String("big");
        if (!description.bigEndian && order->text != QLatin1String("little"))
            fail(order->line, QStringLiteral("'endianness' must be \"little\" or \"big\""));
    }
    readConditions(root);
    if (const JsonValue *vehicle = root.member(QStringLiteral("vehicle")))
        readVehicle(*vehicle);
    const JsonValue *fields = need(root, "fields");
    if (fields == nullptr)
        return description;
    const bool isAny = std::any_of(fields->members.begin(), fields->members.end(),
                                   [](const JsonMember &member) { return member.name != Comment; });
    if (!isAny) {
        fail(fields->line, QStringLiteral("'fields' must be an object with at least one field"));
        return description;
    }
    for (const JsonMember &member : fields->members) {
        if (member.name != Comment)
            readField(member);
    }
    return description;
}

void DescriptionReader::readLengths(const JsonValue &root)
{
    const JsonValue *length = root.member(QStringLiteral("length"));
    const JsonValue *minimum = root.member(QStringLiteral("minimumLength"));
    if ((length == nullptr) == (minimum == nullptr)) {
        fail(root.line, QStringLiteral("it takes either 'length' or 'minimumLength'"));
        return;
    }
    if (minimum != nullptr) {
        description.minimumLength = whole(minimum, "minimumLength", 1, LargestDatagram).value_or(0);
        surelyThere = description.minimumLength;
        return;
    }
    if (length->kind == Kind::Array && length->items.empty())
        fail(length->line, QStringLiteral("'length' must name at least one length"));
    const std::vector<JsonValue> single{*length};
    for (const JsonValue &item : length->kind == Kind::Array ? length->items : single) {
        if (const auto bytes = whole(&item, "length", 1, LargestDatagram)) {
            description.lengths.push_back(*bytes);
            surelyThere = surelyThere == 0 ? *bytes : std::min(surelyThere, *bytes);
        }
    }
}

void DescriptionReader::readConditions(const JsonValue &root)
{
    const JsonValue *recognise = root.member(QStringLiteral("recognise"));
    if (recognise == nullptr)
        return;
    if (recognise->kind != Kind::Array) {
        readCondition(*recognise);
        return;
    }
    for (const JsonValue &item : recognise->items)
        readCondition(item);
}

void DescriptionReader::readCondition(const JsonValue &value)
{
    static const QRegularExpression Hex(QStringLiteral("^(\\s*[0-9a-fA-F]{2})+\\s*$"));
    if (!isObject(value, "a condition of 'recognise'", {"offset", "bytes"}))
        return;
    const auto offset = whole(need(value, "offset"), "offset", 0, LargestDatagram);
    const JsonValue *bytes = need(value, "bytes");
    if (bytes == nullptr)
        return;
    if (bytes->kind != Kind::Text || bytes->text.size() > LongestText ||
        !Hex.match(bytes->text).hasMatch()) {
        fail(bytes->line,
             QStringLiteral("'bytes' must be bytes in hexadecimal, like \"4c 46 53\""));
        return;
    }
    if (!offset)
        return;
    const QByteArray expected = QByteArray::fromHex(bytes->text.toLatin1());
    checkEnd(value.line, *offset, expected.size());
    description.conditions.push_back({*offset, expected});
}

void DescriptionReader::readVehicle(const JsonValue &value)
{
    FeedDescription::VehicleName vehicle;
    if (value.kind == Kind::Object && value.member(QStringLiteral("type")) != nullptr) {
        vehicle.number = readNumber(value, {"prefix"});
    } else {
        if (!isObject(value, "'vehicle'", {"offset", "length", "prefix"}))
            return;
        vehicle.offset = whole(need(value, "offset"), "offset", 0, LargestDatagram).value_or(0);
        vehicle.length = whole(need(value, "length"), "length", 1, LongestText).value_or(0);
        checkEnd(value.line, vehicle.offset, vehicle.length);
    }
    vehicle.prefix = text(value.member(QStringLiteral("prefix")), "prefix").value_or(QString());
    description.vehicle = vehicle;
}

std::optional<FeedDescription::Number> DescriptionReader::readNumber(const JsonValue &value,
                                                                     const Names &furtherMembers)
{
    Names members{"offset", "type", "bit", "factor", "bias"};
    members.insert(members.end(), furtherMembers.begin(), furtherMembers.end());
    if (!isObject(value, "a number of a datagram", members))
        return std::nullopt;
    const auto offset = whole(need(value, "offset"), "offset", 0, LargestDatagram);
    const JsonValue *typeName = need(value, "type");
    if (typeName == nullptr)
        return std::nullopt;
    const auto *const type =
        std::find_if(Types.begin(), Types.end(), [typeName](const TypeName &each) {
            return typeName->text == QLatin1String(each.name);
        });
    if (type == Types.end()) {
        fail(typeName->line,
             QStringLiteral("'type' must be u8, i8, u16, i16, u32, i32, f32 or f64"));
        return std::nullopt;
    }
    FeedDescription::Number result;
    result.type = type->type;
    if (const JsonValue *bit = value.member(QStringLiteral("bit"))) {
        if (type->whole)
            result.bit = whole(bit, "bit", 0, type->size * 8 - 1);
        else
            fail(bit->line, QStringLiteral("'bit' goes with whole numbers only"));
    }
    result.factor = number(value.member(QStringLiteral("factor")), "factor").value_or(1);
    result.bias = number(value.member(QStringLiteral("bias")), "bias").value_or(0);
    if (!offset)
        return std::nullopt;
    result.offset = *offset;
    checkEnd(value.line, *offset, type->size);
    return result;
}

void DescriptionReader::readField(const JsonMember &member)
{
    FeedDescription::Field field;
    field.field = findTelemetryField(member.name);
    if (field.field == nullptr) {
        fail(member.line, QStringLiteral("'%1' is no field of the telemetry").arg(member.name));
        return;
    }
    const JsonValue &value = member.value;
    const JsonValue *constant =
        value.kind == Kind::Object ? value.member(QStringLiteral("value")) : nullptr;
    if (constant != nullptr) {
        isObject(value, "a field with 'value'", {"value", "available"});
        field.constant = number(constant, "value").value_or(0);
    } else {
        field.number = readNumber(value, {"available"});
    }
    if (value.kind == Kind::Object) {
        if (const JsonValue *available = value.member(QStringLiteral("available")))
            field.available = readNumber(*available, {});
    }
    description.fields.push_back(field);
}

} // namespace

std::optional<FeedDescription> FeedDescription::parse(const QByteArray &json,
                                                      const QString &fileName, QStringList &errors)
{
    errors.clear();
    DescriptionReader reader(fileName, errors);
    if (json.size() > LargestFile) {
        reader.fail(1, QStringLiteral("the file is larger than %1 bytes").arg(LargestFile));
        return std::nullopt;
    }
    JsonError error;
    const std::optional<JsonValue> root = parseJson(json, error);
    if (!root) {
        reader.fail(error.line, error.text);
        return std::nullopt;
    }
    FeedDescription description = reader.read(*root);
    return errors.isEmpty() ? std::optional(std::move(description)) : std::nullopt;
}

std::optional<FeedDescription> FeedDescription::load(const QString &path, QStringList &errors)
{
    QFile file(path);
    const QString shown = QDir::toNativeSeparators(path);
    if (!file.open(QIODevice::ReadOnly)) {
        errors =
            QStringList(QStringLiteral("Could not open '%1': %2.").arg(shown, file.errorString()));
        return std::nullopt;
    }
    return parse(file.read(LargestFile + 1), shown, errors);
}

int sizeOf(FeedDescription::Type type)
{
    return entryOf(type).size;
}
