#pragma once

#include "Frame.h"
#include "TelemetryState.h"

#include <QtCore/QSize>
#include <QtCore/QStringList>
#include <QtGui/QImage>

#include <memory>

class IDashboardEngine;
class IDashboardRenderer;

/// The size in pixels that dashboards are drawn for.
constexpr QSize DashboardSize(DashboardWidth, DashboardHeight);

/// A dashboard on a renderer of its own, which runs only when telemetry is published. Engine's
/// thread.
class OffscreenDashboard
{
public:
    /// `engine` is needed only here, for its renderer.
    explicit OffscreenDashboard(IDashboardEngine &engine);
    ~OffscreenDashboard();
    OffscreenDashboard(const OffscreenDashboard &) = delete;
    OffscreenDashboard &operator=(const OffscreenDashboard &) = delete;

    /// False if it fails; `errors` has the reasons.
    bool load(const QString &document);

    /// Publishes a state often enough to fill every average, and an even number of times, so that
    /// blinking ends in the same phase.
    void publish(const TelemetryState &state);

    /// Publishes a state until the picture no longer changes, fades included, and returns it. Null
    /// if it can't be rendered or keeps changing for ten seconds.
    QImage settled(const TelemetryState &state, QSize size = DashboardSize);

    /// All errors and warnings since `load`.
    QStringList errors() const;

    /// The names that a dashboard can read.
    QStringList publishedFields() const;

private:
    QImage picture(QSize size);

    std::unique_ptr<IDashboardRenderer> renderer;
};
