#include "GalleryWindow.h"

#include "LiveDashboard.h"
#include "Navigation.h"
#include "PreviewImages.h"
#include "UiEngine.h"

#include <QtCore/QUrl>
#include <QtQml/QQmlContext>
#include <QtQuick/QQuickItem>

#include <memory>

namespace {

constexpr QSize SmallestSize(720, 540); ///< In pixels at scale 1, like `FirstSize`.
constexpr QSize FirstSize(1200, 800);

void registerTypes()
{
    constexpr const char *Module = "Gauge.Host";
    qmlRegisterType<LiveDashboard>(Module, 1, 0, "LiveDashboard");
    qmlRegisterUncreatableType<TelemetryStatus>(Module, 1, 0, "TelemetryStatus",
                                                QStringLiteral("It is only read"));
}

} // namespace

GalleryWindow::GalleryWindow(Navigation &navigation, IDashboardEngine &engine,
                             DashboardAbstractProfilesManager &store, VehicleNames &vehicles,
                             const TelemetryMonitor &monitor, const QString &telemetrySource)
    : HostWindow(QStringLiteral("Gallery"), navigation)
    , dashboards(engine)
    , model(store)
    , actions(store)
    , telemetry(monitor, vehicles, telemetrySource)
{
    // The linker drops a static library's resources unless something names them.
    Q_INIT_RESOURCE(gallery);
    registerTypes();
    rootContext()->setContextProperty(QStringLiteral("gallery_model"), &model);
    rootContext()->setContextProperty(QStringLiteral("gallery_actions"), &actions);
    rootContext()->setContextProperty(QStringLiteral("gallery_telemetry"), &telemetry);
    this->engine()->addImageProvider(QLatin1String(PreviewImages::Name),
                                     std::make_unique<PreviewImages>().release());

    connect(&model, &ProfileModel::folderMoved, &navigation, &Navigation::folderMoved);

    setTitle(QStringLiteral("GAUGE64"));
    setMinimumSize(SmallestSize * UiEngine::scale());
    setInitialSize(FirstSize.width() * UiEngine::scale(), FirstSize.height() * UiEngine::scale());
}

/// The document goes before what it reads.
GalleryWindow::~GalleryWindow()
{
    setSource({});
}

void GalleryWindow::openGallery()
{
    open(QUrl(QStringLiteral("qrc:/qml/gallery/Gallery.qml")));
    auto *const live =
        rootObject() != nullptr ? rootObject()->findChild<LiveDashboard *>() : nullptr;
    if (live != nullptr)
        live->attach(dashboards);
}
