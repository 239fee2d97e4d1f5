#include "engine/DashboardEngine.h"

#include "plugin/IDashboardConsumer.h"
#include "plugin/IDashboardRenderer.h"
#include "render/DashboardRenderer.h"
#include "support/Logging.h"
#include "support/MonotonicClock.h"
#include "support/TextImage.h"

#include <QtCore/QDebug>
#include <QtCore/QDir>
#include <QtCore/QFileSystemWatcher>
#include <QtCore/QScopeGuard>
#include <QtCore/QThread>
#include <QtCore/QTimer>

#include <algorithm>
#include <iterator>
#include <limits>
#include <new>
#include <optional>
#include <stdexcept>
#include <utility>

namespace {

constexpr int TickMs = 40;           ///< 25 pictures a second at most.
constexpr int MaximumIdleTicks = 50; ///< The engine sleeps after about two seconds of silence.
constexpr float SteeringSmoothing = 0.2F;
constexpr quint64 ExpiryMs = 1000;

} // namespace

EngineSources EngineSources::standard()
{
    return {monotonicMilliseconds, [] { return std::make_unique<DashboardRenderer>(); }};
}

DashboardEngine::DashboardEngine(bool useMph, bool hardwareAcceleration, EngineSources sources)
    : sources(std::move(sources))
    , timer(std::make_unique<QTimer>())
    , hardwareAcceleration(hardwareAcceleration)
    , useMph(useMph)
{
    timer->setInterval(TickMs);
    connect(timer.get(), &QTimer::timeout, this, &DashboardEngine::render);

    if (hardwareAcceleration) {
        logInfo(QStringLiteral("DASH: Creating renderer..."));
        renderer = this->sources.makeRenderer();
        logInfo(QStringLiteral("DASH: Renderer created"));
    }
    startTimerConnection = connect(this, &DashboardEngine::startTimerAsync, this,
                                   &DashboardEngine::startTimer, Qt::QueuedConnection);

    fileWatcher = new QFileSystemWatcher(this);
    connect(fileWatcher, &QFileSystemWatcher::fileChanged, this, [this] {
        const LockGuard guard(fileLock);
        reloadPending = true;
    });
}

DashboardEngine::~DashboardEngine()
{
    shuttingDown = true;
    disconnect(startTimerConnection);
    stopTimer();
    timer.reset();
    renderer.reset();
}

void DashboardEngine::updateTelemetry(const VehicleTelemetry &vehicle, const DisplayLimits &limits,
                                      const ExtendedTelemetry &extended, bool paused)
{
    if (shuttingDown || !filePresent || !consumersPresent)
        return;
    {
        const LockGuard guard(snapshotLock);
        snapshot.vehicle = vehicle;
        snapshot.limits = limits;
        snapshot.extended = extended;
        snapshot.paused = paused;
        snapshot.dirty = true;
    }
    if (!paused && !timerRunning)
        Q_EMIT startTimerAsync();
}

void DashboardEngine::setDashboardFile(const QString &path)
{
    if (shuttingDown)
        return;
    const bool onEnginesThread = QThread::currentThread() == thread();
    {
        const LockGuard guard(fileLock);
        dashboardFile = path;
        reloadPending = true;
        filePresent = !path.isEmpty();
        if (onEnginesThread)
            watchDashboardFile();
    }
    idleTicks = 0;
    if (!onEnginesThread && !watchQueued.exchange(true)) {
        QMetaObject::invokeMethod(
            this, [this] { watchDashboardFile(); }, Qt::QueuedConnection);
    }
}

void DashboardEngine::shutdown()
{
    shuttingDown = true;
    if (timer != nullptr)
        stopTimer();
}

std::unique_ptr<IDashboardRenderer> DashboardEngine::createRenderer()
{
    return hardwareAcceleration ? sources.makeRenderer() : nullptr;
}

void DashboardEngine::addConsumer(IDashboardConsumer *consumer)
{
    if (consumer == nullptr)
        return;
    const LockGuard guard(consumersLock);
    ConsumerSlot &slot = consumers[consumer];
    if (slot.removed) {
        // Removed during the running pass, which may still use the vector.
        slot.removed = false;
        slot.messageShown = false;
    }
    consumersPresent = true;
}

void DashboardEngine::removeConsumer(IDashboardConsumer *consumer)
{
    if (consumer == nullptr)
        return;
    const LockGuard guard(consumersLock);
    const auto entry = consumers.find(consumer);
    if (entry == consumers.end())
        return;
    // During a pass the slot may be in use; the end of the pass erases it.
    if (pass.empty())
        consumers.erase(entry);
    else
        entry->second.removed = true;
    consumersPresent = std::any_of(consumers.cbegin(), consumers.cend(),
                                   [](const auto &each) { return !each.second.removed; });
}

bool DashboardEngine::hasConsumers()
{
    return consumersPresent;
}

std::unique_ptr<QImage> DashboardEngine::createWaitingImage(int scale)
{
    constexpr int FontPixels = 25;
    if (scale < 1 || scale > std::numeric_limits<int>::max() / DashboardWidth)
        return std::make_unique<QImage>(); // The size would overflow.
    return std::make_unique<QImage>(
        makeTextImage(QSize(DashboardWidth, DashboardHeight) * scale, tr("Waiting for game data"),
                      {FontPixels * scale, Qt::AlignHCenter | Qt::AlignVCenter, false}));
}

void DashboardEngine::setMotionProfileName(const QString &name)
{
    const LockGuard guard(snapshotLock);
    snapshot.motionProfileName = name;
    snapshot.dirty = true;
}

void DashboardEngine::setTuneInfo(const QString &group, const QString &name, const TuneValue &value)
{
    const LockGuard guard(snapshotLock);
    TuneInfo &tune = snapshot.tune;
    tune.group = group;
    tune.name = name;
    tune.valueName = value.valueName;
    tune.valueMin = value.valueMin;
    tune.valueMax = value.valueMax;
    tune.valueCurrent = value.valueCurrent;
    tune.valueIsInteger = value.valueIsInteger;
    tune.reservedFlagA = value.reservedFlagA;
    tune.reservedFlagB = value.reservedFlagB;
    ++tune.changeCounter;
    snapshot.dirty = true;
}

void DashboardEngine::startTimer()
{
    if (shuttingDown)
        return;
    if (!timer->isActive())
        timer->start();
    timerRunning = true;
}

void DashboardEngine::stopTimer()
{
    timer->stop();
    timerRunning = false;
}

/// Watches the current dashboard file and nothing else. Takes the newest path, so queued calls may
/// arrive in any order. Engine's thread.
void DashboardEngine::watchDashboardFile()
{
    watchQueued = false;
    const LockGuard guard(fileLock);
    const QStringList watched = fileWatcher->files() + fileWatcher->directories();
    if (!watched.isEmpty())
        fileWatcher->removePaths(watched);
    if (!dashboardFile.isEmpty())
        fileWatcher->addPath(dashboardFile);
}

void DashboardEngine::render()
{
    if (!pass.empty()) // A consumer runs a nested event loop, for a dialog say.
        return;
    if (!loadIfPending())
        return;
    if (publishIfDirty()) {
        idleTicks = 0;
    } else if (idleTicks < MaximumIdleTicks) {
        ++idleTicks;
        return;
    }
    if (!consumersPresent || idleTicks == MaximumIdleTicks) {
        stopTimer();
        return;
    }
    renderPass();
}

/// Loads a document that was set or has changed. False, with the timer stopped, if there is none or
/// the load failed.
bool DashboardEngine::loadIfPending()
{
    QString path;
    bool pending = false;
    {
        const LockGuard guard(fileLock);
        path = dashboardFile;
        pending = reloadPending;
        reloadPending = false;
    }
    if (path.isEmpty()) {
        stopTimer();
        return false;
    }
    if (!pending || renderer == nullptr || renderer->load(path, DashboardWidth, DashboardHeight))
        return true;

    stopTimer();
    qCritical().noquote() << "Dashboard: Failed to load:" << QDir::toNativeSeparators(path);
    const QStringList errors = renderer->errors();
    for (const QString &error : errors)
        qCritical().noquote() << error;
    return false;
}

/// Publishes what came since the last tick; false if nothing did.
bool DashboardEngine::publishIfDirty()
{
    std::optional<TelemetrySnapshot> published;
    {
        const LockGuard guard(snapshotLock);
        if (!snapshot.dirty)
            return false;
        snapshot.dirty = false;
        if (renderer == nullptr)
            return true;
        published.emplace(snapshot);
    }
    // Outside the lock: slow bindings must not block the thread that delivers telemetry.
    renderer->publishTelemetry(published->vehicle, published->limits, published->extended,
                               published->motionProfileName, published->tune, SteeringSmoothing,
                               useMph, false, published->paused);
    return true;
}

/// Consumers may add and remove consumers while they are called: entries stay in place until the
/// pass ends, and new ones wait for the next pass.
void DashboardEngine::renderPass()
{
    const quint64 now = sources.clock();
    const LockGuard guard(consumersLock);
    const auto end = qScopeGuard([this] { endPass(); }); // Also if a consumer throws.
    for (ConsumerEntry &entry : consumers)
        pass.push_back(&entry);
    for (ConsumerEntry *entry : pass)
        serve(*entry, now);
}

void DashboardEngine::endPass()
{
    pass.clear();
    for (auto entry = consumers.begin(); entry != consumers.end();)
        entry = entry->second.removed ? consumers.erase(entry) : std::next(entry);
}

void DashboardEngine::serve(ConsumerEntry &entry, quint64 now)
{
    IDashboardConsumer *const consumer = entry.first;
    ConsumerSlot &slot = entry.second;
    // A removed consumer may be dead already, so it gets no further call.
    const auto ask = [&](auto question) {
        return slot.removed ? decltype((consumer->*question)()){} : (consumer->*question)();
    };
    const bool upsideDown = ask(&IDashboardConsumer::isUpsideDown);
    const int width = std::max(ask(&IDashboardConsumer::frameWidth), 1);
    const int height = std::max(ask(&IDashboardConsumer::frameHeight), 1);
    const quint64 seen = ask(&IDashboardConsumer::lastActivity);
    if (seen != 0 && now > seen && now - seen > ExpiryMs)
        removeConsumer(consumer);
    if (!slot.removed && buildFrame(slot, width, height, upsideDown) && !slot.removed)
        consumer->deliverFrame(slot.pixels, width);
}

/// False if there is nothing to deliver: the consumer already has its message, or memory ran out,
/// which costs only this consumer its frame.
bool DashboardEngine::buildFrame(ConsumerSlot &slot, int width, int height, bool upsideDown)
{
    try {
        const bool built = renderer != nullptr ? buildDashboard(slot, width, height, upsideDown)
                                               : buildMessage(slot, width, height, upsideDown);
        slot.outOfMemory = false;
        return built;
    } catch (const std::bad_alloc &) {
        reportOutOfMemory(slot, width, height);
    } catch (const std::length_error &) {
        reportOutOfMemory(slot, width, height);
    }
    return false;
}

/// Logs once until the consumer gets a frame again.
void DashboardEngine::reportOutOfMemory(ConsumerSlot &slot, int width, int height)
{
    slot.pixels = Frame();
    if (slot.outOfMemory)
        return;
    slot.outOfMemory = true;
    qCritical().noquote() << QStringLiteral("Dashboard: No memory for a frame of %1 x %2 pixels")
                                 .arg(width)
                                 .arg(height);
}

bool DashboardEngine::buildDashboard(ConsumerSlot &slot, int width, int height, bool upsideDown)
{
    // A side of 1 means no size: whatever is smaller was clamped to it.
    if (width == 1 || height == 1 ||
        !renderer->renderFrame(slot.pixels, width, height, upsideDown)) {
        slot.pixels.clear();
        slot.pixels.resize(frameBytes(width, height));
    }
    return true;
}

/// Paints the message of an engine without renderers. Painting text is slow, so a consumer that
/// left the vector as it was isn't served again.
bool DashboardEngine::buildMessage(ConsumerSlot &slot, int width, int height, bool upsideDown)
{
    const std::size_t bytes = frameBytes(width, height);
    if (slot.messageShown && slot.pixels.size() == bytes)
        return false;

    const QImage image = makeMessageImage(
        QSize(width, height), tr("Dashboard requires hardware acceleration"), upsideDown);
    slot.pixels.resize(bytes);
    if (image.isNull())
        std::fill(slot.pixels.begin(), slot.pixels.end(), 0);
    else
        std::copy_n(image.constBits(), bytes, slot.pixels.begin());
    slot.messageShown = true;
    return true;
}
