#include "dash/HostedDocument.h"

#include "plugin/IViewModel.h"

#include <QtQml/QQmlComponent>
#include <QtQml/QQmlContext>
#include <QtQuick/QQuickImageProvider>

namespace {

class ImageProviderDouble final : public QQuickImageProvider
{
public:
    explicit ImageProviderDouble(QStringList &requests)
        : QQuickImageProvider(Image)
        , requests(requests)
    {
    }

    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override
    {
        requests << QStringLiteral("%1 %2").arg(id).arg(requestedSize.width());
        // Like the editor's provider, it names the nominal size whatever it has drawn.
        *size = QSize(480, 272);
        const int width = requestedSize.width() > 0 ? requestedSize.width() : size->width();
        QImage image(width, width * 272 / 480, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::darkGray);
        return image;
    }

private:
    QStringList &requests;
};

std::unique_ptr<QObject> create(QQmlEngine &engine, const QString &address)
{
    QQmlComponent component(&engine, address);
    std::unique_ptr<QObject> object(component.create());
    if (!object)
        qFatal("%s", qPrintable(component.errorString()));
    return object;
}

} // namespace

HostedDocument::HostedDocument(const QString &document, const QString &imageProvider, double scale)
    : HostedDocument()
{
    engine.addImageProvider(imageProvider, new ImageProviderDouble(imageRequests));
    load(document, viewModel(), scale);
}

HostedDocument::HostedDocument(const QString &document, IViewModel &model)
    : HostedDocument()
{
    model.initContext(engine.rootContext());
    model.setWindow(&window);
    load(document, model.asQObject(), 1.0);
}

HostedDocument::HostedDocument()
{
    QObject::connect(&engine, &QQmlEngine::warnings, &engine,
                     [this](const QList<QQmlError> &errors) {
                         for (const QQmlError &error : errors)
                             warnings << error.toString();
                     });
    engine.addImportPath(QStringLiteral("qrc:/doubles/modules"));
    host = create(engine, QStringLiteral("qrc:/doubles/HostDouble.qml"));
}

HostedDocument::~HostedDocument() = default;

void HostedDocument::load(const QString &document, QObject *model, double scale)
{
    QQmlContext *context = engine.rootContext();
    context->setContextProperty(QStringLiteral("host_double"), host.get());
    context->setContextProperty(QStringLiteral("cpp_viewModel"), model);
    context->setContextProperty(QStringLiteral("qt_window"), hostWindow());
    context->setContextProperty(QStringLiteral("qt_navigation"), part("navigation"));
    context->setContextProperty(QStringLiteral("ux"), part("ux"));
    context->setContextProperty(QStringLiteral("qt_scale"), scale);

    root.reset(qobject_cast<QQuickItem *>(create(engine, document).release()));
    root->setParentItem(window.contentItem());
}

QStringList HostedDocument::takeCalls() const
{
    const QString log = host->property("log").toString();
    host->setProperty("log", QString());
    return log.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

QQuickItem *HostedDocument::withText(const QQuickItem *item, const QString &text,
                                     const char *property)
{
    const QList<QQuickItem *> children = item->childItems();
    for (QQuickItem *child : children) {
        if (child->property(property).toString() == text)
            return child;
        if (QQuickItem *found = withText(child, text, property))
            return found;
    }
    return nullptr;
}

QStringList HostedDocument::texts(const QQuickItem *item)
{
    QStringList found;
    for (const char *property : {"title", "text", "toolTip"}) {
        const QString text = item->property(property).toString();
        if (!text.isEmpty())
            found += text;
    }
    const QList<QQuickItem *> children = item->childItems();
    for (const QQuickItem *child : children)
        found += texts(child);
    return found;
}

QObject *HostedDocument::part(const char *name) const
{
    return host->property(name).value<QObject *>();
}
