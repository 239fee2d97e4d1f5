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
/// most 25 times a second on the thread that made the engine, and hands the frames to its
/// consumers.
///
/// The host owns the engine and destroys it on the engine's thread, after everything that borrows
/// it.
class IDashboardEngine
{
public:
    virtual ~IDashboardEngine() = default;

    /// Stores the newest telemetry over the last. Dropped while there is no document or no
    /// consumer. Wakes a sleeping engine unless `paused`. Any thread; copies all records before it
    /// returns.
    virtual void updateTelemetry(const VehicleTelemetry &vehicle, const DisplayLimits &limits,
                                 const ExtendedTelemetry &extended, bool paused) = 0;

    /// Sets the QML document to render, a local file; empty for none. Loaded at the next tick,
    /// again even if it is the same. Any thread.
    virtual void setDashboardFile(const QString &path) = 0;

    /// Stops the engine's work for good. Engine's thread.
    virtual void shutdown() = 0;

    /// Makes a renderer independent of the engine's own, for use on the calling thread. Null
    /// without hardware acceleration.
    virtual std::unique_ptr<IDashboardRenderer> createRenderer() = 0;

    /// Registers a consumer; twice is once. Waits for a running pass, but not inside one, whose
    /// consumers stay the same. Any thread.
    virtual void addConsumer(IDashboardConsumer *consumer) = 0;

    /// Takes a consumer out. After the return no call into it will follow, nor is one running but
    /// that which made this call. Any thread.
    virtual void removeConsumer(IDashboardConsumer *consumer) = 0;

    /// Whether anybody is registered. Any thread, without a lock.
    virtual bool hasConsumers() = 0;

    /// The picture to show until the first frame: `scale` times 480 by 272 pixels. Any thread.
    virtual std::unique_ptr<QImage> createWaitingImage(int scale) = 0;

    /// Names the motion profile for the system panel. Any thread.
    virtual void setMotionProfileName(const QString &name) = 0;

    /// Reports a tuning value that the user has just changed. Any thread.
    virtual void setTuneInfo(const QString &group, const QString &name, const TuneValue &value) = 0;
};
