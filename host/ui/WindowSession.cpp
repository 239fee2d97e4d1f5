#include "WindowSession.h"

#include "GalleryWindow.h"
#include "ViewWindow.h"
#include "WindowRequest.h"
#include "profiles/FindProfile.h"
#include "profiles/VehicleReport.h"
#include "settings/HostSettings.h"
#include "system/MessageLog.h"
#include "system/Terminal.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QTimer>
#include <QtGui/QGuiApplication>

#include <chrono>
#include <utility>

using namespace std::chrono_literals;

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

WindowSession::~WindowSession()
{
    navigation.closeViews();
}

bool WindowSession::start()
{
    // The store assigns a vehicle that appears soon after an activation to the activated
    // dashboard. The start-up setting means no such thing, so vehicles are reported only
    // after that period.
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
        printError(QStringLiteral("Found no dashboards, neither built-in ones nor your own."));
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

/// Returns false if the settings name none, or if it is active already.
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
