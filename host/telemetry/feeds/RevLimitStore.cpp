#include "RevLimitStore.h"

#include "system/AbandonedLock.h"

#include <QtCore/QSettings>

#include <utility>

namespace {

const QLatin1String Group("RevLimits");
const QLatin1String Highest("highest");
const QLatin1String ShiftLight("shiftLight");
const QLatin1String FullShifts("fullShifts");

/// A number in the file, which may have been edited by hand.
std::uint32_t readNumber(const QSettings &settings, const QString &key, std::uint32_t most)
{
    const std::uint32_t number = settings.value(key).toUInt();
    return number <= most ? number : 0;
}

} // namespace

RevLimitStore::RevLimitStore(QString path, Clock clock)
    : path(std::move(path))
    , clock(std::move(clock))
    , lastWritten(this->clock())
{
    constexpr std::uint32_t MostRpm = 30'000;
    constexpr std::uint32_t MostShifts = 1000;
    QSettings settings(this->path, QSettings::IniFormat);
    settings.beginGroup(Group);
    const QStringList groups = settings.childGroups();
    for (const QString &car : groups) {
        if (cars.size() >= MostCars)
            break;
        settings.beginGroup(car);
        cars.insert(car, {readNumber(settings, Highest, MostRpm),
                          readNumber(settings, ShiftLight, MostRpm),
                          readNumber(settings, FullShifts, MostShifts)});
        settings.endGroup();
    }
}

RevLimitStore::~RevLimitStore()
{
    write();
}

QString RevLimitStore::usualPath()
{
    return QSettings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("Orvalentix"),
                     QStringLiteral("gauge-host-cars"))
        .fileName();
}

RevLimits RevLimitStore::limitsOf(const QString &car) const
{
    return cars.value(car);
}

void RevLimitStore::keep(const QString &car, const RevLimits &limits)
{
    const bool isKnown = cars.contains(car);
    // A car that was only parked isn't worth a line.
    if (car.isEmpty() || cars.value(car) == limits || limits.maximum() == 0 ||
        (!isKnown && cars.size() >= MostCars))
        return;
    cars.insert(car, limits);
    unwritten.insert(car, limits);
    if (clock() - lastWritten >= WritingPause)
        write();
}

void RevLimitStore::write()
{
    lastWritten = clock();
    if (unwritten.isEmpty())
        return;
    QSettings settings(path, QSettings::IniFormat);
    removeAbandonedLock(settings);
    settings.beginGroup(Group);
    for (auto it = unwritten.cbegin(); it != unwritten.cend(); ++it) {
        settings.beginGroup(it.key());
        settings.setValue(Highest, it->highest);
        settings.setValue(ShiftLight, it->shiftLight);
        settings.setValue(FullShifts, it->fullShifts);
        settings.endGroup();
    }
    unwritten.clear();
}
