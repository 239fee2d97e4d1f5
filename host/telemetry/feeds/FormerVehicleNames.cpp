#include "FormerVehicleNames.h"

#include <QtCore/QRegularExpression>

#include <algorithm>
#include <cmath>

namespace {

/// Earlier versions took engine speeds, which are radians per second, for tenths of 1/min. A speed
/// that is rounded now may have been rounded up or down then.
QStringList formerSpeeds(const QString &rpm)
{
    constexpr double Former = 10 / 9.549297;
    const double now = rpm.toDouble();
    QStringList speeds;
    for (long speed = std::lround(std::max(now - 0.5, 0.0) * Former);
         speed <= std::lround((now + 0.5) * Former); ++speed)
        speeds += QString::number(speed);
    return speeds;
}

QStringList formerEgoNames(const QString &maxRpm, const QString &idleRpm, const QString &gears)
{
    QStringList names;
    const QStringList maxima = formerSpeeds(maxRpm);
    const QStringList idles = formerSpeeds(idleRpm);
    for (const QString &maximum : maxima) {
        for (const QString &idle : idles)
            names += QStringLiteral("EGO car %1-%2-%3").arg(maximum, idle, gears);
    }
    return names;
}

/// Earlier versions wrote the bytes of a mod's number in the other order and stopped at a zero, so
/// that several mods shared a name. Such a name tells nothing.
QStringList formerModNames(const QString &number)
{
    QByteArray bytes = QByteArray::fromHex(number.toLatin1());
    std::reverse(bytes.begin(), bytes.end());
    if (bytes.contains('\0'))
        return {};
    return {QStringLiteral("OutGauge ") + QString::fromLatin1(bytes.toHex().toUpper())};
}

} // namespace

QStringList formerVehicleNames(const QString &vehicle)
{
    static const QRegularExpression ego(
        QStringLiteral("^EGO car ([0-9]{1,6})-([0-9]{1,6})-([0-9]+)$"));
    static const QRegularExpression mod(QStringLiteral("^OutGauge ([0-9A-F]{6})$"));
    if (const auto match = ego.match(vehicle); match.hasMatch())
        return formerEgoNames(match.captured(1), match.captured(2), match.captured(3));
    if (const auto match = mod.match(vehicle); match.hasMatch())
        return formerModNames(match.captured(1));
    return {};
}
