#include "DescribedFeed.h"

#include "telemetry/feeds/DefaultDisplayLimits.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QtEndian>

#include <algorithm>
#include <cmath>

namespace {

using Type = FeedDescription::Type;

template<typename Number> Number numberAt(const char *bytes, bool bigEndian)
{
    return bigEndian ? qFromBigEndian<Number>(bytes) : qFromLittleEndian<Number>(bytes);
}

template<typename Number>
double whole(const char *bytes, bool bigEndian, const FeedDescription::Number &number)
{
    const auto value = numberAt<Number>(bytes, bigEndian);
    const double taken =
        number.bit ? (static_cast<quint32>(value) >> *number.bit & 1U) : static_cast<double>(value);
    return taken * number.factor + number.bias;
}

/// The text up to the first zero byte, without control characters. A game may send any bytes.
QString textOf(const QByteArray &bytes)
{
    const QByteArray text(bytes.constData(),
                          static_cast<int>(qstrnlen(bytes.constData(), uint(bytes.size()))));
    static const QRegularExpression Controls(QStringLiteral("\\p{Cc}"));
    QString result = QString::fromUtf8(text);
    if (result.contains(QChar::ReplacementCharacter))
        result = QString::fromLatin1(text);
    return result.remove(Controls).trimmed();
}

} // namespace

DescribedFeed::DescribedFeed(FeedDescription given)
    : description(std::move(given))
    , learns(std::none_of(description.fields.begin(), description.fields.end(),
                          [](const FeedDescription::Field &field) {
                              return field.field == findTelemetryField(QStringLiteral("maxRpm"));
                          }))
{
}

bool DescribedFeed::accepts(const QByteArray &payload) const
{
    const std::vector<int> &lengths = description.lengths;
    const bool fits = lengths.empty() ? payload.size() >= description.minimumLength
                                      : std::find(lengths.begin(), lengths.end(), payload.size()) !=
                                            lengths.end();
    return fits && std::all_of(description.conditions.begin(), description.conditions.end(),
                               [&payload](const FeedDescription::Condition &condition) {
                                   return payload.mid(condition.offset, condition.bytes.size()) ==
                                          condition.bytes;
                               });
}

std::optional<FeedSample> DescribedFeed::decode(const QByteArray &payload, TimePoint time)
{
    if (!accepts(payload))
        return std::nullopt;
    FeedSample result;
    result.sample.limits = defaultDisplayLimits();
    for (const FeedDescription::Field &field : description.fields) {
        if (field.available && read(payload, *field.available).value_or(0) == 0)
            continue;
        const std::optional<double> value =
            field.number ? read(payload, *field.number) : std::optional(field.constant);
        if (value)
            field.field->set(result.sample, *value);
    }
    result.vehicle = vehicleIn(payload);
    if (learns)
        learnMaximum(result, time);
    return result;
}

void DescribedFeed::restart()
{
    learner.restart({});
}

void DescribedFeed::learnMaximum(FeedSample &sample, TimePoint time)
{
    if (sample.vehicle != learntOf) {
        learntOf = sample.vehicle;
        learner.restart({});
    }
    VehicleTelemetry &now = sample.sample.vehicle;
    learner.see(now, false, time);
    now.maxRpm = learner.limits().maximum();
}

/// Nothing if the number lies beyond the datagram's end or isn't finite.
std::optional<double> DescribedFeed::read(const QByteArray &payload,
                                          const FeedDescription::Number &number) const
{
    if (number.offset + sizeOf(number.type) > payload.size())
        return std::nullopt;
    const char *const at = payload.constData() + number.offset;
    const bool big = description.bigEndian;
    double value = 0;
    switch (number.type) {
    case Type::U8:
        value = whole<quint8>(at, big, number);
        break;
    case Type::I8:
        value = whole<qint8>(at, big, number);
        break;
    case Type::U16:
        value = whole<quint16>(at, big, number);
        break;
    case Type::I16:
        value = whole<qint16>(at, big, number);
        break;
    case Type::U32:
        value = whole<quint32>(at, big, number);
        break;
    case Type::I32:
        value = whole<qint32>(at, big, number);
        break;
    case Type::F32:
        // In single precision, so that the last digit is that of the built-in feeds.
        value = static_cast<double>(numberAt<float>(at, big) * static_cast<float>(number.factor) +
                                    static_cast<float>(number.bias));
        break;
    case Type::F64:
        value = numberAt<double>(at, big) * number.factor + number.bias;
        break;
    }
    return std::isfinite(value) ? std::optional(value) : std::nullopt;
}

QString DescribedFeed::vehicleIn(const QByteArray &payload) const
{
    if (!description.vehicle)
        return {};
    const FeedDescription::VehicleName &vehicle = *description.vehicle;
    if (!vehicle.number) {
        const QString text = textOf(payload.mid(vehicle.offset, vehicle.length));
        return text.isEmpty() ? QString() : vehicle.prefix + text;
    }
    const std::optional<double> number = read(payload, *vehicle.number);
    return number ? vehicle.prefix + QString::number(*number, 'g', 15) : QString();
}
