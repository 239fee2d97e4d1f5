#include "WindowSession.h"

#include "GalleryWindow.h"
#include "MessageWindow.h"
#include "Navigation.h"
#include "ToolWindows.h"
#include "ViewWindow.h"
#include "profiles/FindProfile.h"
#include "profiles/VehicleReport.h"
#include "session/Session.h"
#include "settings/HostSettings.h"
#include "settings/SettledOptions.h"
#include "settings/Translations.h"
#include "system/MessageLog.h"
#include "system/Terminal.h"
#include "system/Termination.h"

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
    WindowSession(const WindowRequest &request, SessionOptions options, const GaugeLibrary &library,
                  HostSettings &settings, const MessageLog &log);
    ~WindowSession() override { navigation.closeViews(); }

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

    const WindowRequest &request;
    const SessionOptions options;
    HostSettings &settings;
    Navigation navigation;
    Session session;
    ToolWindows tools;
    MessageWindow message;
    std::unique_ptr<GalleryWindow> gallery;
};

WindowSession::WindowSession(const WindowRequest &request, SessionOptions options,
                             const GaugeLibrary &library, HostSettings &settings,
                             const MessageLog &log)
    : request(request)
    , options(std::move(options))
    , settings(settings)
    , session(this->options, library, &navigation)
    , tools(settings, *session.store, navigation)
    , message(navigation)
{
    settings.sessionStarted();
    connect(&tools, &ToolWindows::restartRequested, this,
            [] { QCoreApplication::exit(RestartCode); });
    connect(&tools, &ToolWindows::failed, &message, &MessageWindow::tell);
    connect(&navigation, &Navigation::failed, &message, &MessageWindow::tell);
    connect(&log, &MessageLog::documentSaid, &navigation, &Navigation::tellViews,
            Qt::QueuedConnection);
}

bool WindowSession::start()
{
    // An activation tells the store that a vehicle which comes soon belongs to that dashboard. The
    // settings mean no such thing, so vehicles wait until that time is over.
    constexpr auto JoiningTime = 9s; // 8 s, and what a coarse timer may be early.
    bool dashboardThere = true;
    if (options.dashboard.isEmpty() && activateStartupDashboard()) {
        QTimer::singleShot(JoiningTime, this, [this] {
            session.chooseDashboard();
            reportVehicle(*session.store, session.vehicles.recentVehicleName());
        });
    } else {
        dashboardThere = session.chooseDashboard();
    }
    if (!dashboardThere && !request.view.isEmpty() && request.path.isEmpty()) {
        printError(QStringLiteral("There are no dashboards beside the program, nor of your own."));
        return false;
    }
    show();
    return true;
}

void WindowSession::resume(const QVariantMap &views)
{
    session.chooseDashboard();
    show();
    for (auto view = views.begin(); view != views.end(); ++view)
        navigation.showView(view.key(), view.value());
}

QVariantMap WindowSession::openViews() const
{
    QVariantMap views;
    const QStringList names = navigation.openViews();
    for (const QString &name : names)
        views.insert(name, navigation.window(name)->argument());
    return views;
}

/// False if there is none in the settings, or if it is active already.
bool WindowSession::activateStartupDashboard()
{
    QStringList names;
    const std::vector<DashboardProfileHeader> headers = session.store->profileHeaders();
    for (const DashboardProfileHeader &header : headers)
        names += header.name;
    const QString wanted = settings.startupDashboardAmong(names);
    const DashboardProfileHeader::Id id = findProfile(*session.store, wanted);
    return !wanted.isEmpty() && id != session.store->activeProfileId() &&
           session.store->performAction(id, DashboardProfileAction::Activate, {}).ok;
}

void WindowSession::show()
{
    if (request.view.isEmpty()) {
        gallery =
            std::make_unique<GalleryWindow>(navigation, *session.engine, *session.store,
                                            session.vehicles, session.monitor, telemetryTitle());
        connect(&settings, &HostSettings::languageChanged, gallery.get(),
                [this] { gallery->setTelemetrySource(telemetryTitle()); });
        gallery->openGallery();
    } else {
        const QString path = request.path;
        const QVariant argument =
            path.isEmpty() ? QVariant() : QVariant(QDir::current().absoluteFilePath(path));
        navigation.showView(request.view, argument);
        HostWindow *window = navigation.window(request.view);
        if (window != nullptr && request.size) {
            QRect place(QPoint(), *request.size);
            place.moveCenter(window->geometry().center());
            window->setGeometry(place);
        }
    }
    const QStringList problems = session.startTelemetry();
    for (const QString &problem : problems)
        printError(problem);
    if (gallery != nullptr && !session.isFed())
        gallery->setTelemetryAbsent();
    if (!problems.isEmpty())
        message.tell(problems.join(QLatin1Char('\n')));
}

QString WindowSession::telemetryTitle() const
{
    if (options.telemetry.isFile())
        return QFileInfo(options.telemetry.source).fileName();
    return settings.titleOf(options.telemetry.source);
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

int runWindows(const WindowRequest &request, const SessionOptions &options,
               const GaugeLibrary &library, const MessageLog &log)
{
    const Termination termination;
    Translations translations;
    HostSettings settings(telemetryChoices());
    translations.use(settings.language());
    QObject::connect(&settings, &HostSettings::languageChanged, &settings,
                     [&] { translations.use(settings.language()); });

    SettledOptions settled(options, settings);
    auto windows = std::make_unique<WindowSession>(request, settled.take(), library, settings, log);
    if (!windows->start())
        return 1;
    int code = QGuiApplication::exec();
    while (code == RestartCode && !Termination::requested()) {
        const QVariantMap views = windows->openViews();
        windows.reset();
        windows = std::make_unique<WindowSession>(request, settled.take(), library, settings, log);
        windows->resume(views);
        code = QGuiApplication::exec();
    }
    return code;
}
