#pragma once

#include "views/EditorTelemetry.h"
#include "views/ViewModel.h"

#include <memory>

class IDashboardEngine;
class IDashboardRenderer;
class INavigationService;
class QFileSystemWatcher;
class QTimer;
struct LentRenderer;

/// The editor of a dashboard: a preview of a file that follows the file on disk, in a renderer of
/// its own and with made-up telemetry. The document pulls: a timer publishes and signals, and the
/// document's request renders. Everything runs on the GUI thread.
class DashboardEditorVM : public ViewModel
{
    Q_OBJECT
    /// The dashboard's file in native separators; empty for none. Kept over the program's end.
    Q_PROPERTY(QString path READ currentPath WRITE setPath NOTIFY pathChanged)
    /// The names that a dashboard can use, one on a line. Stands from `initContext` on.
    Q_PROPERTY(QString dashboardFields READ fieldNames CONSTANT)

public:
    /// Both are borrowed and must outlive the view model. `navigation` may be null; then no code
    /// editor is opened. Starts with the file that was used last, if it is still there.
    DashboardEditorVM(IDashboardEngine *engine, INavigationService *navigation,
                      QObject *parent = nullptr);
    ~DashboardEditorVM() override;

    void initContext(QQmlContext *context) override;
    /// `argument` as a text is the path, unless it is empty.
    void setArgument(void *context, int request, const QVariant &argument) override;

    QString currentPath() const { return path; }
    QString fieldNames() const { return dashboardFields; }
    void setPath(const QString &newPath);

    /// Closes the window.
    Q_INVOKABLE void ok();
    /// Asks the host to open the file in the author's code editor.
    Q_INVOKABLE void openCode();

    // What these set reaches the preview with the next step of the telemetry.
    Q_INVOKABLE void setShowMarkets(bool enabled);
    Q_INVOKABLE void setSystemPanel(bool enabled);
    Q_INVOKABLE void setRotation(int percent); ///< Any value, 0 is straight ahead.
    Q_INVOKABLE void setPaused(bool paused);
    Q_INVOKABLE void setUseMph(bool useMph);
    Q_INVOKABLE void setYellowFlag(bool on);
    Q_INVOKABLE void setBlueFlag(bool on);
    Q_INVOKABLE void setBlackFlag(bool on);
    Q_INVOKABLE void setBlackAndWhiteFlag(bool on);
    Q_INVOKABLE void setDrsAvailable(bool available);
    Q_INVOKABLE void setGasPedal(int percent);    ///< Clamped to 0 to 100.
    Q_INVOKABLE void setBrakePedal(int percent);  ///< Clamped to 0 to 100.
    Q_INVOKABLE void setClutchPedal(int percent); ///< Clamped to 0 to 100.
    Q_INVOKABLE void setRpm(int rpm, int maxRpm); ///< `rpm` is clamped to 0 to `maxRpm`.

Q_SIGNALS:
    /// The preview has changed and can be asked for.
    void previewChanged();
    void pathChanged();

private Q_SLOTS:
    void updateDash();

private:
    void followVisibility(bool visible) override;
    void followFileSoon();
    void followFile();
    void watchFile();
    void load();

    IDashboardEngine *const engine;
    INavigationService *const navigation;
    QFileSystemWatcher *watcher = nullptr;
    std::unique_ptr<IDashboardRenderer> renderer;
    std::shared_ptr<LentRenderer> lentRenderer;
    EditorTelemetry telemetry;
    QTimer *timer = nullptr;
    QTimer *fileTimer = nullptr; ///< Runs from a change of the file until it is followed again.
    bool reloadPending = false;
    QString path;
    bool useMph = false;
    bool showMarkers = false;
    bool paused = false;
    QString dashboardFields;
};
