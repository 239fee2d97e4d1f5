#pragma once

#include <QtCore/QtGlobal>

#include <memory>

struct VehicleTelemetry;
struct DisplayLimits;
struct ExtendedTelemetry;
struct TuneValue;
class IDashboardConsumer;
class IDashboardRenderer;
class QImage;
class QString;

/// The centre of the library: takes telemetry from any thread, renders the current dashboard at
/// most 25 times a second on the thread that created the engine, and delivers the frames to its
/// consumers.
///
/// The host owns the engine and destroys it on the engine's thread, after everything that borrows
/// it.
class IDashboardEngine
{
public:
    virtual ~IDashboardEngine() = default;

    /// Replaces the last telemetry. Does nothing while there is no document or no consumer. Wakes a
    /// sleeping engine unless `paused`. Any thread; copies all records before it returns.
    virtual void updateTelemetry(const VehicleTelemetry &vehicle, const DisplayLimits &limits,
                                 const ExtendedTelemetry &extended, bool paused) = 0;

    /// Sets the QML document to render: a local file, or empty for none. The next tick loads it,
    /// even if it is the same as before. Any thread.
    virtual void setDashboardFile(const QString &path) = 0;

    /// Stops the engine for good. Engine's thread.
    virtual void shutdown() = 0;

    /// Creates a renderer that is independent of the engine's own, for use on the calling thread.
    /// Null without hardware acceleration.
    virtual std::unique_ptr<IDashboardRenderer> createRenderer() = 0;

    /// Registers a consumer; registering it again has no effect. Waits for the end of a pass over
    /// the consumers, unless it is called inside that pass, which the new consumer then misses. Any
    /// thread.
    virtual void addConsumer(IDashboardConsumer *consumer) = 0;

    /// Removes a consumer. Once this returns, the engine doesn't call into it any more, and no call
    /// is running except one that made this call. Any thread.
    virtual void removeConsumer(IDashboardConsumer *consumer) = 0;

    /// Whether any consumer is registered. Any thread; takes no lock.
    virtual bool hasConsumers() = 0;

    /// The picture to show until the first frame: `scale` times 480 by 272 pixels. Any thread.
    virtual std::unique_ptr<QImage> createWaitingImage(int scale) = 0;

    /// Sets the name of the motion profile that the system panel shows. Any thread.
    virtual void setMotionProfileName(const QString &name) = 0;

    /// Reports a tuning value that the user has just changed. Any thread.
    virtual void setTuneInfo(const QString &group, const QString &name, const TuneValue &value) = 0;
};
