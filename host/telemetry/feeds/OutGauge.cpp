#include "OutGauge.h"

#include "Conversions.h"

#include <algorithm>

namespace OutGauge {

namespace {

constexpr int Length = 92;
constexpr int LengthWithId = 96;
constexpr int HighestGear = 32;

constexpr int CarAt = 4;
constexpr int CarLength = 4;
constexpr char OutSimHeader[] = "LFST";
constexpr int GearAt = 10;
constexpr int SpeedAt = 12;
constexpr int RpmAt = 16;
constexpr int FuelAt = 28;
constexpr int LightsThereAt = 40;
constexpr int LightsOnAt = 44;
constexpr int ThrottleAt = 48;
constexpr int BrakeAt = 52;
constexpr int ClutchAt = 56;
constexpr int MeasuredFirst = 7; ///< Numbers from the speed on.
constexpr int MeasuredLater = 3; ///< Numbers from the throttle on.

namespace Light {
constexpr quint32 Shift = 1U << 0;
constexpr quint32 PitLimiter = 1U << 3;
constexpr quint32 TractionControl = 1U << 4;
constexpr quint32 Abs = 1U << 10;
} // namespace Light

bool isText(const QByteArray &code)
{
    return std::all_of(code.begin(), code.end(), [](char letter) {
        return (letter >= '0' && letter <= '9') || (letter >= 'A' && letter <= 'Z') ||
               (letter >= 'a' && letter <= 'z');
    });
}

/// Four letters, three and a zero, or a mod's number of 24 bits and a zero.
bool isCar(const QByteArray &code)
{
    return code.endsWith('\0') || isText(code);
}

QString nameOf(const QByteArray &code)
{
    const QByteArray text = code.endsWith('\0') ? code.left(CarLength - 1) : code;
    if (isText(text))
        return QString::fromLatin1(text);
    const auto number = ByteReader(code).at<quint32>(0);
    return number == 0 ? QString()
                       : QStringLiteral("%1").arg(number, 6, 16, QLatin1Char('0')).toUpper();
}

/// 0 for a code that is no gear, such as a second reverse gear.
std::int8_t gearOf(quint8 code)
{
    return code <= HighestGear ? static_cast<std::int8_t>(code - 1) : std::int8_t{0};
}

void fillLights(VehicleTelemetry &vehicle, quint32 there, quint32 on)
{
    const auto fill = [&](quint32 light, std::uint64_t bit, std::uint32_t flag) {
        vehicle.availabilityMask |= (there & light) != 0 ? bit : 0;
        vehicle.statusFlags |= (there & on & light) != 0 ? flag : 0;
    };
    fill(Light::PitLimiter, Available::SpeedLimiter, Status::SpeedLimiter);
    fill(Light::TractionControl, Available::TcInAction, Status::TcInAction);
    fill(Light::Abs, Available::AbsInAction, Status::AbsInAction);
}

} // namespace

bool accepts(const QByteArray &datagram)
{
    if (datagram.size() != Length && datagram.size() != LengthWithId)
        return false;
    const ByteReader bytes(datagram);
    const int plausible = Conversions::plausibleReals(bytes, SpeedAt, MeasuredFirst) +
                          Conversions::plausibleReals(bytes, ThrottleAt, MeasuredLater);
    return isCar(datagram.mid(CarAt, CarLength)) && !datagram.startsWith(OutSimHeader) &&
           Conversions::areMostlyPlausible(plausible, MeasuredFirst + MeasuredLater);
}

std::optional<Reading> decode(const QByteArray &datagram)
{
    if (!accepts(datagram))
        return std::nullopt;
    const ByteReader bytes(datagram);
    Reading reading;
    VehicleTelemetry &vehicle = reading.sample.vehicle;

    vehicle.gear = gearOf(bytes.at<quint8>(GearAt));
    vehicle.speedKmh = Conversions::kmh(bytes.real(SpeedAt)).value_or(0.0F);
    vehicle.groundSpeedKmh = vehicle.speedKmh;
    vehicle.rpm = Conversions::rpm(bytes.real(RpmAt)).value_or(0);
    vehicle.fuelLevelPercent = Conversions::markAvailable(vehicle, Available::FuelLevel,
                                                          Conversions::percent(bytes.real(FuelAt)));

    Conversions::setPedals(vehicle, bytes.real(ThrottleAt), bytes.real(BrakeAt),
                           bytes.real(ClutchAt));

    const auto there = bytes.at<quint32>(LightsThereAt);
    const auto on = bytes.at<quint32>(LightsOnAt);
    fillLights(vehicle, there, on);
    reading.hasShiftLight = (there & Light::Shift) != 0;
    reading.shiftLight = (there & on & Light::Shift) != 0;

    reading.car = nameOf(datagram.mid(CarAt, CarLength));
    return reading;
}

} // namespace OutGauge
