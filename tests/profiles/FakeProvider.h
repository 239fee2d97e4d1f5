#pragma once

#include "plugin/IRecentVehicleNameProvider.h"
#include "support/FakeEngine.h"

class FakeProvider final : public IRecentVehicleNameProvider
{
public:
    QString name;
    QString recentVehicleName() override { return name; }
};
