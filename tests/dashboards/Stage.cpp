#include "Stage.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QUrl>
#include <QtGui/QGuiApplication>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickRenderControl>
#include <QtQuick/QQuickWindow>
#include <QtTest/QtTest>

QDir builtDashboards()
{
    return QDir(QStringLiteral(DASHBOARDS_DIRECTORY));
}

QStringList dashboardNames()
{
    return builtDashboards().entryList(QDir::Dirs | QDir::NoDotAndDotDot);
}

void everyDashboard()
{
    QTest::addColumn<QString>("dashboard");
    const QStringList names = dashboardNames();
    for (const QString &name : names)
        QTest::newRow(qPrintable(name)) << name;
}

Stage::Stage(const QString &dashboard)
    : publisher(
          [this](const QString &name, const QVariant &value) { renderer.setProperty(name, value); })
    , control(renderer.findChild<QQuickRenderControl *>())
{
    const QString path = builtDashboards().filePath(dashboard + QStringLiteral("/Dash.qml"));
    publisher.publish({{}, {}, {}, {}, {}});
    renderer.loadDocument(QUrl::fromLocalFile(path).toString(), QFileInfo(path).absolutePath(),
                          DashboardSize.width(), DashboardSize.height(), OVX::SizeMode::Scale);
    QObject::connect(control, &QQuickRenderControl::sceneChanged, control,
                     [this] { ++repaintCount; });
}

void Stage::publishOnce(const TelemetryState &state)
{
    const TelemetrySample &sample = state.sample;
    const QString profile;
    const TuneInfo tune;
    publisher.publish({sample.vehicle, sample.limits, sample.extended, profile, tune, 1.0F,
                       state.useMph, state.showMarkers, sample.paused});
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    control->polishItems();
}

void Stage::publish(const TelemetryState &state)
{
    constexpr int AveragedPublications = 6;
    for (int i = 0; i < AveragedPublications; ++i)
        publishOnce(state);
}

QImage Stage::picture(QSize size)
{
    Frame frame;
    if (!renderer.renderToBuffer(frame, size.width(), size.height()))
        return {};
    return QImage(frame.data(), size.width(), size.height(), QImage::Format_RGB32).copy();
}

QQuickItem &Stage::root() const
{
    // The renderer's window is the only one of the test.
    const QWindowList windows = QGuiApplication::allWindows();
    for (QWindow *window : windows) {
        if (const auto *quick = qobject_cast<QQuickWindow *>(window))
            return *quick->contentItem()->childItems().constFirst();
    }
    qFatal("There is no window.");
}
