#pragma once

#include "MessageWindow.h"
#include "Navigation.h"
#include "ToolWindows.h"
#include "session/Session.h"

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QVariantMap>

#include <memory>

class GalleryWindow;
class GaugeLibrary;
class HostSettings;
class MessageLog;
struct WindowRequest;

/// A session with its windows: the gallery or one view, settings, help and messages. GUI thread.
class WindowSession final : public QObject
{
    Q_OBJECT

public:
    /// The event loop's exit code when the user wants a new session with changed settings.
    static constexpr int RestartCode = 64;

    /// All but `options` are borrowed.
    WindowSession(const WindowRequest &request, SessionOptions options, const GaugeLibrary &library,
                  HostSettings &settings, const MessageLog &log);
    /// Closes the windows.
    ~WindowSession() override;

    /// Activates the start-up dashboard and shows the requested window. Prints a message and
    /// returns false if there is no dashboard to show.
    bool start();

    /// Shows the requested window, and `views` as `openViews` of the session before returned them.
    void resume(const QVariantMap &views);

    /// The arguments of the views on screen, by view name.
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
