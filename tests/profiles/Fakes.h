#pragma once

#include "plugin/IDashboardEngine.h"
#include "plugin/IDashboardRenderer.h"
#include "plugin/IRecentVehicleNameProvider.h"

#include <QtCore/QStringList>
#include <QtGui/QImage>

/// An engine that only notes which documents it was sent.
class FakeEngine final : public IDashboardEngine
{
public:
    QStringList documents;

    void updateTelemetry(const VehicleTelemetry &, const DisplayLimits &, const ExtendedTelemetry &,
                         bool) override
    {
    }
    void setDashboardFile(const QString &path) override { documents += path; }
    void shutdown() override {}
    std::unique_ptr<IDashboardRenderer> createRenderer() override { return nullptr; }
    void addConsumer(IDashboardConsumer *) override {}
    void removeConsumer(IDashboardConsumer *) override {}
    bool hasConsumers() override { return false; }
    std::unique_ptr<QImage> createWaitingImage(int) override { return nullptr; }
    void setMotionProfileName(const QString &) override {}
    void setTuneInfo(const QString &, const QString &, const TuneValue &) override {}
};

class FakeProvider final : public IRecentVehicleNameProvider
{
public:
    QString name;
    QString recentVehicleName() override { return name; }
};
