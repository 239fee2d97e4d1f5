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

/// View model of the dashboard editor: previews a file with made-up telemetry, in a renderer of its
/// own, and reloads the file when it changes on disk. A timer publishes telemetry and emits
/// `previewChanged`; the document then requests an image, and that request renders. GUI thread.
class DashboardEditorVM : public ViewModel
{
    Q_OBJECT
    /// The dashboard's file in native separators; empty for none. Remembered for the next run.
    Q_PROPERTY(QString path READ currentPath WRITE setPath NOTIFY pathChanged)
    /// The names that a dashboard can use, one per line. Set by `initContext`.
    Q_PROPERTY(QString dashboardFields READ fieldNames CONSTANT)

public:
    /// Both are borrowed and must outlive the view model. `navigation` may be null; then `openCode`
    /// does nothing. Starts with the file that was used last, if it still exists.
    DashboardEditorVM(IDashboardEngine *engine, INavigationService *navigation,
                      QObject *parent = nullptr);
    ~DashboardEditorVM() override;

    void initContext(QQmlContext *context) override;
    /// Sets the path to `argument`, as text, unless that is empty.
    void setArgument(void *context, int request, const QVariant &argument) override;

    QString currentPath() const { return path; }
    QString fieldNames() const { return dashboardFields; }
    void setPath(const QString &newPath);

    /// Closes the window.
    Q_INVOKABLE void ok();
    /// Asks the host to open the file in the author's code editor.
    Q_INVOKABLE void openCode();

    // These take effect at the next step of the telemetry.
    Q_INVOKABLE void setShowMarkets(bool enabled);
    Q_INVOKABLE void setSystemPanel(bool enabled);
    Q_INVOKABLE void setRotation(int percent); ///< Not clamped; 0 is straight ahead.
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
    /// The preview has changed; request it again.
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
    QTimer *fileTimer = nullptr; ///< Runs from a change of the file until the reload.
    bool reloadPending = false;
    QString path;
    bool useMph = false;
    bool showMarkers = false;
    bool paused = false;
    QString dashboardFields;
};
