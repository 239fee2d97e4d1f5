#pragma once

#include "IRecentVehicleNameProvider.h"

#include <QtCore/QString>

#include <mutex>

/// Tells the store of dashboards which vehicle is driven. Any thread.
class VehicleNames final : public IRecentVehicleNameProvider
{
    Q_OBJECT

public:
    QString recentVehicleName() override;

    /// Takes the name of the vehicle that is driven now. If it differs from the last, emits the
    /// signal on the calling thread.
    void report(const QString &name);

private:
    std::mutex mutex;
    QString current;
};
