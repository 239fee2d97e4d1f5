#pragma once

#include "plugin/IDashboardRenderer.h"

#include <QtCore/QStringList>

#include <set>

/// Stands in where pictures don't matter.
class IdleRenderer final : public IDashboardRenderer
{
public:
    bool load(const QString & /*path*/, int /*width*/, int /*height*/) override { return true; }
    bool renderFrame(Frame & /*buffer*/, int /*width*/, int /*height*/,
                     bool /*upsideDown*/) override
    {
        return true;
    }
    const QStringList &errors() override { return none; }
    void publishTelemetry(const VehicleTelemetry & /*vehicle*/, const DisplayLimits & /*limits*/,
                          const ExtendedTelemetry & /*extended*/,
                          const QString & /*motionProfileName*/, const TuneInfo & /*tune*/,
                          float /*steeringSmoothing*/, bool /*useMph*/, bool /*showMarkers*/,
                          bool /*paused*/) override
    {
    }
    std::set<QString> publishedFields() override { return {}; }

private:
    QStringList none;
};
