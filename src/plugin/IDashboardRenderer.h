#pragma once

#include "Frame.h"

#include <QtCore/QString>

#include <set>

struct VehicleTelemetry;
struct DisplayLimits;
struct ExtendedTelemetry;
struct TuneInfo;
class QStringList;

/// One dashboard document with the system panel over it, fed with telemetry and rendered on demand.
/// Every operation belongs to the thread that made the renderer, but for `publishedFields`.
class IDashboardRenderer
{
public:
    virtual ~IDashboardRenderer() = default;

    /// Loads the QML document at the local file `path` with a first framebuffer of `width` by
    /// `height` pixels. A failure is told in `errors()`.
    virtual bool load(const QString &path, int width, int height) = 0;

    /// Renders one frame of `width` by `height` pixels. True means that `buffer` holds a picture,
    /// which is the text of the errors after a failed load; false leaves it without meaning.
    virtual bool renderFrame(Frame &buffer, int width, int height, bool upsideDown) = 0;

    /// Errors and warnings since the last load began.
    virtual const QStringList &errors() = 0;

    /// Writes all `dash_*` properties. `steeringSmoothing` is the share of a new steering value
    /// that enters at once: 1 takes it whole.
    virtual void publishTelemetry(const VehicleTelemetry &vehicle, const DisplayLimits &limits,
                                  const ExtendedTelemetry &extended,
                                  const QString &motionProfileName, const TuneInfo &tune,
                                  float steeringSmoothing, bool useMph, bool showMarkers,
                                  bool paused) = 0;

    /// The names of all properties published so far. Any thread.
    virtual std::set<QString> publishedFields() = 0;
};
