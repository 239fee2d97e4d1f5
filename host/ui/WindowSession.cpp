#include "WindowSession.h"

#include "Session.h"
#include "options/HostSettings.h"
#include "system/MessageLog.h"
#include "options/Options.h"
#include "profiles/FindProfile.h"
#include "options/SessionOptions.h"
#include "telemetry/TelemetryFactory.h"
#include "system/Terminal.h"
#include "system/Termination.h"
#include "options/Translations.h"
#include "profiles/VehicleReport.h"
#include "GalleryWindow.h"
#include "MessageWindow.h"
#include "ToolWindows.h"
#include "ViewWindow.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QTimer>
#include <QtCore/QVariant>
#include <QtGui/QGuiApplication>

#include <chrono>
#include <memory>
#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr int RestartCode = 64; ///< Of the event loop, never of the program.

/// Windows around one engine.
class WindowSession final : public QObject
{
public:
    /// All but `options` are borrowed.
    WindowSession(Options options, const GaugeLibrary &library, HostSettings &settings,
                  const MessageLog &log);

    /// Shows what the options ask for. False if there is nothing to show.
    bool start();

    /// Shows what they ask for, and the views that were open before.
    void resume(const QVariantMap &views);

    /// The views on screen: their arguments by their names.
    QVariantMap openViews() const;

private:
    bool activateStartupDashboard();
    void show();
    QString telemetryTitle() const;

    const Options options;
    HostSettings &settings;
    Cluster cluster;
    ToolWindows tools;
    MessageWindow message;
    std::unique_ptr<GalleryWindow> gallery;
};

WindowSession::WindowSession(Options options, const GaugeLibrary &library, HostSettings &settings,
                             const MessageLog &log)
    : options(std::move(options))
    , settings(settings)
    , cluster(this->options, library, this->options.units == Options::Units::Mph)
    , tools(settings, *cluster.store, cluster.navigation)
    , message(cluster.navigation)
{
    settings.sessionStarted();
    connect(&tools, &ToolWindows::restartRequested, this,
            [] { QCoreApplication::exit(RestartCode); });
    connect(&tools, &ToolWindows::failed, &message, &MessageWindow::tell);
    connect(&cluster.navigation, &Navigation::failed, &message, &MessageWindow::tell);
    connect(&log, &MessageLog::documentSaid, &cluster.navigation, &Navigation::tellViews,
            Qt::QueuedConnection);
}

bool WindowSession::start()
{
    // An activation tells the store that a vehicle which comes soon belongs to that dashboard. The
    // settings mean no such thing, so vehicles wait until that time is over.
    constexpr auto JoiningTime = 8s;
    bool dashboardThere = true;
    if (options.dashboard.isEmpty() && activateStartupDashboard()) {
        QTimer::singleShot(JoiningTime, this, [this] {
            cluster.chooseDashboard();
            reportVehicle(*cluster.store, cluster.vehicles.recentVehicleName());
        });
    } else {
        dashboardThere = cluster.chooseDashboard();
    }
    if (!dashboardThere && options.mode == Options::Mode::View && options.viewPath.isEmpty()) {
        printError(QStringLiteral("There are no dashboards beside the program, nor of your own."));
        return false;
    }
    show();
    return true;
}

void WindowSession::resume(const QVariantMap &views)
{
    cluster.chooseDashboard();
    show();
    for (auto view = views.begin(); view != views.end(); ++view)
        cluster.navigation.showView(view.key(), view.value());
}

QVariantMap WindowSession::openViews() const
{
    QVariantMap views;
    const QStringList names = cluster.navigation.openViews();
    for (const QString &name : names)
        views.insert(name, cluster.navigation.window(name)->argument());
    return views;
}

/// False if there is none in the settings, or if it is active already.
bool WindowSession::activateStartupDashboard()
{
    QStringList names;
    const std::vector<DashboardProfileHeader> headers = cluster.store->profileHeaders();
    for (const DashboardProfileHeader &header : headers)
        names += header.name;
    const QString wanted = settings.startupDashboardAmong(names);
    const DashboardProfileHeader::Id id = findProfile(*cluster.store, wanted);
    return !wanted.isEmpty() && id != cluster.store->activeProfileId() &&
           cluster.store->performAction(id, DashboardProfileAction::Activate, {}).ok;
}

void WindowSession::show()
{
    if (options.mode == Options::Mode::Gallery) {
        gallery =
            std::make_unique<GalleryWindow>(cluster.navigation, *cluster.engine, *cluster.store,
                                            cluster.vehicles, cluster.monitor, telemetryTitle());
        connect(&settings, &HostSettings::languageChanged, gallery.get(),
                [this] { gallery->setTelemetrySource(telemetryTitle()); });
        gallery->openGallery();
    } else {
        const QString path = options.viewPath;
        const QVariant argument =
            path.isEmpty() ? QVariant() : QVariant(QDir::current().absoluteFilePath(path));
        cluster.navigation.showView(options.view, argument);
        HostWindow *window = cluster.navigation.window(options.view);
        if (window != nullptr && options.size) {
            QRect place(QPoint(), *options.size);
            place.moveCenter(window->geometry().center());
            window->setGeometry(place);
        }
    }
    const QStringList problems = cluster.startTelemetry();
    for (const QString &problem : problems)
        printError(problem);
    if (gallery != nullptr && !cluster.isFed())
        gallery->setTelemetryAbsent();
    if (!problems.isEmpty())
        message.tell(problems.join(QLatin1Char('\n')));
}

QString WindowSession::telemetryTitle() const
{
    if (isTelemetryFile(options.telemetry))
        return QFileInfo(options.telemetry).fileName();
    return settings.titleOf(options.telemetry);
}

/// In the order in which the settings offer them.
std::vector<TelemetrySourceChoice> telemetryChoices()
{
    return {
        {QStringLiteral("demo"), QT_TRANSLATE_NOOP("TelemetrySources", "Demo lap")},
        {QStringLiteral("auto"), QT_TRANSLATE_NOOP("TelemetrySources", "Any game that sends")},
        {QStringLiteral("outgauge"), QT_TRANSLATE_NOOP("TelemetrySources", "OutGauge")},
        {QStringLiteral("data-out"), QT_TRANSLATE_NOOP("TelemetrySources", "Data Out")},
        {QStringLiteral("ego"), QT_TRANSLATE_NOOP("TelemetrySources", "EGO extradata")},
    };
}

} // namespace

int runWindows(const Options &options, const GaugeLibrary &library, const MessageLog &log)
{
    const Termination termination;
    Translations translations;
    HostSettings settings(telemetryChoices());
    translations.use(settings.language());
    QObject::connect(&settings, &HostSettings::languageChanged, &settings,
                     [&] { translations.use(settings.language()); });

    SessionOptions sessionOptions(options, settings);
    auto session = std::make_unique<WindowSession>(sessionOptions.take(), library, settings, log);
    if (!session->start())
        return 1;
    int code = QGuiApplication::exec();
    while (code == RestartCode && !Termination::requested()) {
        const QVariantMap views = session->openViews();
        session.reset();
        session = std::make_unique<WindowSession>(sessionOptions.take(), library, settings, log);
        session->resume(views);
        code = QGuiApplication::exec();
    }
    return code;
}
