#include "telemetry/feeds/described/DescribedFeed.h"
#include "FeedRig.h"
#include "telemetry/feeds/OutGauge.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QRandomGenerator>
#include <QtTest/QtTest>

#include <algorithm>
#include <cstring>
#include <limits>

namespace {

using Numbers = std::vector<int>;

/// A description with these members, and with what every one needs.
QByteArray described(const QByteArray &members)
{
    return R"({"name": "Test", "port": 4000, )" + members + "}";
}

QByteArray withField(const QByteArray &name, const QByteArray &number)
{
    return described(R"("minimumLength": 9, "fields": {")" + name + "\": " + number + "}");
}

DescribedFeed feedOf(const QByteArray &json)
{
    QStringList errors;
    auto description = FeedDescription::parse(json, {}, errors);
    if (!description)
        qFatal("%s", qPrintable(errors.join(QLatin1Char('\n'))));
    return DescribedFeed(std::move(*description));
}

std::optional<FeedSample> decode(const QByteArray &json, const QByteArray &payload)
{
    return feedOf(json).decode(payload, {});
}

QByteArray shipped(const char *name)
{
    QFile file(QStringLiteral(GAUGE_SOURCE_DIR "/host/descriptions/") + QLatin1String(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

template<typename Record> bool isSame(const Record &one, const Record &other)
{
    return std::memcmp(&one, &other, sizeof one) == 0;
}

} // namespace

class DescribedFeedTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatIsWrongIsToldWithItsPlace()
    {
        const std::pair<QByteArray, const char *> rows[] = {
            {"{\n\"name\": \"x\",", "2: no valid JSON"},
            {QByteArray("{}\n\0", 4), "2: no valid JSON"},
            {QByteArray(50'000, '['), "1: no valid JSON"},
            {QByteArray(70'000, ' '), " the file is larger"},
            {"[]", " the description must be an object"},
            {described(R"("colour": 1)"), " 'colour' is"},
            {R"({"name": 3})", " 'name' must be a text"},
            {R"({"name": "x"})", " 'port' is missing"},
            {R"({"port": 65536})", " 'port' must be a whole number from 1 to 65535"},
            {described(R"("length": 1, "minimumLength": 1)"), " it takes either"},
            {described(R"("length": [1, 4.5])"), " 'length[1]' must be"},
            {described(R"("length": 4, "endianness": "middle")"), " 'endianness' must be"},
            {described(R"("length": 4, "recognise": {"offset": 0, "bytes": "4x"})"),
             " 'recognise.bytes' must be"},
            {described(R"("length": 4, "recognise": [{"offset": 3, "bytes": "4c46"}])"),
             " 'recognise[0]' reaches beyond the length of 4 bytes: offset 3 and 2 bytes"},
            {described(R"("length": 4, "vehicle": {"offset": 2, "length": 3})"),
             " 'vehicle' reaches beyond"},
            {described(R"("length": [9, 8], "fields": {"rpm": {"offset": 8, "type": "u8"}})"),
             " 'fields.rpm' reaches beyond the length of 8"},
            {withField("speed", "{}"), " 'fields.speed' is no field"},
            {withField("rpm", R"({"offset": -1, "type": "u8"})"), " 'fields.rpm.offset' must be"},
            {withField("rpm", R"({"offset": 0, "type": "float"})"), " 'fields.rpm.type' must be"},
            {withField("rpm", R"({"offset": 0, "type": "f32", "bit": 1})"), " 'fields.rpm.bit'"},
            {withField("rpm", R"({"offset": 0, "type": "u16", "bit": 16})"), " 'fields.rpm.bit'"},
            {withField("rpm", R"({"value": 1, "available": true})"), " 'fields.rpm.available'"},
        };
        QStringList errors;
        for (const auto &[json, message] : rows) {
            QVERIFY(!FeedDescription::parse(json, QStringLiteral("x.json"), errors));
            QVERIFY2(!errors.filter(QLatin1String("x.json:") + QLatin1String(message)).isEmpty(),
                     message);
        }
        FeedDescription::parse(described(R"("length": 4, "fields": {"a": 3, "b": 3})"), {}, errors);
        QVERIFY2(errors.size() == 2, "all faults are told at once");
        const QString path = QDir::toNativeSeparators(QStringLiteral("no/such.json"));
        QVERIFY(!FeedDescription::load(path, errors) && errors[0].contains(path));
    }

    void everyTypeIsReadInEitherOrder()
    {
        for (const auto &[type, hex, value] : {std::tuple{"u8", "fe", 254.0},
                                               {"i8", "fe", -2.0},
                                               {"u16", "fffe", 65534.0},
                                               {"i16", "fffe", -2.0},
                                               {"u32", "fffffff0", 4294967280.0},
                                               {"i32", "fffffffe", -2.0},
                                               {"f32", "3fc00000", 1.5},
                                               {"f64", "3ff8000000000000", 1.5}}) {
            QByteArray bytes = QByteArray::fromHex(hex);
            for (const QByteArray order : {"big", "little"}) {
                QByteArray json = withField("heaveG", R"({"offset": 1, "factor": 2, "bias": -1})");
                json.replace("\"offset\"", "\"type\": \"" + QByteArray(type) + "\", \"offset\"");
                json.replace("\"port\"", "\"endianness\": \"" + order + "\", \"port\"");
                const auto read = decode(json, "\7" + bytes + "1234567");
                QCOMPARE(+read->sample.vehicle.heaveG, float(2 * value - 1));
                std::reverse(bytes.begin(), bytes.end());
            }
        }
    }

    void everyFieldHasItsPlaceItsBitAndItsRange()
    {
        QByteArray taken(sizeof(TelemetrySample), '\0');
        for (const TelemetryField &field : telemetryFields()) {
            QCOMPARE(findTelemetryField(QString::fromLatin1(field.name)), &field);
            TelemetrySample sample;
            field.set(sample, std::numeric_limits<double>::quiet_NaN());
            QVERIFY(isSame(sample.vehicle, VehicleTelemetry{}));
            field.set(sample, std::numeric_limits<double>::max());
            QCOMPARE(sample.vehicle.availabilityMask | 0, quint64(field.availability));
            // What one field writes, no other one does.
            sample.vehicle.availabilityMask = 0;
            const QByteArray bytes(reinterpret_cast<const char *>(&sample), sizeof sample);
            QVERIFY2(bytes.count('\0') < bytes.size(), field.name);
            for (int i = 0; i < bytes.size(); ++i) {
                QVERIFY2((bytes[i] & taken[i]) == 0, field.name);
                taken[i] = static_cast<char>(taken[i] | bytes[i]);
            }
            field.set(sample, 0);
            QCOMPARE(sample.vehicle.statusFlags | 0, 0U);
        }
        for (const auto &[name, value, written] : {std::tuple{"gasPedalPercent", 49.5, 50.0},
                                                   {"gasPedalPercent", -3, 0},
                                                   {"gasPedalPercent", 1e30, 100},
                                                   {"turnCoordinatorBall", -4, -1},
                                                   {"headingDeg", -90, 270},
                                                   {"headingDeg", 725, 5},
                                                   {"headingDeg", 359.5, 359.5}}) {
            TelemetrySample sample;
            findTelemetryField(QLatin1String(name))->set(sample, value);
            const VehicleTelemetry &vehicle = sample.vehicle;
            QCOMPARE(vehicle.gasPedalPercent + double(vehicle.turnCoordinatorBall) +
                         double(vehicle.headingDeg),
                     written);
        }
    }

    void theGuidesExampleReads()
    {
        const auto read = decode(shipped("SunsetRally.json"),
                                 QByteArray::fromHex("5352414c 0007 0000 41f00000 1388 1f40 03 ff "
                                                     "80 84 c000 0ea3 0ea4 0ea5 0ea6 0000 "
                                                     "00010000"));
        QCOMPARE(read->vehicle, QStringLiteral("Rally car 7"));
        const VehicleTelemetry &vehicle = read->sample.vehicle;
        QCOMPARE(
            (Numbers{int(vehicle.speedKmh), int(vehicle.rpm), int(vehicle.maxRpm), vehicle.gear,
                     vehicle.gasPedalPercent, vehicle.brakePedalPercent, vehicle.steeringPercent,
                     vehicle.tyreTempC[0], int(vehicle.currentTimeMs), int(vehicle.statusFlags)}),
            (Numbers{108, 5000, 8000, 3, 100, 50, -50, 102, 65536, Status::AbsInAction}));
        QVERIFY(read->sample.paused);
        QCOMPARE(+read->sample.limits.steeringScale, 4.5F);
    }

    void describedOutGaugeGivesTheRecordsOfTheBuiltInDecoder()
    {
        DescribedFeed feed = feedOf(shipped("OutGauge.json"));
        QRandomGenerator random(64);
        for (int i = 0; i < 1000; ++i) {
            Packet packet = Senders::outGauge("XRT", i % 2 == 0 ? 92 : 96);
            packet.put<quint8>(10, quint8(random.bounded(10))).reals(28, random.generateDouble());
            packet.put<quint32>(40, random.generate()).put<quint32>(44, random.generate());
            const auto builtIn = OutGauge::decode(packet);
            const auto described = feed.decode(packet, {});
            QCOMPARE(described->vehicle, builtIn->car);
            QVERIFY(isSame(described->sample.vehicle, builtIn->sample.vehicle));
        }
        // The highest engine speed is learnt where none is described.
        const auto drive = [&feed](const char *car, quint8 gear, float rpm) {
            Packet packet = Senders::outGauge(car);
            packet.put<quint8>(10, gear).reals(16, rpm).reals(48, 1.0);
            return uint(feed.decode(packet, {})->sample.vehicle.maxRpm);
        };
        for (quint8 gear = 2; gear < 7; ++gear) {
            for (const float rpm : {5000.0F, 6000.0F, 6000.0F, 6000.0F})
                drive("XFG", gear, rpm);
        }
        QCOMPARE(drive("XFG", 2, 900), 6000U);
        QCOMPARE(drive("FZ5", 2, 900), 0U);
    }

    void conditionsDecideWhatIsTakenAndWhatIsAvailable()
    {
        const QByteArray json =
            described(R"("length": [4, 6], "recognise": [{"offset": 0, "bytes": "4C46"},
                        {"offset": 3, "bytes": "01"}], "fields": {"rpm": {"value": 7}})");
        for (const char *taken : {"LF?\1", "LF?\1??"})
            QCOMPARE(uint(decode(json, taken).value().sample.vehicle.rpm), 7U);
        for (const char *other : {"", "LF?", "LF?\1?", "LF?\2", "lf?\1", "LF?\1???"})
            QVERIFY2(!decode(json, other), other);

        const QByteArray flag = withField("absInAction", R"({"offset": 0, "type": "u8", "bit": 1,
                               "available": {"offset": 4, "type": "u32", "bit": 9}})");
        const auto there = decode(flag, QByteArray("\2\0\0\0\0\2\0\0", 9))->sample.vehicle;
        QCOMPARE(there.availabilityMask | 0, quint64(Available::AbsInAction));
        QCOMPARE(there.statusFlags | 0, Status::AbsInAction);
        const auto gone = decode(flag, QByteArray("\2\0\0\0\0\1\0\0", 9))->sample.vehicle;
        QVERIFY(isSame(gone, VehicleTelemetry{}));
    }

    void vehiclesAreNamedByTextOrNumber()
    {
        const QByteArray text = R"({"offset": 0, "length": 2, "prefix": "Car "})";
        const QByteArray number = R"({"offset": 0, "type": "u16", "prefix": "No. "})";
        for (const auto &[vehicle, payload, name] : {std::tuple{text, QByteArray("ABC"), "Car AB"},
                                                     {text, QByteArray("A\0", 2), "Car A"},
                                                     {text, QByteArray("\xc3\xa9"), "Car \u00e9"},
                                                     {text, QByteArray("\xe9\n"), "Car \u00e9"},
                                                     {text, QByteArray(2, '\0'), ""},
                                                     {number, QByteArray("\xff\xff"), "No. 65535"}})
            QCOMPARE(decode(described(R"("minimumLength": 2, "fields": {"rpm": {"value": 1}},
                                      "vehicle": )" +
                                      vehicle),
                            payload)
                         ->vehicle,
                     QString::fromUtf8(name));
    }
};

QTEST_GUILESS_MAIN(DescribedFeedTest)
#include "DescribedFeedTest.moc"
