#include "views/DashboardEditorVM.h"

#include "plugin/IDashboardEngine.h"
#include "plugin/IDashboardRenderer.h"
#include "plugin/INavigationService.h"
#include "support/SettingsGroup.h"
#include "views/MessageImageProvider.h"
#include "views/PreviewImageProvider.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QFileSystemWatcher>
#include <QtCore/QTimer>
#include <QtCore/QVariant>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>

#include <algorithm>

namespace {

constexpr int TickMs = 40;

// Time from a change of the file to its reload, in which the writer finishes. A burst of saves
// reloads no more often.
constexpr int SettleMs = 100;

std::unique_ptr<SettingsGroup> openEditorSettings()
{
    return openSettingsGroup(QStringLiteral("DashboardEditor"));
}

QString recentFileKey()
{
    return QStringLiteral("RecentQmlFile");
}

/// The folder of a file, or its nearest ancestor that exists.
QString nearestFolder(const QString &path)
{
    QFileInfo folder(QFileInfo(path).absolutePath());
    while (!folder.isDir() && !folder.isRoot())
        folder.setFile(folder.path());
    return folder.filePath();
}

std::uint8_t pedal(int percent)
{
    return static_cast<std::uint8_t>(std::clamp(percent, 0, 100));
}

} // namespace

DashboardEditorVM::DashboardEditorVM(IDashboardEngine *engine, INavigationService *navigation,
                                     QObject *parent)
    : ViewModel(parent)
    , engine(engine)
    , navigation(navigation)
    , renderer(this->engine->createRenderer())
    , lentRenderer(std::make_shared<LentRenderer>())
{
    lentRenderer->renderer = renderer.get();

    timer = new QTimer(this);
    timer->setInterval(TickMs);
    connect(timer, &QTimer::timeout, this, &DashboardEditorVM::updateDash);

    fileTimer = new QTimer(this);
    fileTimer->setSingleShot(true);
    fileTimer->setInterval(SettleMs);
    connect(fileTimer, &QTimer::timeout, this, &DashboardEditorVM::followFile);

    const QString recent = openEditorSettings()->value(recentFileKey(), QString()).toString();
    if (QFile::exists(recent))
        path = recent;

    watcher = new QFileSystemWatcher(this);
    connect(watcher, &QFileSystemWatcher::fileChanged, this, [this] {
        reloadPending = true;
        followFileSoon();
    });
    connect(watcher, &QFileSystemWatcher::directoryChanged, this,
            &DashboardEditorVM::followFileSoon);
    watchFile();
}

DashboardEditorVM::~DashboardEditorVM()
{
    timer->stop();
    const LockGuard guard(lentRenderer->lock);
    lentRenderer->renderer = nullptr;
}

void DashboardEditorVM::initContext(QQmlContext *context)
{
    if (context == nullptr || context->engine() == nullptr)
        return;
    const QString name = QStringLiteral("dashEditor");
    load();
    updateDash();
    if (renderer == nullptr) {
        context->engine()->addImageProvider(
            name,
            std::make_unique<MessageImageProvider>(tr("Dashboard requires hardware acceleration"))
                .release());
        dashboardFields = tr("Not available without hardware acceleration");
        return;
    }
    context->engine()->addImageProvider(
        name, std::make_unique<PreviewImageProvider>(lentRenderer).release());
    timer->start();

    QStringList names;
    for (const QString &field : renderer->publishedFields())
        names += field;
    dashboardFields = names.join(QLatin1Char('\n'));
}

void DashboardEditorVM::setArgument(void * /*context*/, int /*request*/, const QVariant &argument)
{
    const QString file = argument.toString();
    if (!file.isEmpty())
        setPath(file);
}

void DashboardEditorVM::setPath(const QString &newPath)
{
    const QString native = QDir::toNativeSeparators(newPath);
    if (native == path)
        return;
    path = native;
    openEditorSettings()->setValue(recentFileKey(), path);
    reloadPending = false;
    watchFile();
    load();
    updateDash();
    Q_EMIT pathChanged();
}

void DashboardEditorVM::ok()
{
    if (window == nullptr)
        return;
    window->close();
    if (window != nullptr)
        window->deleteLater();
}

void DashboardEditorVM::openCode()
{
    const QStringList files = watcher->files();
    if (files.isEmpty() || navigation == nullptr)
        return;
    const QString &file = files.first();
    const QVariantMap argument{{QStringLiteral("path"), file},
                               {QStringLiteral("dir"), QFileInfo(file).absolutePath()}};
    navigation->showView(nullptr, QStringLiteral("StartVisualStudioCode"), argument);
}

void DashboardEditorVM::setShowMarkets(bool enabled)
{
    showMarkers = enabled;
}

void DashboardEditorVM::setSystemPanel(bool enabled)
{
    telemetry.systemPanel = enabled;
}

void DashboardEditorVM::setRotation(int percent)
{
    telemetry.vehicle.steeringPercent = percent;
}

void DashboardEditorVM::setPaused(bool paused)
{
    this->paused = paused;
}

void DashboardEditorVM::setUseMph(bool useMph)
{
    this->useMph = useMph;
}

void DashboardEditorVM::setYellowFlag(bool on)
{
    telemetry.yellowFlag = on;
}

void DashboardEditorVM::setBlueFlag(bool on)
{
    telemetry.blueFlag = on;
}

void DashboardEditorVM::setBlackFlag(bool on)
{
    telemetry.blackFlag = on;
}

void DashboardEditorVM::setBlackAndWhiteFlag(bool on)
{
    telemetry.blackAndWhiteFlag = on;
}

void DashboardEditorVM::setDrsAvailable(bool available)
{
    telemetry.drsAvailable = available;
}

void DashboardEditorVM::setGasPedal(int percent)
{
    telemetry.vehicle.gasPedalPercent = pedal(percent);
}

void DashboardEditorVM::setBrakePedal(int percent)
{
    telemetry.vehicle.brakePedalPercent = pedal(percent);
}

void DashboardEditorVM::setClutchPedal(int percent)
{
    telemetry.vehicle.clutchPedalPercent = pedal(percent);
}

void DashboardEditorVM::setRpm(int rpm, int maxRpm)
{
    telemetry.vehicle.maxRpm = static_cast<std::uint32_t>(maxRpm);
    telemetry.vehicle.rpm = static_cast<std::uint32_t>(std::max(std::min(rpm, maxRpm), 0));
}

void DashboardEditorVM::updateDash()
{
    telemetry.step();
    if (renderer != nullptr) {
        renderer->publishTelemetry(telemetry.vehicle, telemetry.limits, telemetry.extended,
                                   telemetry.motionProfileName(), telemetry.tune, 1.0F, useMph,
                                   showMarkers, paused);
    }
    Q_EMIT previewChanged();
}

/// The telemetry stands still while the window is hidden.
void DashboardEditorVM::followVisibility(bool visible)
{
    if (visible && renderer != nullptr)
        timer->start();
    else
        timer->stop();
}

void DashboardEditorVM::followFileSoon()
{
    // A running timer isn't restarted: a file that is saved all the time would never be reloaded.
    if (!fileTimer->isActive())
        fileTimer->start();
}

/// Reloads the file if it has changed or is back.
void DashboardEditorVM::followFile()
{
    // Watched before it is loaded, so that no change in between is missed.
    watchFile();
    const bool found = !watcher->files().isEmpty();
    if (!reloadPending && !found)
        return;
    reloadPending = false;
    load();
    updateDash();
}

/// Watches the file that is at `path` now. Many programs save by replacing the file, so it may not
/// be the one that was watched before. If there is none, watches the folder in which it, or the
/// next folder on the way to it, will appear.
void DashboardEditorVM::watchFile()
{
    fileTimer->stop();
    const QStringList watched = watcher->files() + watcher->directories();
    if (!watched.isEmpty())
        watcher->removePaths(watched);
    // No file's name contains a null, and Qt would warn at every check.
    if (path.isEmpty() || path.contains(QChar(QChar::Null)))
        return;
    if (QFileInfo(path).isFile() && watcher->addPath(path))
        return;
    const QString folder = nearestFolder(path);
    watcher->addPath(folder);
    // What appeared just before the folder was watched emits no signal.
    if (QFileInfo(path).isFile() || nearestFolder(path) != folder)
        fileTimer->start();
}

void DashboardEditorVM::load()
{
    if (renderer != nullptr)
        renderer->load(path, DashboardWidth, DashboardHeight);
}
