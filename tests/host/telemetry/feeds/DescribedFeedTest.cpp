#include "telemetry/feeds/described/DescribedFeed.h"
#include "FeedRig.h"
#include "telemetry/feeds/OutGauge.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QRandomGenerator>
#include <QtTest/QtTest>

#include <limits>

namespace {

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

} // namespace

class DescribedFeedTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatIsWrongIsToldWithItsPlace()
    {
        const auto rpm = [](const char *number) { return withField("rpm", number); };
        const std::pair<QByteArray, const char *> rows[] = {
            {"{\n\"name\": \"x\",", "2: not valid JSON"},
            {QByteArray(70'000, ' '), " the file is larger"},
            {R"({"name": "x", "port": 65536})", " 'port' must be a whole number from 1 to 65535"},
            {described(R"("colour": 1, "length": [1, 4.5])"), " 'length[1]' must be"},
            {described(R"("length": 1, "minimumLength": 1)"), " it takes either"},
            {described(R"("length": 4, "recognise": [{"offset": 3, "bytes": "4c46"}])"),
             " 'recognise[0]' reaches beyond the length of 4 bytes: offset 3 and 2 bytes"},
            {described(R"("length": 4, "vehicle": {"offset": 2, "length": 3})"),
             " 'vehicle' reach"},
            {described(R"("length": [9, 8], "fields": {"rpm": {"offset": 8, "type": "u8"}})"),
             " 'fields.rpm' reaches beyond the length of 8"},
            {withField("speed", "{}"), " 'fields.speed' is not a field"},
            {rpm(R"({"type": "u8"})"), " 'fields.rpm.offset' is missing"},
            {rpm(R"({"offset": 0, "type": "float"})"), " 'fields.rpm.type' must be"},
            {rpm(R"({"offset": 0, "type": "u16", "bit": 16})"), " 'fields.rpm.bit' must"},
        };
        QStringList errors;
        for (const auto &[json, message] : rows) {
            QVERIFY(!FeedDescription::parse(json, QStringLiteral("x.json"), errors));
            QVERIFY2(!errors.filter(QLatin1String("x.json:") + QLatin1String(message)).isEmpty(),
                     message);
        }
        FeedDescription::parse(described(R"("colour": 1, "fields": {"a": 3})"), {}, errors);
        QVERIFY2(errors.size() == 3, "all faults are told at once");
        const QString path = QDir::toNativeSeparators(QStringLiteral("no/such.json"));
        QVERIFY(!FeedDescription::load(path, errors) && errors[0].contains(path));
    }

    void everyTypeIsReadInEitherOrder()
    {
        const QByteArray json = described(R"("length": 26, "endianness": "big", "fields": {
                "heaveG": {"offset": 0, "type": "u8"}, "swayG": {"offset": 1, "type": "i8"},
                "surgeG": {"offset": 2, "type": "u16", "factor": 2, "bias": -1},
                "pitchDeg": {"offset": 4, "type": "i16"}, "rollDeg": {"offset": 6, "type": "u32"},
                "deltaTimeS": {"offset": 10, "type": "i32"},
                "speedKmh": {"offset": 14, "type": "f32", "factor": 2, "bias": -1},
                "groundSpeedKmh": {"offset": 18, "type": "f64"}})");
        const QByteArray little = QByteArray(json).replace("big", "little");
        for (const auto &[description, payload] :
             {std::pair{json, "fe fe fff0 fff0 fffffff0 fffffff0 3fc00000 3ff8000000000000"},
              {little, "fe fe f0ff f0ff f0ffffff f0ffffff 0000c03f 000000000000f83f"}}) {
            const auto read = decode(description, QByteArray::fromHex(payload))->sample.vehicle;
            const std::vector<float> values{read.heaveG,   read.swayG,         read.surgeG,
                                            read.pitchDeg, read.rollDeg,       read.deltaTimeS,
                                            read.speedKmh, read.groundSpeedKmh};
            QCOMPARE(values,
                     (std::vector<float>{254, -2, 2 * 65520 - 1, -16, 4294967280.F, -16, 2, 1.5F}));
        }
    }

    void everyFieldHasItsPlaceItsBitAndItsRange()
    {
        QByteArray taken(sizeof(TelemetrySample), '\0');
        for (const TelemetryField &field : telemetryFields()) {
            QCOMPARE(findTelemetryField(QString::fromLatin1(field.name)), &field);
            TelemetrySample sample;
            field.set(sample, std::numeric_limits<double>::quiet_NaN());
            QCOMPARE(bytesOf(sample.vehicle), bytesOf(VehicleTelemetry{}));
            field.set(sample, std::numeric_limits<double>::max());
            QCOMPARE(sample.vehicle.availabilityMask | 0, quint64(field.availability));
            // What one field writes, no other one does.
            sample.vehicle.availabilityMask = 0;
            const QByteArray bytes = bytesOf(sample);
            QVERIFY2(bytes.count('\0') < bytes.size(), field.name);
            for (int i = 0; i < bytes.size(); ++i) {
                QVERIFY2((bytes[i] & taken[i]) == 0, field.name);
                taken[i] = static_cast<char>(taken[i] | bytes[i]);
            }
            field.set(sample, 0);
            QCOMPARE(sample.vehicle.statusFlags | 0, 0U);
        }
        const auto written = [](const char *name, double value) {
            TelemetrySample sample;
            findTelemetryField(QLatin1String(name))->set(sample, value);
            return sample.vehicle.gasPedalPercent + double(sample.vehicle.turnCoordinatorBall) +
                   double(sample.vehicle.headingDeg);
        };
        QCOMPARE(written("gasPedalPercent", 49.5), 50.0);
        QCOMPARE(written("gasPedalPercent", -3), 0.0);
        QCOMPARE(written("gasPedalPercent", 1e30), 100.0);
        QCOMPARE(written("turnCoordinatorBall", -4), -1.0);
        QCOMPARE(written("headingDeg", -90), 270.0);
        QCOMPARE(written("headingDeg", 725.5), 5.5);
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
            QCOMPARE(bytesOf(described->sample.vehicle), bytesOf(builtIn->sample.vehicle));
        }
        // The highest engine speed, which isn't described, is learnt.
        const auto drive = [&feed](const char *car, quint8 gear, float rpm) {
            Packet packet = Senders::outGauge(car);
            packet.put<quint8>(10, gear).reals(16, rpm).reals(48, 1.0);
            return uint(feed.decode(packet, {})->sample.vehicle.maxRpm);
        };
        for (int i = 0; i < 20; ++i)
            drive("XFG", quint8(2 + i / 4), i % 4 == 0 ? 5000 : 6000);
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
        QCOMPARE(bytesOf(gone), bytesOf(VehicleTelemetry{}));
    }

    void vehiclesAreNamedByTextOrNumber()
    {
        const auto name = [](const QByteArray &vehicle, const QByteArray &payload) {
            const QByteArray rest = R"("length": 2, "fields": {"rpm": {"value": 1}}, "vehicle": )";
            return decode(described(rest + vehicle), payload)->vehicle;
        };
        const QByteArray text = R"({"offset": 0, "length": 2, "prefix": "Car "})";
        QCOMPARE(name(text, "AB"), QStringLiteral("Car AB"));
        QCOMPARE(name(text, QByteArray("A\0", 2)), QStringLiteral("Car A"));
        QCOMPARE(name(text, "\xc3\xa9"), QStringLiteral("Car \u00e9"));
        QCOMPARE(name(text, "\xe9\n"), QStringLiteral("Car \u00e9"));
        QCOMPARE(name(text, QByteArray(2, '\0')), QString());
        const QByteArray number = R"({"offset": 0, "type": "u16", "prefix": "No. "})";
        QCOMPARE(name(number, "\xff\xff"), QStringLiteral("No. 65535"));
    }
};

QTEST_GUILESS_MAIN(DescribedFeedTest)
#include "DescribedFeedTest.moc"
