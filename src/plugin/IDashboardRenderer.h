#pragma once

#include "Frame.h"

#include <QtCore/QString>

#include <set>

struct VehicleTelemetry;
struct DisplayLimits;
struct ExtendedTelemetry;
struct TuneInfo;
class QStringList;

/// Renders one dashboard document, with the system panel on top, whenever it is asked to. All
/// operations except `publishedFields` belong to the thread that created the renderer.
class IDashboardRenderer
{
public:
    virtual ~IDashboardRenderer() = default;

    /// Loads the QML document from the local file `path`, with a framebuffer of `width` by `height`
    /// pixels to begin with. Returns whether that worked; `errors()` says why not.
    virtual bool load(const QString &path, int width, int height) = 0;

    /// Renders one frame of `width` by `height` pixels. Returns whether `buffer` holds a picture;
    /// after a failed load that is a picture of the errors.
    virtual bool renderFrame(Frame &buffer, int width, int height, bool upsideDown) = 0;

    /// Errors and warnings since the last load began.
    virtual const QStringList &errors() = 0;

    /// Publishes all `dash_*` properties. `steeringSmoothing` is the weight of the new steering
    /// value against the smoothed one, from 0 to 1: 1 doesn't smooth.
    virtual void publishTelemetry(const VehicleTelemetry &vehicle, const DisplayLimits &limits,
                                  const ExtendedTelemetry &extended,
                                  const QString &motionProfileName, const TuneInfo &tune,
                                  float steeringSmoothing, bool useMph, bool showMarkers,
                                  bool paused) = 0;

    /// The names of all properties published so far. Any thread.
    virtual std::set<QString> publishedFields() = 0;
};
