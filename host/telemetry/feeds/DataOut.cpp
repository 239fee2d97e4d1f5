#include "DataOut.h"

#include "Conversions.h"

#include <cmath>

namespace DataOut {

namespace {

using Conversions::Corners;
using Conversions::WheelOrder;

constexpr int SledLength = 232;
constexpr int DashLength = 311;
constexpr int HorizonLength = 324;
constexpr int MotorsportLength = 331;
constexpr int HorizonGap = 12; ///< Bytes before the dash part, which only Horizon has.
constexpr int TyreWearAt = 311;

namespace Sled {
constexpr int RaceOn = 0;
constexpr int MaxRpm = 8;
constexpr int Rpm = 16;
constexpr int AccelerationX = 20;
constexpr int AccelerationY = 24;
constexpr int AccelerationZ = 28;
constexpr int VelocityX = 32;
constexpr int Yaw = 56;
constexpr int Pitch = 60;
constexpr int Roll = 64;
constexpr int SlipRatios = 84;
constexpr int SlipAngles = 164;
constexpr int Car = 212;
constexpr int CarClass = 216;
constexpr int DriveTrain = 224;
} // namespace Sled

/// From the start of the dash part.
namespace Dash {
constexpr int Speed = 12;
constexpr int TyreTemperatures = 24;
constexpr int Fuel = 44;
constexpr int BestLap = 52;
constexpr int LastLap = 56;
constexpr int CurrentLap = 60;
constexpr int Lap = 68;
constexpr int Position = 70;
constexpr int Throttle = 71;
constexpr int Brake = 72;
constexpr int Clutch = 73;
constexpr int Gear = 75;
constexpr int Steer = 76;
} // namespace Dash

std::int8_t gear(quint8 code)
{
    constexpr quint8 Neutral = 11;
    if (code == 0)
        return -1;
    return code < Neutral ? static_cast<std::int8_t>(code) : std::int8_t{0};
}

std::uint8_t pedal(quint8 position)
{
    return static_cast<std::uint8_t>(std::lround(static_cast<float>(position) / 2.55F));
}

void fillMotion(VehicleTelemetry &vehicle, const ByteReader &bytes)
{
    vehicle.rpm = Conversions::rpm(bytes.real(Sled::Rpm)).value_or(0);
    vehicle.maxRpm = Conversions::rpm(bytes.real(Sled::MaxRpm)).value_or(0);
    vehicle.swayG = Conversions::gravities(bytes.real(Sled::AccelerationX)).value_or(0.0F);
    vehicle.heaveG = Conversions::gravities(bytes.real(Sled::AccelerationY)).value_or(0.0F);
    vehicle.surgeG = Conversions::gravities(bytes.real(Sled::AccelerationZ)).value_or(0.0F);
    vehicle.headingDeg = Conversions::heading(bytes.real(Sled::Yaw)).value_or(0.0F);
    // The game's pitch grows as the nose goes down.
    vehicle.pitchDeg = Conversions::degrees(-bytes.real(Sled::Pitch)).value_or(0.0F);
    vehicle.rollDeg = Conversions::degrees(bytes.real(Sled::Roll)).value_or(0.0F);
    const float velocity = std::hypot(bytes.real(Sled::VelocityX), bytes.real(Sled::VelocityX + 4),
                                      bytes.real(Sled::VelocityX + 8));
    vehicle.groundSpeedKmh = Conversions::kmh(velocity).value_or(0.0F);
    vehicle.speedKmh = vehicle.groundSpeedKmh;
}

void fillSlip(ExtendedTelemetry &extended, const ByteReader &bytes)
{
    const Corners ratios = Conversions::corners(bytes, Sled::SlipRatios, WheelOrder::FrontFirst);
    const Corners angles = Conversions::corners(bytes, Sled::SlipAngles, WheelOrder::FrontFirst);
    const auto slips = [](float value) {
        constexpr float Most = 1e6F;
        return std::abs(value) > 1 && std::abs(value) < Most;
    };
    for (std::size_t i = 0; i < ratios.size(); ++i) {
        extended.wheels[i].wheelFlagA = slips(ratios[i]) ? 1 : 0;
        extended.wheels[i].wheelFlagB = slips(angles[i]) ? 1 : 0;
    }
}

void fillDash(VehicleTelemetry &vehicle, const ByteReader &bytes, int start)
{
    using Conversions::markAvailable;
    const auto real = [&](int offset) { return bytes.real(start + offset); };
    const auto byte = [&](int offset) { return bytes.at<quint8>(start + offset); };
    vehicle.speedKmh = Conversions::kmh(real(Dash::Speed)).value_or(0.0F);
    vehicle.gear = gear(byte(Dash::Gear));
    const float steer = static_cast<float>(bytes.at<qint8>(start + Dash::Steer)) / 127;
    vehicle.steeringPercent = Conversions::signedPercent(steer).value_or(0);
    vehicle.gasPedalPercent = pedal(byte(Dash::Throttle));
    vehicle.brakePedalPercent = pedal(byte(Dash::Brake));
    vehicle.clutchPedalPercent = pedal(byte(Dash::Clutch));
    vehicle.position = byte(Dash::Position);
    vehicle.completedLaps = bytes.at<quint16>(start + Dash::Lap);
    vehicle.availabilityMask |= Available::Pedals | Available::Position | Available::CompletedLaps;

    vehicle.fuelLevelPercent =
        markAvailable(vehicle, Available::FuelLevel, Conversions::percent(real(Dash::Fuel)));
    vehicle.bestTimeMs =
        markAvailable(vehicle, Available::BestTime, Conversions::milliseconds(real(Dash::BestLap)));
    vehicle.lastTimeMs =
        markAvailable(vehicle, Available::LastTime, Conversions::milliseconds(real(Dash::LastLap)));
    vehicle.currentTimeMs = markAvailable(vehicle, Available::CurrentTime,
                                          Conversions::milliseconds(real(Dash::CurrentLap)));

    const Corners fahrenheit =
        Conversions::corners(bytes, start + Dash::TyreTemperatures, WheelOrder::FrontFirst);
    if (const auto hot = Conversions::within(fahrenheit, -200, 5000)) {
        vehicle.availabilityMask |= Available::TyreTemp;
        for (std::size_t i = 0; i < hot->size(); ++i)
            vehicle.tyreTempC[i] = static_cast<std::int32_t>(std::lround(((*hot)[i] - 32) / 1.8F));
    }
}

void fillTyreWear(VehicleTelemetry &vehicle, const ByteReader &bytes)
{
    const Corners wear = Conversions::corners(bytes, TyreWearAt, WheelOrder::FrontFirst);
    std::array<std::uint8_t, 4> percents{};
    for (std::size_t i = 0; i < wear.size(); ++i) {
        const auto percent = Conversions::percent(wear[i]);
        if (!percent)
            return;
        percents[i] = *percent;
    }
    vehicle.availabilityMask |= Available::TyreWear;
    std::copy(percents.begin(), percents.end(), vehicle.tyreWearPercent);
}

} // namespace

bool accepts(const QByteArray &datagram)
{
    const int length = datagram.size();
    if (length != SledLength && length != DashLength && length != HorizonLength &&
        length != MotorsportLength)
        return false;
    constexpr int Measured = (Sled::Car - Sled::MaxRpm) / 4;
    const ByteReader bytes(datagram);
    return bytes.at<quint32>(Sled::RaceOn) <= 1 && bytes.at<quint32>(Sled::DriveTrain) <= 2 &&
           bytes.at<quint32>(Sled::CarClass) <= 100 &&
           Conversions::areMostlyPlausible(
               Conversions::plausibleReals(bytes, Sled::MaxRpm, Measured), Measured);
}

std::optional<Reading> decode(const QByteArray &datagram)
{
    if (!accepts(datagram))
        return std::nullopt;
    const ByteReader bytes(datagram);
    Reading reading;
    reading.sample.paused = bytes.at<qint32>(Sled::RaceOn) == 0;
    reading.car = bytes.at<qint32>(Sled::Car);
    if (reading.sample.paused)
        return reading;

    VehicleTelemetry &vehicle = reading.sample.vehicle;
    fillMotion(vehicle, bytes);
    fillSlip(reading.sample.extended, bytes);
    const int length = datagram.size();
    if (length > SledLength)
        fillDash(vehicle, bytes, SledLength + (length == HorizonLength ? HorizonGap : 0));
    if (length == MotorsportLength)
        fillTyreWear(vehicle, bytes);
    return reading;
}

} // namespace DataOut
