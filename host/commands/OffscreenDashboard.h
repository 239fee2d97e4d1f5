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

/// A dashboard on a renderer of its own, driven by publications alone: no clock, no thread.
/// Engine's thread.
class OffscreenDashboard
{
public:
    explicit OffscreenDashboard(IDashboardEngine &engine);
    ~OffscreenDashboard();
    OffscreenDashboard(const OffscreenDashboard &) = delete;
    OffscreenDashboard &operator=(const OffscreenDashboard &) = delete;

    /// False with the reasons in `errors`.
    bool load(const QString &document);

    /// Publishes one state until averages hold nothing else, an even number of times, so that what
    /// blinks ends in the same phase.
    void publish(const TelemetryState &state);

    /// Publishes the state and gives the picture once it stands still, fades within the dashboard
    /// included. Null if it can't be rendered or never stands still.
    QImage settled(const TelemetryState &state, QSize size = DashboardSize);

    /// Everything that was wrong since the load began.
    QStringList errors() const;

    /// The names that a dashboard can read.
    QStringList publishedFields() const;

private:
    QImage picture(QSize size);

    std::unique_ptr<IDashboardRenderer> renderer;
};
