#include "render/offscreen/QmlOffscreenRenderer.h"

#include "render/offscreen/DocumentSource.h"
#include "render/offscreen/OffscreenWindow.h"

#include <QtCore/QSet>
#include <QtCore/QUrl>
#include <QtCore/QVariant>
#include <QtCore/QVector>
#include <QtGui/QOffscreenSurface>
#include <QtGui/QOpenGLContext>
#include <QtGui/QOpenGLExtraFunctions>
#include <QtGui/QOpenGLFramebufferObject>
#include <QtGui/QSurfaceFormat>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickRenderControl>
#include <QtQuick/QSGRendererInterface>

#include <algorithm>
#include <cstring>

namespace OVX {

namespace {

constexpr std::size_t MaximumFramebuffers = 3;
constexpr GLenum ContextLost = 0x507; // GL_CONTEXT_LOST, which older headers lack.

const QString &rootItemProperty()
{
    static const QString name = QStringLiteral("globalRootItem");
    return name;
}

/// GL_CONTEXT_LOST never clears, so it ends the loop too.
void drainErrors(QOpenGLFunctions &gl)
{
    GLenum error = gl.glGetError();
    while (error != GL_NO_ERROR && error != ContextLost)
        error = gl.glGetError();
}

/// Silences the Component.onDestruction handlers of everything below `content`.
void silenceDestruction(QQuickItem &content)
{
    // An item may be the parent item of its owner, so there may be cycles.
    QSet<QObject *> seen;
    QVector<QObject *> pending{&content};
    while (!pending.isEmpty()) {
        QObject *object = pending.takeLast();
        if (seen.contains(object))
            continue;
        seen.insert(object);
        if (QObject *attached = qmlAttachedPropertiesObject<QQmlComponent>(object, false))
            attached->blockSignals(true);
        pending += object->children().toVector();
        if (const auto *item = qobject_cast<QQuickItem *>(object)) {
            const QList<QQuickItem *> children = item->childItems();
            for (QQuickItem *child : children)
                pending += child;
        }
    }
}

} // namespace

QmlOffscreenRenderer::QmlOffscreenRenderer()
    : context(std::make_unique<QOpenGLContext>())
    , surface(std::make_unique<QOffscreenSurface>())
{
    QSurfaceFormat format;
    format.setDepthBufferSize(16);
    format.setStencilBufferSize(8);
    context->setFormat(format);
    const bool hasContext = context->create();

    // The format that the context got, not the requested one: it may refuse a surface of another.
    surface->setFormat(context->format());
    surface->create();

    renderControl = std::make_unique<QQuickRenderControl>(this);
    window = std::make_unique<OffscreenWindow>(renderControl.get());
    connect(window.get(), &OffscreenWindow::keptHidden, this,
            &QmlOffscreenRenderer::windowKeptHidden);

    engine = std::make_unique<QQmlEngine>();
    if (engine->incubationController() == nullptr)
        engine->setIncubationController(window->incubationController());
    window->setDocumentEngine(engine.get());

    // Without a context the scene graph stays uninitialised, and every load fails.
    if (hasContext && usesOpenGL() && makeCurrent())
        renderControl->initialize(context.get());

    connect(engine.get(), &QQmlEngine::warnings, this, [this](const QList<QQmlError> &warnings) {
        for (const QQmlError &warning : warnings)
            documentErrors.append(warning);
    });
    defaultImportPaths = engine->importPathList();

    QQmlContext *rootContext = engine->rootContext();
    rootContext->setContextProperty(QStringLiteral("ctx"), rootContext);
    // A context forgets a property whose object dies. For the context itself that slot runs after
    // its data is gone.
    disconnect(rootContext, &QObject::destroyed, rootContext, nullptr);
}

QmlOffscreenRenderer::~QmlOffscreenRenderer()
{
    window->setRenderTarget(nullptr);
    makeCurrent();
    deleteItems(); // While everything that their handlers may use still exists.
    renderControl.reset();
    components.clear();
    window.reset();
    framebuffers.clear();
    context->doneCurrent();
    surface.reset();
    context.reset();
    // Here and not with the fields: its last warnings go to the log, which must still exist.
    engine.reset();
}

bool QmlOffscreenRenderer::loadDocument(const QString &url, const QString &baseDirectory, int width,
                                        int height, SizeMode mode)
{
    loaded = false;
    sizeMode = mode;
    unloadDocument();
    documentErrors
        .clear(); // After the old document's last warnings, which are no fault of the new one.

    engine->clearComponentCache();
    engine->setBaseUrl(QUrl::fromLocalFile(baseDirectory));
    engine->setImportPathList(defaultImportPaths);
    engine->addImportPath(baseDirectory);

    std::unique_ptr<QQmlComponent> document = readComponent(QUrl(url, QUrl::TolerantMode));
    if (document == nullptr)
        return false;

    // The name exists, but is null, while the document's own bindings first run.
    engine->rootContext()->setContextProperty(rootItemProperty(), static_cast<QObject *>(nullptr));
    std::unique_ptr<QQuickItem> item = createItem(std::move(document));
    if (item == nullptr)
        return false;

    // Items don't own their child items, and a document may take its root out of the window.
    rootItem = item.release();
    rootItem->setParent(window->contentItem());
    rootItem->setParentItem(window->contentItem());
    window->reportDeclaredWindows(*rootItem);
    if (sizeMode == SizeMode::Resize)
        rootItem->setSize(QSizeF(width, height));
    engine->rootContext()->setContextProperty(rootItemProperty(), rootItem.data());

    window->setGeometry(0, 0, width, height);
    if (!makeCurrent()) {
        documentErrors.append(QStringLiteral("Failed to setup context/surface"));
        return false;
    }
    if (!usesOpenGL()) {
        documentErrors.append(
            QStringLiteral("Failed to setup context/surface: Qt Quick renders without "
                           "OpenGL (\"%1\")")
                .arg(QQuickWindow::sceneGraphBackend()));
        return false;
    }
    targetFramebuffer(window->size());

    loaded = documentErrors.isEmpty();
    return loaded;
}

bool QmlOffscreenRenderer::addDocument(const QString &path)
{
    if (rootItem == nullptr)
        return false;
    std::unique_ptr<QQuickItem> item = createItem(
        std::make_unique<QQmlComponent>(engine.get(), path, QQmlComponent::PreferSynchronous));
    if (item == nullptr)
        return false;
    item->setParent(rootItem);
    item.release()->setParentItem(rootItem);
    return true;
}

bool QmlOffscreenRenderer::renderToBuffer(Frame &buffer, int width, int height)
{
    if (!loaded || rootItem == nullptr || width < 1 || height < 1 || !makeCurrent())
        return false;

    window->setWidth(width);
    window->setHeight(height);
    fitRootItem(width, height);

    QOpenGLFramebufferObject *framebuffer = targetFramebuffer(QSize(width, height));
    if (framebuffer == nullptr) {
        context->doneCurrent();
        return false;
    }

    renderControl->polishItems();
    renderControl->sync();
    renderControl->render();
    context->functions()->glFlush();

    const bool read = readPixels(*framebuffer, buffer, width, height);
    if (read)
        flipRows(buffer, width, height);
    context->doneCurrent();
    return read;
}

void QmlOffscreenRenderer::setProperty(const QString &name, const QVariant &value)
{
    engine->rootContext()->setContextProperty(name, value);
}

void QmlOffscreenRenderer::setRootRotation(qreal degrees)
{
    if (rootItem != nullptr)
        rootItem->setRotation(degrees);
}

/// Whether the application's scene graph can render into framebuffers. With one on Qt's RHI a
/// render control falls back to OpenGL.
bool QmlOffscreenRenderer::usesOpenGL() const
{
    const QSGRendererInterface::GraphicsApi api = window->rendererInterface()->graphicsApi();
    return api == QSGRendererInterface::OpenGL || QSGRendererInterface::isApiRhiBased(api);
}

bool QmlOffscreenRenderer::makeCurrent()
{
    return context->isValid() && context->makeCurrent(surface.get());
}

void QmlOffscreenRenderer::unloadDocument()
{
    window->setRenderTarget(nullptr);
    deleteItems();
    framebuffers.clear();
    components.clear();
    rootItem = nullptr;
    window->restore();
}

void QmlOffscreenRenderer::deleteItems()
{
    delete rootItem.data(); // It may have left the window.

    QQuickItem *content = window->contentItem();
    // A handler that runs while its item dies may delete a sibling, hence the guarded pointers. It
    // may also create a new item, endlessly: after a few rounds no handler runs any more.
    constexpr int Rounds = 3;
    for (int round = 0; round <= Rounds && !content->childItems().isEmpty(); ++round) {
        const QList<QQuickItem *> children = content->childItems();
        const QVector<QPointer<QQuickItem>> items(children.cbegin(), children.cend());
        if (round == Rounds)
            silenceDestruction(*content);
        for (const QPointer<QQuickItem> &item : items)
            delete item.data();
    }
}

std::unique_ptr<QQuickItem>
QmlOffscreenRenderer::createItem(std::unique_ptr<QQmlComponent> component)
{
    components.push_back(std::move(component));
    QQmlComponent &added = *components.back();
    if (added.isError()) {
        collectErrors();
        return nullptr;
    }
    std::unique_ptr<QObject> object(added.create());
    if (added.isError()) {
        collectErrors();
        return nullptr;
    }
    auto *item = qobject_cast<QQuickItem *>(object.get());
    if (item == nullptr) {
        documentErrors.append(QStringLiteral("Failed to create QQuickItem"));
        return nullptr;
    }
    static_cast<void>(object.release()); // `item` owns it from here on.
    return std::unique_ptr<QQuickItem>(item);
}

/// Null, with the error recorded, if the document can't be read.
std::unique_ptr<QQmlComponent> QmlOffscreenRenderer::readComponent(const QUrl &url)
{
    const DocumentSource source = readDocument(url);
    if (!source.error.isEmpty()) {
        QQmlError error;
        error.setUrl(url);
        error.setDescription(source.error);
        documentErrors.append(error);
        return nullptr;
    }
    auto component = std::make_unique<QQmlComponent>(engine.get());
    component->setData(source.bytes, url);
    return component;
}

void QmlOffscreenRenderer::collectErrors()
{
    for (const auto &component : components) {
        const QList<QQmlError> componentErrors = component->errors();
        for (const QQmlError &error : componentErrors)
            documentErrors.append(error);
    }
}

void QmlOffscreenRenderer::fitRootItem(int width, int height)
{
    if (sizeMode == SizeMode::Resize) {
        rootItem->setSize(QSizeF(width, height));
        return;
    }
    const qreal rootWidth = rootItem->width();
    if (rootWidth != 0)
        rootItem->setScale(static_cast<qreal>(static_cast<float>(width)) / rootWidth);
    rootItem->setPosition(QPointF((width - rootWidth) * 0.5, (height - rootItem->height()) * 0.5));
}

/// Makes a framebuffer of this size the window's target: a cached one, or a new one that replaces
/// the oldest. Null if OpenGL can't create it. Needs the context current.
QOpenGLFramebufferObject *QmlOffscreenRenderer::targetFramebuffer(const QSize &size)
{
    const auto cached =
        std::find_if(framebuffers.cbegin(), framebuffers.cend(),
                     [&size](const Framebuffer &entry) { return entry->size() == size; });
    if (cached != framebuffers.cend()) {
        if (window->renderTarget() != cached->get())
            window->setRenderTarget(cached->get());
        return cached->get();
    }

    GLint largest = 0;
    context->functions()->glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largest);
    if (size.width() > largest || size.height() > largest)
        return nullptr;
    auto framebuffer = std::make_unique<QOpenGLFramebufferObject>(
        size, QOpenGLFramebufferObject::CombinedDepthStencil, GL_TEXTURE_2D);
    if (!framebuffer->isValid())
        return nullptr;

    // Before the oldest goes, which may be the current target.
    window->setRenderTarget(framebuffer.get());
    framebuffers.push_back(std::move(framebuffer));
    if (framebuffers.size() > MaximumFramebuffers)
        framebuffers.erase(framebuffers.begin());
    return framebuffers.back().get();
}

/// Reads the framebuffer straight into `buffer`: a QImage in between would allocate in every frame.
bool QmlOffscreenRenderer::readPixels(QOpenGLFramebufferObject &framebuffer, Frame &buffer,
                                      int width, int height)
{
    QOpenGLExtraFunctions &gl = *context->extraFunctions();
    GLint saved = 0;
    gl.glGetIntegerv(GL_FRAMEBUFFER_BINDING, &saved);
    framebuffer.bind();
    buffer.resize(frameBytes(width, height));

    drainErrors(gl);
    const bool choosesBuffer = gl.hasOpenGLFeature(QOpenGLFunctions::MultipleRenderTargets);
    if (choosesBuffer)
        gl.glReadBuffer(GL_COLOR_ATTACHMENT0);
    gl.glReadPixels(0, 0, width, height, GL_BGRA, GL_UNSIGNED_BYTE, buffer.data());
    if (choosesBuffer)
        gl.glReadBuffer(GL_COLOR_ATTACHMENT0);
    const bool read = gl.glGetError() == GL_NO_ERROR;

    gl.glBindFramebuffer(GL_FRAMEBUFFER, GLuint(saved));
    return read;
}

/// OpenGL delivers the bottom row first.
void QmlOffscreenRenderer::flipRows(Frame &buffer, int width, int height)
{
    const std::size_t rowBytes = frameBytes(width, 1);
    rowBuffer.resize(rowBytes);
    unsigned char *upper = buffer.data();
    unsigned char *lower = buffer.data() + rowBytes * std::size_t(height - 1);
    for (int row = 0; row < height / 2; ++row) {
        std::memcpy(rowBuffer.data(), upper, rowBytes);
        std::memcpy(upper, lower, rowBytes);
        std::memcpy(lower, rowBuffer.data(), rowBytes);
        upper += rowBytes;
        lower -= rowBytes;
    }
}

} // namespace OVX
