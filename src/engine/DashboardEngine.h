#pragma once

#include "plugin/Frame.h"
#include "plugin/IDashboardEngine.h"
#include "plugin/TelemetryRecords.h"
#include "support/Lock.h"

#include <QtCore/QObject>

#include <atomic>
#include <functional>
#include <memory>
#include <unordered_map>
#include <vector>

class QFileSystemWatcher;
class QTimer;

/// Source of the engine's time and renderers. Tests bring their own.
struct EngineSources
{
    std::function<quint64()> clock; ///< Milliseconds; never goes back.
    std::function<std::unique_ptr<IDashboardRenderer>()> makeRenderer;

    /// The system's steady clock, and `DashboardRenderer`.
    static EngineSources standard();
};

/// The latest report of everything that is published.
struct TelemetrySnapshot
{
    VehicleTelemetry vehicle{};
    DisplayLimits limits{};
    ExtendedTelemetry extended{};
    bool paused = false;
    bool dirty = false; ///< Something came since the last tick.
    QString motionProfileName;
    TuneInfo tune;
};

/// Implements `IDashboardEngine`. Stores telemetry, never queues it; the timer that consumes it
/// runs only while there is something to show. Only the thread that built the engine touches QML
/// and OpenGL; other threads copy data under short locks and set flags.
class DashboardEngine : public QObject, public IDashboardEngine
{
    Q_OBJECT

public:
    DashboardEngine(bool useMph, bool hardwareAcceleration,
                    EngineSources sources = EngineSources::standard());
    ~DashboardEngine() override;

    void updateTelemetry(const VehicleTelemetry &vehicle, const DisplayLimits &limits,
                         const ExtendedTelemetry &extended, bool paused) override;
    void setDashboardFile(const QString &path) override;
    void shutdown() override;
    std::unique_ptr<IDashboardRenderer> createRenderer() override;
    void addConsumer(IDashboardConsumer *consumer) override;
    void removeConsumer(IDashboardConsumer *consumer) override;
    bool hasConsumers() override;
    std::unique_ptr<QImage> createWaitingImage(int scale) override;
    void setMotionProfileName(const QString &name) override;
    void setTuneInfo(const QString &group, const QString &name, const TuneValue &value) override;

Q_SIGNALS:
    /// Starts the timer, from any thread.
    void startTimerAsync();

private Q_SLOTS:
    void render();
    void startTimer();

private:
    struct ConsumerSlot
    {
        Frame pixels;              ///< The frame being built; the consumer may swap it.
        bool messageShown = false; ///< The message picture was delivered.
        bool outOfMemory = false;  ///< Memory for the last frame ran out, which was logged.
        bool removed = false;      ///< During the running pass, whose end erases the entry.
    };
    using Consumers = std::unordered_map<IDashboardConsumer *, ConsumerSlot>;
    using ConsumerEntry = Consumers::value_type;

    bool loadIfPending();
    bool publishIfDirty();
    void stopTimer();
    void watchDashboardFile();
    void renderPass();
    void endPass();
    void serve(ConsumerEntry &entry, quint64 now);
    bool buildFrame(ConsumerSlot &slot, int width, int height, bool upsideDown);
    bool buildDashboard(ConsumerSlot &slot, int width, int height, bool upsideDown);
    bool buildMessage(ConsumerSlot &slot, int width, int height, bool upsideDown);
    static void reportOutOfMemory(ConsumerSlot &slot, int width, int height);

    const EngineSources sources;
    std::unique_ptr<QTimer> timer;
    QFileSystemWatcher *fileWatcher = nullptr;
    QMetaObject::Connection startTimerConnection;
    std::unique_ptr<IDashboardRenderer> renderer;
    std::atomic<bool> shuttingDown{false};
    std::atomic<bool> consumersPresent{false};
    std::atomic<bool> filePresent{false};
    std::atomic<bool> timerRunning{false};
    std::atomic<bool> watchQueued{false};
    const bool hardwareAcceleration;
    std::atomic<int> idleTicks{0};
    Lock consumersLock;
    Consumers consumers;
    std::vector<ConsumerEntry *> pass; ///< Entries of the running pass; empty between passes.
    Lock fileLock;
    QString dashboardFile;
    bool reloadPending = false;
    const bool useMph;
    TelemetrySnapshot snapshot;
    Lock snapshotLock;
};
