#include "render/DashboardRenderer.h"

#include "support/TextImage.h"

#include <QtCore/QDebug>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QUrl>
#include <QtCore/QVariant>

DashboardRenderer::DashboardRenderer()
    : publisher([this](const QString &name, const QVariant &value) {
        offscreen.setProperty(name, value);
    })
{
    QObject::connect(&offscreen, &OVX::QmlOffscreenRenderer::windowKeptHidden, &offscreen, [this] {
        qCritical().noquote() << "Dashboard: Opens windows, which stay hidden:"
                              << QDir::toNativeSeparators(path);
    });
}

bool DashboardRenderer::load(const QString &newPath, int width, int height)
{
    path = newPath;
    // Every name must exist before a document is compiled: a binding to a missing one warns, and a
    // warning fails the load.
    if (!hasPublished)
        publishTelemetry({}, {}, {}, {}, {}, 1.0F, false, false, false);

    if (!offscreen.loadDocument(QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded),
                                QFileInfo(path).absolutePath(), width, height,
                                OVX::SizeMode::Scale))
        return false;
    return offscreen.addDocument(QStringLiteral(":/dash/qml/DashboardSysPanel.qml"));
}

bool DashboardRenderer::renderFrame(Frame &buffer, int width, int height, bool upsideDown)
{
    // For every frame: consumers of both orientations share the renderer.
    offscreen.setRootRotation(upsideDown ? 180 : 0);
    return offscreen.renderToBuffer(buffer, width, height) || paintErrors(buffer, width, height);
}

const QStringList &DashboardRenderer::errors()
{
    return offscreen.errors();
}

void DashboardRenderer::publishTelemetry(const VehicleTelemetry &vehicle,
                                         const DisplayLimits &limits,
                                         const ExtendedTelemetry &extended,
                                         const QString &motionProfileName, const TuneInfo &tune,
                                         float steeringSmoothing, bool useMph, bool showMarkers,
                                         bool paused)
{
    publisher.publish({vehicle, limits, extended, motionProfileName, tune, steeringSmoothing,
                       useMph, showMarkers, paused});
    hasPublished = true;
}

std::set<QString> DashboardRenderer::publishedFields()
{
    return publisher.publishedFields();
}

/// Paints the errors where the dashboard would be, for its author to read. Always upright.
bool DashboardRenderer::paintErrors(Frame &buffer, int width, int height) const
{
    if (offscreen.errors().isEmpty() || width <= WidthPerFontPixel)
        return false;

    QString text;
    for (QString error : offscreen.errors())
        text += error.remove(QStringLiteral("file:///")) + QLatin1Char('\n');

    const QImage image = makeTextImage(QSize(width, height), text,
                                       {width / WidthPerFontPixel, Qt::TextWordWrap, false});
    if (image.isNull())
        return false;
    buffer.assign(image.constBits(), image.constBits() + image.sizeInBytes());
    return true;
}
