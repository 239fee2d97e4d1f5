#pragma once

#include "plugin/IDashboardRenderer.h"
#include "render/TelemetryPublisher.h"
#include "render/offscreen/QmlOffscreenRenderer.h"

/// Renders a dashboard document with the system panel over it, and publishes the `dash_*`
/// vocabulary to both. Renderers are independent: each has its own OpenGL context, QML engine and
/// state. All calls but `publishedFields` belong to the thread that constructed it.
class DashboardRenderer final : public IDashboardRenderer
{
public:
    /// Needs a QGuiApplication. Slow: creates an OpenGL context and a QML engine.
    DashboardRenderer();

    bool load(const QString &newPath, int width, int height) override;
    bool renderFrame(Frame &buffer, int width, int height, bool upsideDown) override;
    const QStringList &errors() override;
    void publishTelemetry(const VehicleTelemetry &vehicle, const DisplayLimits &limits,
                          const ExtendedTelemetry &extended, const QString &motionProfileName,
                          const TuneInfo &tune, float steeringSmoothing, bool useMph,
                          bool showMarkers, bool paused) override;
    std::set<QString> publishedFields() override;

private:
    bool paintErrors(Frame &buffer, int width, int height) const;

    OVX::QmlOffscreenRenderer offscreen;
    TelemetryPublisher publisher;
    bool hasPublished = false;
    QString path; ///< Of the document.
};
