#include "VehicleNames.h"

QString VehicleNames::recentVehicleName()
{
    const std::lock_guard guard(mutex);
    return current;
}

void VehicleNames::report(const QString &name)
{
    {
        const std::lock_guard guard(mutex);
        if (name == current)
            return;
        current = name;
    }
    Q_EMIT vehicleChanged(name);
}
