#include "FeedDescription.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QRegularExpression>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>
#include <vector>

namespace {

using Type = FeedDescription::Type;

using Names = std::vector<const char *>;

constexpr int LargestDatagram = 65'507;
constexpr int LongestText = 256;
const QLatin1String Comment("comment"); ///< Allowed in every object.

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

/// A value in the description and its path, such as "fields.rpm.offset".
struct Node
{
    QJsonValue value;
    QString path; ///< Empty for the whole.

    bool isThere() const { return !value.isUndefined(); }

    /// Its value is undefined if there is no such member.
    Node member(const QString &name) const
    {
        return {value[name], path.isEmpty() ? name : path + QLatin1Char('.') + name};
    }
    Node member(const char *name) const { return member(QString::fromLatin1(name)); }

    /// The items of an array, or else the value itself.
    std::vector<Node> items() const
    {
        if (!value.isArray())
            return {*this};
        std::vector<Node> result;
        for (int i = 0; i < value.toArray().size(); ++i)
            result.push_back({value[i], QStringLiteral("%1[%2]").arg(path).arg(i)});
        return result;
    }
};

/// Reads a description and collects what is wrong with it.
class DescriptionReader
{
public:
    explicit DescriptionReader(QStringList &problems)
        : problems(problems)
    {
    }

    FeedDescription read(const Node &root);

private:
    void readLengths(const Node &root);
    void readCondition(const Node &node);
    void readVehicle(const Node &node);
    void readField(const QString &name, const Node &node);
    std::optional<FeedDescription::Number> readNumber(const Node &node,
                                                      const Names &furtherMembers);

    void fail(const QString &text);
    void fail(const Node &node, const QString &text);
    bool isObject(const Node &node, const Names &members);
    Node need(const Node &object, const char *name);
    std::optional<QString> text(const Node &node);
    std::optional<double> number(const Node &node);
    std::optional<int> whole(const Node &node, int least, int most);
    void checkEnd(const Node &node, int offset, int size);

    QStringList &problems;
    FeedDescription description;
    int surelyThere = 0; ///< Bytes that every datagram has.
};

void DescriptionReader::fail(const QString &text)
{
    problems += text;
}

void DescriptionReader::fail(const Node &node, const QString &text)
{
    problems += node.path.isEmpty() ? QStringLiteral("the description ") + text
                                    : QStringLiteral("'%1' %2").arg(node.path, text);
}

bool DescriptionReader::isObject(const Node &node, const Names &members)
{
    if (!node.value.isObject()) {
        fail(node, QStringLiteral("must be an object, { ... }"));
        return false;
    }
    const QStringList names = node.value.toObject().keys();
    for (const QString &name : names) {
        const bool known = std::any_of(members.begin(), members.end(), [&name](const char *member) {
            return name == QLatin1String(member);
        });
        if (!known && name != Comment)
            fail(node.member(name), QStringLiteral("is unknown"));
    }
    return true;
}

Node DescriptionReader::need(const Node &object, const char *name)
{
    Node node = object.member(name);
    if (!node.isThere())
        fail(node, QStringLiteral("is missing"));
    return node;
}

// These accept a missing member, which `need` reports where it is a fault.

std::optional<QString> DescriptionReader::text(const Node &node)
{
    if (!node.isThere())
        return std::nullopt;
    const QString found = node.value.toString();
    if (found.trimmed().isEmpty()) {
        fail(node, QStringLiteral("must be a text"));
        return std::nullopt;
    }
    if (found.size() > LongestText) {
        fail(node, QStringLiteral("is longer than %1 characters").arg(LongestText));
        return std::nullopt;
    }
    return found;
}

std::optional<double> DescriptionReader::number(const Node &node)
{
    if (!node.isThere())
        return std::nullopt;
    if (!node.value.isDouble()) {
        fail(node, QStringLiteral("must be a number"));
        return std::nullopt;
    }
    return node.value.toDouble();
}

std::optional<int> DescriptionReader::whole(const Node &node, int least, int most)
{
    if (!node.isThere())
        return std::nullopt;
    const double found = node.value.toDouble(least - 1.0);
    if (found < least || found > most || found != std::floor(found)) {
        fail(node, QStringLiteral("must be a whole number from %1 to %2").arg(least).arg(most));
        return std::nullopt;
    }
    return static_cast<int>(found);
}

void DescriptionReader::checkEnd(const Node &node, int offset, int size)
{
    if (surelyThere > 0 && offset + size > surelyThere) {
        fail(node, QStringLiteral("reaches beyond the length of %1 bytes: offset %2 and %3 bytes")
                       .arg(surelyThere)
                       .arg(offset)
                       .arg(size));
    }
}

FeedDescription DescriptionReader::read(const Node &root)
{
    if (!isObject(root, {"name", "port", "length", "minimumLength", "endianness", "recognise",
                         "vehicle", "fields"}))
        return {};
    description.name = text(need(root, "name")).value_or(QString());
    description.port = static_cast<quint16>(whole(need(root, "port"), 1, 65'535).value_or(0));
    readLengths(root);
    const Node order = root.member("endianness");
    description.bigEndian = order.value == QLatin1String("big");
    if (order.isThere() && !description.bigEndian && order.value != QLatin1String("little"))
        fail(order, QStringLiteral("must be \"little\" or \"big\""));
    const Node recognise = root.member("recognise");
    if (recognise.isThere()) {
        for (const Node &condition : recognise.items())
            readCondition(condition);
    }
    if (root.member("vehicle").isThere())
        readVehicle(root.member("vehicle"));
    const Node fields = need(root, "fields");
    QStringList names = fields.value.toObject().keys();
    names.removeAll(Comment);
    if (fields.isThere() && names.isEmpty())
        fail(fields, QStringLiteral("must be an object with at least one field"));
    for (const QString &name : qAsConst(names))
        readField(name, fields.member(name));
    return description;
}

void DescriptionReader::readLengths(const Node &root)
{
    const Node length = root.member("length");
    const Node minimum = root.member("minimumLength");
    if (length.isThere() == minimum.isThere()) {
        fail(QStringLiteral("it takes either 'length' or 'minimumLength'"));
        return;
    }
    if (minimum.isThere()) {
        description.minimumLength = whole(minimum, 1, LargestDatagram).value_or(0);
        surelyThere = description.minimumLength;
        return;
    }
    if (length.items().empty())
        fail(length, QStringLiteral("must name at least one length"));
    for (const Node &item : length.items()) {
        if (const auto bytes = whole(item, 1, LargestDatagram)) {
            description.lengths.push_back(*bytes);
            surelyThere = surelyThere == 0 ? *bytes : std::min(surelyThere, *bytes);
        }
    }
}

void DescriptionReader::readCondition(const Node &node)
{
    static const QRegularExpression Hex(QStringLiteral("^(\\s*[0-9a-fA-F]{2})+\\s*$"));
    if (!isObject(node, {"offset", "bytes"}))
        return;
    const auto offset = whole(need(node, "offset"), 0, LargestDatagram);
    const Node bytes = need(node, "bytes");
    if (!bytes.isThere())
        return;
    const QString digits = bytes.value.toString();
    if (digits.size() > LongestText || !Hex.match(digits).hasMatch()) {
        fail(bytes, QStringLiteral("must be bytes in hexadecimal, like \"4c 46 53\""));
        return;
    }
    if (!offset)
        return;
    const QByteArray expected = QByteArray::fromHex(digits.toLatin1());
    checkEnd(node, *offset, expected.size());
    description.conditions.push_back({*offset, expected});
}

void DescriptionReader::readVehicle(const Node &node)
{
    FeedDescription::VehicleName vehicle;
    if (node.member("type").isThere()) {
        vehicle.number = readNumber(node, {"prefix"});
    } else {
        if (!isObject(node, {"offset", "length", "prefix"}))
            return;
        vehicle.offset = whole(need(node, "offset"), 0, LargestDatagram).value_or(0);
        vehicle.length = whole(need(node, "length"), 1, LongestText).value_or(0);
        checkEnd(node, vehicle.offset, vehicle.length);
    }
    vehicle.prefix = text(node.member("prefix")).value_or(QString());
    description.vehicle = vehicle;
}

std::optional<FeedDescription::Number> DescriptionReader::readNumber(const Node &node,
                                                                     const Names &furtherMembers)
{
    Names members{"offset", "type", "bit", "factor", "bias"};
    members.insert(members.end(), furtherMembers.begin(), furtherMembers.end());
    if (!isObject(node, members))
        return std::nullopt;
    const auto offset = whole(need(node, "offset"), 0, LargestDatagram);
    const Node typeName = need(node, "type");
    if (!typeName.isThere())
        return std::nullopt;
    const auto *const type =
        std::find_if(Types.begin(), Types.end(), [&typeName](const TypeName &each) {
            return typeName.value == QLatin1String(each.name);
        });
    if (type == Types.end()) {
        fail(typeName, QStringLiteral("must be u8, i8, u16, i16, u32, i32, f32 or f64"));
        return std::nullopt;
    }
    FeedDescription::Number result;
    result.type = type->type;
    const Node bit = node.member("bit");
    if (type->whole)
        result.bit = whole(bit, 0, type->size * 8 - 1);
    else if (bit.isThere())
        fail(bit, QStringLiteral("goes with whole numbers only"));
    result.factor = number(node.member("factor")).value_or(1);
    result.bias = number(node.member("bias")).value_or(0);
    if (!offset)
        return std::nullopt;
    result.offset = *offset;
    checkEnd(node, *offset, type->size);
    return result;
}

void DescriptionReader::readField(const QString &name, const Node &node)
{
    FeedDescription::Field field;
    field.field = findTelemetryField(name);
    if (field.field == nullptr) {
        fail(node, QStringLiteral("is not a field of the telemetry"));
        return;
    }
    const Node constant = node.member("value");
    if (constant.isThere()) {
        isObject(node, {"value", "available"});
        field.constant = number(constant).value_or(0);
    } else {
        field.number = readNumber(node, {"available"});
    }
    if (node.member("available").isThere())
        field.available = readNumber(node.member("available"), {});
    description.fields.push_back(field);
}

} // namespace

std::optional<FeedDescription> FeedDescription::parse(const QByteArray &json,
                                                      const QString &fileName, QStringList &errors)
{
    errors.clear();
    if (json.size() > LargestFile) {
        errors +=
            QStringLiteral("%1: the file is larger than %2 bytes.").arg(fileName).arg(LargestFile);
        return std::nullopt;
    }
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError) {
        errors += QStringLiteral("%1:%2: not valid JSON: %3.")
                      .arg(fileName)
                      .arg(1 + json.left(error.offset).count('\n'))
                      .arg(error.errorString());
        return std::nullopt;
    }
    QStringList problems;
    const QJsonValue root =
        document.isObject() ? QJsonValue(document.object()) : QJsonValue(document.array());
    FeedDescription description = DescriptionReader(problems).read({root, {}});
    for (const QString &problem : qAsConst(problems))
        errors += QStringLiteral("%1: %2.").arg(fileName, problem);
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
