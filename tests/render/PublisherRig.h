#pragma once

#include "render/TelemetryPublisher.h"
#include "support/RecordBytes.h"

#include <QtCore/QSet>
#include <QtCore/QVariant>

#include <array>
#include <cmath>
#include <cstddef>
#include <map>
#include <utility>
#include <vector>

inline QVariant text(const char *value)
{
    return QString::fromLatin1(value);
}

/// All that a test hands to a publication.
struct Input
{
    RecordBytes records;
    QString motionProfileName;
    TuneInfo tune;
    float steeringSmoothing = 1;
    bool useMph = false;
    bool showMarkers = false;
    bool paused = false;

    void setMask(std::uint64_t mask) { records.putVehicle(0, mask); }
    void setSpeed(float kmh) { records.putVehicle(24, kmh); }
    void setGear(int gear) { records.putVehicle(40, static_cast<std::int8_t>(gear)); }
    void setRpm(std::uint32_t rpm) { records.putVehicle(49, rpm); }
    void setMaxRpm(std::uint32_t rpm) { records.putVehicle(53, rpm); }
    void setFlags(std::uint32_t flags) { records.putVehicle(184, flags); }
    void setBlinkingThreshold(std::uint8_t percent) { records.putLimits(8, percent); }
};

/// A different value in every field.
inline Input distinctInput()
{
    Input input;
    RecordBytes &records = input.records;
    records.putVehicle(24, 187.6F);
    records.putVehicle(28, 93.4F);
    records.putVehicle(32, std::int32_t{-37});
    records.putVehicle(40, std::int8_t{5});
    records.putVehicle(49, 7311U);
    records.putVehicle(53, 81920U);
    const std::array<std::uint8_t, 4> percents{81, 12, 34, 64};
    records.putVehicle(57, percents);
    records.putVehicle(61, std::int32_t{-300017});
    records.putVehicle(65, 83456U);
    records.putVehicle(69, 82345U);
    records.putVehicle(73, 81234U);
    records.putVehicle(81, std::int32_t{70007});
    records.putVehicle(85, std::int32_t{80023});
    records.putVehicle(89, std::uint8_t{3});
    records.putVehicle(90, std::uint8_t{6});
    records.putVehicle(91, 0.125F);
    records.putVehicle(95, -1.5F);
    records.putVehicle(99, 0.75F);
    records.putVehicle(103, std::uint8_t{0x9D});
    records.putVehicle(104, -1.25F);
    records.putVehicle(108, std::array<std::int32_t, 4>{100291, 100292, -100293, 100294});
    records.putVehicle(124, std::array<std::int32_t, 4>{100611, 100612, 100613, -100614});
    records.putVehicle(140, std::array<std::uint8_t, 4>{255, 202, 203, 204});
    records.putVehicle(
        144, std::array<std::uint32_t, 4>{4000000001U, 4000000002U, 4000000003U, 4000000004U});
    records.putVehicle(160, 123.5F);
    records.putVehicle(164, -987.25F);
    records.putVehicle(168, 0.375F);
    records.putVehicle(172, -4.25F);
    records.putVehicle(176, 12.75F);
    records.putVehicle(180, 271.5F);
    records.putVehicle(188, std::uint8_t{177});
    records.putLimits(0, 2.5F);
    records.putLimits(4, std::array<std::uint8_t, 5>{15, 161, 72, 83, 94});
    input.motionProfileName = QStringLiteral("Gentle");
    input.tune.group = QStringLiteral("Aero");
    input.tune.name = QStringLiteral("Wing");
    input.tune.valueName = QStringLiteral("Rear");
    input.tune.valueMin = -3.5F;
    input.tune.valueMax = 11.25F;
    input.tune.valueCurrent = 4.5F;
    input.tune.valueIsInteger = true;
    input.tune.changeCounter = 4000000009U;
    input.useMph = true;
    input.showMarkers = true;
    return input;
}

/// Type and value, and floats exactly, where QVariant compares them loosely.
inline bool same(const QVariant &a, const QVariant &b)
{
    if (a.userType() != b.userType())
        return false;
    if (a.userType() != QMetaType::Float)
        return a == b;
    const float x = a.toFloat();
    const float y = b.toFloat();
    return x == y || (std::isnan(x) && std::isnan(y));
}

/// The records are packed, so a host may hand over one that lies at any address; here all three lie
/// at odd ones, where a sanitizer sees every access that takes a value for aligned.
struct OddPlaces
{
    alignas(8) unsigned char first;
    VehicleTelemetry vehicle;
    unsigned char second;
    DisplayLimits limits;
    ExtendedTelemetry extended;
};
static_assert(offsetof(OddPlaces, vehicle) % 2 == 1);
static_assert(offsetof(OddPlaces, limits) % 2 == 1);
static_assert(offsetof(OddPlaces, extended) % 2 == 1);

/// A publisher together with what it has written last.
struct Bench
{
    std::vector<std::pair<QString, QVariant>> written;
    std::map<QString, QVariant> state;
    TelemetryPublisher publisher{[this](const QString &name, const QVariant &value) {
        written.emplace_back(name, value);
        state[name] = value;
    }};

    Bench() = default;
    Q_DISABLE_COPY_MOVE(Bench)

    void publish(const Input &input)
    {
        written.clear();
        const OddPlaces records{{},
                                input.records.vehicleRecord(),
                                {},
                                input.records.limitsRecord(),
                                input.records.extendedRecord()};
        publisher.publish({records.vehicle, records.limits, records.extended,
                           input.motionProfileName, input.tune, input.steeringSmoothing,
                           input.useMph, input.showMarkers, input.paused});
    }
    QVariant value(const char *name) const { return state.at(QLatin1String(name)); }
    int number(const char *name) const { return value(name).toInt(); }

    /// Names of the properties that hold `true`, of those whose names begin with `prefix`.
    QSet<QString> raised(const char *prefix = "dash_") const
    {
        QSet<QString> names;
        for (const auto &[name, value] : state) {
            if (name.startsWith(QLatin1String(prefix)) && same(value, true))
                names.insert(name);
        }
        return names;
    }
};
