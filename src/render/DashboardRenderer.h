#pragma once

#include "plugin/IDashboardRenderer.h"
#include "render/TelemetryPublisher.h"
#include "render/offscreen/QmlOffscreenRenderer.h"

/// The dashboard document, the system panel over it, and the `dash_*` vocabulary published to both.
/// Independent of every other renderer: its own OpenGL context, QML engine and state.
class DashboardRenderer final : public IDashboardRenderer
{
public:
    /// Needs a QGuiApplication. May take long: it makes an OpenGL context and a QML engine.
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
