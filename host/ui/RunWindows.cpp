#include "RunWindows.h"

#include "WindowRequest.h"
#include "WindowSession.h"
#include "settings/HostSettings.h"
#include "settings/SettledOptions.h"
#include "settings/Translations.h"
#include "system/Termination.h"
#include "telemetry/TelemetrySourceChoices.h"

#include <QtCore/QVariantMap>
#include <QtGui/QGuiApplication>

#include <memory>

int runWindows(const WindowRequest &request, const SessionOptions &options,
               const GaugeLibrary &library, const MessageLog &log)
{
    const Termination termination;
    Translations translations;
    HostSettings settings(telemetrySourceChoices());
    translations.use(settings.language());
    QObject::connect(&settings, &HostSettings::languageChanged, &settings,
                     [&] { translations.use(settings.language()); });

    SettledOptions settled(options, settings);
    auto windows = std::make_unique<WindowSession>(request, settled.take(), library, settings, log);
    if (!windows->start())
        return 1;
    int code = QGuiApplication::exec();
    while (code == WindowSession::RestartCode && !Termination::requested()) {
        const QVariantMap views = windows->openViews();
        windows.reset();
        windows = std::make_unique<WindowSession>(request, settled.take(), library, settings, log);
        windows->resume(views);
        code = QGuiApplication::exec();
    }
    return code;
}
