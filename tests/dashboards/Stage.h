#pragma once

#include "commands/OffscreenDashboard.h"
#include "render/TelemetryPublisher.h"
#include "render/offscreen/QmlOffscreenRenderer.h"

#include <QtCore/QStringList>
#include <QtGui/QImage>

class QQuickItem;
class QQuickRenderControl;

/// The folder of a dashboard as it was built, whole with its copies of the parts.
QString folderOf(const QString &dashboard);

/// The names of the dashboards that were built.
QStringList dashboardNames();

/// A row for each dashboard, in the column "dashboard".
void everyDashboard();

/// A dashboard under test, with its items in reach.
class Stage
{
public:
    /// `dashboard` is the name of a built one.
    explicit Stage(const QString &dashboard);

    /// What failed while the dashboard was loaded or shown.
    QStringList errors() const { return renderer.errors(); }

    /// One publication with all items in their places afterwards.
    void publishOnce(const TelemetryState &state);

    /// An even number of publications, so that averages hold nothing else and blinking ends in the
    /// phase in which lamps are out.
    void publish(const TelemetryState &state);

    /// The picture as it stands. Null if there is none.
    QImage picture(QSize size = DashboardSize);

    QQuickItem &root() const;

    /// How often something asked for a repaint so far.
    int repaints() const { return repaintCount; }

private:
    OVX::QmlOffscreenRenderer renderer;
    TelemetryPublisher publisher;
    QQuickRenderControl *control = nullptr;
    int repaintCount = 0;
};
