#include "telemetry/feeds/described/DescribedFeed.h"
#include "Senders.h"
#include "telemetry/feeds/OutGauge.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QRandomGenerator>
#include <QtCore/QtEndian>
#include <QtTest/QtTest>

#include <algorithm>
#include <cstring>
#include <limits>
#include <tuple>
#include <utility>

namespace {

QByteArray contents(const char *path)
{
    QFile file(QStringLiteral(GAUGE_SOURCE_DIR "/") + QLatin1String(path));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// A description with these members, and with what every one needs.
QByteArray description(const QByteArray &members)
{
    return "{\"name\": \"Test\", \"port\": 4000,\n" + members + "}";
}

/// One that has a single field, described as `number`.
QByteArray withField(const QByteArray &name, const QByteArray &number)
{
    return description("\"length\": 8,\n\"fields\": {\n\"" + name + "\": " + number + "}");
}

std::optional<FeedSample> decode(const QByteArray &json, const QByteArray &payload)
{
    QStringList errors;
    auto parsed = FeedDescription::parse(json, QStringLiteral("test.json"), errors);
    if (!parsed) {
        QTest::qFail(qPrintable(errors.join(QLatin1Char('\n'))), __FILE__, __LINE__);
        return std::nullopt;
    }
    return DescribedFeed(std::move(*parsed)).decode(payload, {});
}

} // namespace

class DescribedFeedTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatIsWrongIsToldWithItsPlace_data()
    {
        QTest::addColumn<QByteArray>("json");
        QTest::addColumn<QString>("message");
        const auto row = [](const char *name, const QByteArray &json, const char *message) {
            QTest::newRow(name) << json << QStringLiteral("test.json:") + QLatin1String(message);
        };
        const auto number = [](const char *text) { return withField("rpm", text); };
        row("empty", "", "1: no valid JSON");
        row("no JSON", "{\n\"name\": 'x'}", "2: no valid JSON");
        row("cut off", "{\n\"name\": \"x\",", "2: no valid JSON");
        row("more behind it", description(R"("length": 4, "fields": {})") + "\n\n}",
            "4: no valid JSON");
        row("zero byte", QByteArray("{}\n\0", 4), "2: no valid JSON");
        row("no UTF-8", "{\"name\": \"\xff\"}", "1: no valid JSON");
        row("number too big", number("{\"offset\": 1e999}"), "4: no valid JSON: illegal number.");
        row("too deep", QByteArray(100'000 / 2, '['), "1: no valid JSON");
        row("too large", QByteArray(70'000, ' '), " the file is larger");
        row("list", "[]", " the description must be an object");
        row("unknown member", description("\"colour\": 1"), " 'colour' is not known");
        row("no name", "{\"port\": 1}", " 'name' is missing");
        row("name", "{\"name\": 3}", " 'name' must be a text");
        row("port", R"({"port": 65536})", " 'port' must be a whole number from 1 to 65535");
        row("port as text", R"({"port": "1"})", " 'port' must be a whole number");
        row("no length", description("\"fields\": {}"), " it takes either 'length' or");
        row("both lengths", description(R"("length": 1, "minimumLength": 1)"), " it takes either");
        row("no datagram's length", description("\"length\": 65508"), " 'length' must be");
        row("half a byte", description("\"length\": [1, 4.5]"), " 'length[1]' must be");
        row("lengths", description("\"length\": []"), " 'length' must name at least one");
        row("order", description(R"("length": 4, "endianness": "middle")"),
            " 'endianness' must be");
        row("bytes", description(R"("length": 4, "recognise": {"offset": 0, "bytes": "4x"})"),
            " 'recognise.bytes' must be bytes in hexadecimal");
        row("condition beyond",
            description(R"("length": 4, "recognise": [{"offset": 3, "bytes": "4c46"}])"),
            " 'recognise[0]' reaches beyond the length of 4 bytes: offset 3 and 2 bytes");
        row("vehicle beyond", description(R"("length": 4, "vehicle": {"offset": 2, "length": 3})"),
            " 'vehicle' reaches beyond");
        row("no fields", description("\"length\": 4"), " 'fields' is missing");
        row("empty fields", description(R"("length": 4, "fields": {"comment": ""})"),
            " 'fields' must be");
        row("unknown field", withField("speed", "{}"), " 'fields.speed' is no field");
        row("no number", number("7"), " 'fields.rpm' must be an object");
        row("no offset", number(R"({"type": "u8"})"), " 'fields.rpm.offset' is missing");
        row("offset below 0", number(R"({"offset": -1, "type": "u8"})"),
            " 'fields.rpm.offset' must be");
        row("beyond the length", number(R"({"offset": 5, "type": "f32"})"),
            " 'fields.rpm' reaches beyond the length of 8 bytes: offset 5 and 4 bytes");
        row("beyond the shortest",
            description(R"("length": [9, 8], "fields": {"rpm": {"offset": 8, "type": "u8"}})"),
            " 'fields.rpm' reaches beyond the length of 8");
        row("type", number(R"({"offset": 0, "type": "float"})"),
            " 'fields.rpm.type' must be u8, i8");
        row("bit of a float", number(R"({"offset": 0, "type": "f32", "bit": 1})"),
            " 'fields.rpm.bit' goes with whole numbers");
        row("bit beyond", number(R"({"offset": 0, "type": "u16", "bit": 16})"),
            " 'fields.rpm.bit' must be a whole number from 0 to 15");
        row("factor", number(R"({"offset": 0, "type": "u8", "factor": "2"})"),
            " 'fields.rpm.factor' must be a number");
        row("constant and offset", number(R"({"value": 1, "offset": 0})"),
            " 'fields.rpm.offset' is not known");
        row("available", number(R"({"value": 1, "available": true})"),
            " 'fields.rpm.available' must be an object");
    }

    void whatIsWrongIsToldWithItsPlace()
    {
        QFETCH(QByteArray, json);
        QFETCH(QString, message);
        QStringList errors;
        QVERIFY(!FeedDescription::parse(json, QStringLiteral("test.json"), errors));
        QVERIFY2(errors.join(QLatin1Char('\n')).contains(message),
                 qPrintable(errors.join(QLatin1Char('\n'))));
        for (const QString &error : errors)
            QVERIFY(!error.contains(QLatin1Char('\n')));
    }

    void allFaultsAreToldAtOnce()
    {
        QStringList errors;
        const QByteArray json =
            description("\"length\": 4,\n\"fields\": {\n\"speed\": {},\n\"rpm\": 3}");
        QVERIFY(!FeedDescription::parse("\xef\xbb\xbf" + json, QStringLiteral("f"), errors));
        QCOMPARE(errors.size(), 2);
        QVERIFY(!FeedDescription::load(QStringLiteral("no/such.json"), errors));
        QVERIFY(errors.value(0).contains(QDir::toNativeSeparators(QStringLiteral("no/such.json"))));
    }

    void everyTypeIsReadInEitherOrder_data()
    {
        QTest::addColumn<QByteArray>("type");
        QTest::addColumn<QByteArray>("big");
        QTest::addColumn<double>("value");
        QTest::newRow("u8") << QByteArray("u8") << QByteArray("fe") << 254.0;
        QTest::newRow("i8") << QByteArray("i8") << QByteArray("fe") << -2.0;
        QTest::newRow("u16") << QByteArray("u16") << QByteArray("fffe") << 65534.0;
        QTest::newRow("i16") << QByteArray("i16") << QByteArray("fffe") << -2.0;
        QTest::newRow("u32") << QByteArray("u32") << QByteArray("fffffff0") << 4294967280.0;
        QTest::newRow("i32") << QByteArray("i32") << QByteArray("fffffffe") << -2.0;
        QTest::newRow("f32") << QByteArray("f32") << QByteArray("3fc00000") << 1.5;
        QTest::newRow("f64") << QByteArray("f64") << QByteArray("3ff8000000000000") << 1.5;
    }

    void everyTypeIsReadInEitherOrder()
    {
        QFETCH(QByteArray, type);
        QFETCH(QByteArray, big);
        QFETCH(double, value);
        QByteArray bytes = QByteArray::fromHex(big);
        for (const char *order : {"big", "little"}) {
            const QByteArray json =
                description(R"("minimumLength": 9, "endianness": ")" + QByteArray(order) +
                            R"(", "fields": {"heaveG": {"offset": 1, "type": ")" + type +
                            R"(", "factor": 2, "bias": -1}})");
            const auto read = decode(json, "\7" + bytes.leftJustified(8, '\7'));
            QVERIFY(read);
            QCOMPARE(+read->sample.vehicle.heaveG, static_cast<float>(2 * value - 1));
            std::reverse(bytes.begin(), bytes.end());
        }
    }

    void everyFieldHasItsPlaceAndItsBit()
    {
        constexpr double Huge = std::numeric_limits<double>::max();
        TelemetrySample all;
        QByteArray taken(sizeof all, '\0');
        for (const TelemetryField &field : telemetryFields()) {
            QCOMPARE(findTelemetryField(QString::fromLatin1(field.name)), &field);
            TelemetrySample sample;
            field.set(sample, std::numeric_limits<double>::quiet_NaN());
            QCOMPARE(quint64(sample.vehicle.availabilityMask), quint64(0));
            field.set(sample, Huge);
            QCOMPARE(quint64(sample.vehicle.availabilityMask), quint64(field.availability));
            field.set(all, Huge);

            // What one field writes, no other one does.
            sample.vehicle.availabilityMask = 0;
            const QByteArray bytes(reinterpret_cast<const char *>(&sample), sizeof sample);
            QVERIFY2(bytes.count('\0') < bytes.size(), field.name);
            for (int i = 0; i < bytes.size(); ++i) {
                QVERIFY2((bytes[i] & taken[i]) == 0, field.name);
                taken[i] = static_cast<char>(taken[i] | bytes[i]);
            }
        }
        const auto &[vehicle, limits, extended, paused] = std::as_const(all);
        for (const auto *reserved :
             {vehicle.reserved8, vehicle.reserved36, vehicle.reserved41, vehicle.reserved77,
              limits.reserved9, extended.wheels[3].reserved, extended.reserved144})
            QCOMPARE(int(*reserved), 0);
        QCOMPARE(+vehicle.tyreTempC[3], std::numeric_limits<std::int32_t>::max());
        QCOMPARE(int(extended.wheels[3].wheelFlagB), 255);
        QVERIFY(paused);
    }

    void theGuidesExampleReads()
    {
        const QByteArray json = contents("host/descriptions/SunsetRally.json");
        QByteArray payload = QByteArray::fromHex("5352414c 0007 0000 41f00000 1388 1f40 03 ff 80 "
                                                 "84 c000 0ea3 0ea4 0ea5 0ea6 0000 00010000");
        const auto read = decode(json, payload);
        QVERIFY(read);
        QCOMPARE(read->vehicle, QStringLiteral("Rally car 7"));
        const VehicleTelemetry &vehicle = read->sample.vehicle;
        QCOMPARE(+vehicle.speedKmh, 108.0F);
        QCOMPARE(quint32(vehicle.rpm), 5000U);
        QCOMPARE(quint32(vehicle.maxRpm), 8000U);
        QCOMPARE(int(vehicle.gear), 3);
        QCOMPARE(int(vehicle.gasPedalPercent), 100);
        QCOMPARE(int(vehicle.brakePedalPercent), 50);
        QCOMPARE(quint32(vehicle.statusFlags), Status::AbsInAction);
        QVERIFY(read->sample.paused);
        QCOMPARE(int(vehicle.steeringPercent), -50);
        QCOMPARE(int(vehicle.tyreTempC[0]), 102);
        QCOMPARE(quint32(vehicle.currentTimeMs), 65536U);
        QCOMPARE(+read->sample.limits.steeringScale, 4.5F);
        payload[0] = 'X';
        QVERIFY(!decode(json, payload));
    }

    void describedOutGaugeGivesTheRecordsOfTheBuiltInDecoder()
    {
        QStringList errors;
        const auto description = FeedDescription::parse(contents("host/descriptions/OutGauge.json"),
                                                        QStringLiteral("OutGauge.json"), errors);
        QVERIFY2(description, qPrintable(errors.join(QLatin1Char('\n'))));
        QRandomGenerator random(64);
        const auto share = [&random] { return random.generateDouble(); };
        for (int i = 0; i < 5000; ++i) {
            Packet packet = Senders::outGauge("XRT", i % 2 == 0 ? 92 : 96);
            packet.put<quint8>(10, quint8(random.bounded(10)));
            packet.reals(12, 250 * share() - 50, 12'000 * share()).reals(28, share());
            packet.put<quint32>(40, random.generate()).put<quint32>(44, random.generate());
            packet.reals(48, share(), share(), share());
            const QByteArray datagram = packet;
            const auto builtIn = OutGauge::decode(datagram);
            QVERIFY(builtIn);
            // One for each: what it learns of the engine, the decoder doesn't know.
            const auto described = DescribedFeed(*description).decode(datagram, {});
            QVERIFY(described);
            QCOMPARE(described->vehicle, builtIn->car);
            for (const auto &[one, other, size] :
                 {std::tuple<const void *, const void *, std::size_t>{&described->sample.vehicle,
                                                                      &builtIn->sample.vehicle,
                                                                      sizeof(VehicleTelemetry)},
                  {&described->sample.extended, &builtIn->sample.extended,
                   sizeof(ExtendedTelemetry)}})
                QCOMPARE(std::memcmp(one, other, size), 0);
            QCOMPARE(described->sample.paused, builtIn->sample.paused);
        }
    }

    void theHighestEngineSpeedIsLearntWhereNoneIsDescribed()
    {
        QStringList errors;
        const auto description = FeedDescription::parse(contents("host/descriptions/OutGauge.json"),
                                                        QStringLiteral("OutGauge.json"), errors);
        QVERIFY(description);
        DescribedFeed feed(*description);
        const auto drive = [&feed](const QByteArray &car) {
            std::uint32_t maximum = 0;
            for (quint8 gear = 2; gear < 7; ++gear) {
                for (int i = 0; i < 4; ++i) {
                    Packet packet = Senders::outGauge(car);
                    packet.put<quint8>(10, gear).reals(16, i == 0 ? 5000 : 6000).reals(48, 1.0);
                    maximum = feed.decode(packet, {})->sample.vehicle.maxRpm;
                }
            }
            return maximum;
        };
        QCOMPARE(drive("XFG"), 6000U);
        QCOMPARE(std::uint32_t(feed.decode(Senders::outGauge("FZ5"), {})->sample.vehicle.maxRpm),
                 0U);
    }

    void valuesAreRoundedAndKeptWithinTheirLimits_data()
    {
        QTest::addColumn<QByteArray>("field");
        QTest::addColumn<double>("sent");
        QTest::addColumn<double>("taken");
        const auto row = [](const char *field, double sent, double taken) {
            QTest::addRow("%s %g", field, sent) << QByteArray(field) << sent << taken;
        };
        row("gasPedalPercent", 49.5, 50);
        row("gasPedalPercent", -3, 0);
        row("gasPedalPercent", 1e30, 100);
        row("turnCoordinatorBall", -4, -1);
        row("turnCoordinatorBall", 1.5, 1);
        row("headingDeg", -90, 270);
        row("headingDeg", 725, 5);
        row("headingDeg", 359.5, 359.5);
    }

    void valuesAreRoundedAndKeptWithinTheirLimits()
    {
        QFETCH(QByteArray, field);
        QFETCH(double, sent);
        QFETCH(double, taken);
        const QByteArray json = withField(field, R"({"offset": 0, "type": "f64"})");
        QByteArray payload(8, '\0');
        qToLittleEndian(sent, payload.data());
        const auto read = decode(json, payload);
        QVERIFY(read);
        const VehicleTelemetry &vehicle = read->sample.vehicle;
        QCOMPARE(vehicle.gasPedalPercent + static_cast<double>(vehicle.turnCoordinatorBall) +
                     static_cast<double>(vehicle.headingDeg),
                 taken);
        qToLittleEndian(std::numeric_limits<double>::infinity(), payload.data());
        QCOMPARE(quint64(decode(json, payload)->sample.vehicle.availabilityMask), quint64(0));
    }

    void onlyWhatIsRecognisedIsTaken()
    {
        const QByteArray json =
            description(R"("length": [4, 6], "recognise": [{"offset": 0, "bytes": "4C46"},
                        {"offset": 3, "bytes": "01"}],
                        "fields": {"comment": "one", "rpm": {"value": 7}})");
        for (const QByteArray &taken : {QByteArray("LF?\1"), QByteArray("LF?\1??")}) {
            const auto read = decode(json, taken);
            QVERIFY(read);
            QCOMPARE(quint32(read->sample.vehicle.rpm), 7U);
        }
        for (const QByteArray &other :
             {QByteArray(), QByteArray("LF?"), QByteArray("LF?\1?"), QByteArray("LF?\2"),
              QByteArray("lf?\1"), QByteArray("LF?\1???")})
            QVERIFY2(!decode(json, other), other.constData());
    }

    void aFieldIsAvailableWhileItsConditionSaysSo()
    {
        const QByteArray json = withField("absInAction", R"({"offset": 0, "type": "u8", "bit": 1,
                               "available": {"offset": 4, "type": "u32", "bit": 9}})");
        const auto there = decode(json, QByteArray("\2\0\0\0\0\2\0\0", 8));
        QVERIFY(there);
        QCOMPARE(quint64(there->sample.vehicle.availabilityMask), quint64(Available::AbsInAction));
        QCOMPARE(quint32(there->sample.vehicle.statusFlags), Status::AbsInAction);
        const auto gone = decode(json, QByteArray("\2\0\0\0\0\1\0\0", 8));
        QVERIFY(gone);
        QCOMPARE(quint64(gone->sample.vehicle.availabilityMask), quint64(0));
        QCOMPARE(quint32(gone->sample.vehicle.statusFlags), 0U);
    }

    void vehiclesAreNamedByTextOrNumber()
    {
        const auto name = [](const QByteArray &vehicle, const QByteArray &payload) {
            const auto read = decode(description(R"("minimumLength": 2, "vehicle": )" + vehicle +
                                                 R"(, "fields": {"rpm": {"value": 1}})"),
                                     payload);
            return read ? read->vehicle : QStringLiteral("nothing");
        };
        const QByteArray text = R"({"offset": 0, "length": 2, "prefix": "Car "})";
        QCOMPARE(name(text, "ABC"), QStringLiteral("Car AB"));
        QCOMPARE(name(text, QByteArray("A\0", 2)), QStringLiteral("Car A"));
        QCOMPARE(name(text, "\xc3\xa9"), QStringLiteral("Car \u00e9"));
        QCOMPARE(name(text, "\xe9\n"), QStringLiteral("Car \u00e9"));
        QCOMPARE(name(text, QByteArray(2, '\0')), QString());
        const QByteArray number = R"({"offset": 0, "type": "u16", "prefix": "No. "})";
        QCOMPARE(name(number, QByteArray("\xff\xff", 2)), QStringLiteral("No. 65535"));
    }
};

QTEST_GUILESS_MAIN(DescribedFeedTest)
#include "DescribedFeedTest.moc"
