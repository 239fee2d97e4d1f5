#pragma once

#include "plugin/IRecentVehicleNameProvider.h"

class FakeProvider final : public IRecentVehicleNameProvider
{
public:
    QString name;
    int asked = 0; ///< Under the store's lock, so any thread may count.
    QString recentVehicleName() override { return ++asked, name; }
};
