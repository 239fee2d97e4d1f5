#include "BareScene.h"

#include <QtCore/QUrl>
#include <QtGui/QOffscreenSurface>
#include <QtGui/QOpenGLContext>
#include <QtGui/QOpenGLFramebufferObject>
#include <QtGui/QOpenGLFunctions>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickRenderControl>
#include <QtQuick/QQuickWindow>

struct BareScene::Parts
{
    int width = 0;
    int height = 0;
    QOpenGLContext context;
    QOffscreenSurface surface;
    QQuickRenderControl control;
    std::unique_ptr<QQuickWindow> window;
    QQmlEngine engine;
    std::unique_ptr<QQmlComponent> component;
    std::unique_ptr<QQuickItem> root;
    std::unique_ptr<QOpenGLFramebufferObject> framebuffer;
};

BareScene::BareScene(const QString &path, const Properties &properties, int width, int height)
    : parts(std::make_unique<Parts>())
{
    Parts &p = *parts;
    p.width = width;
    p.height = height;
    QSurfaceFormat format;
    format.setDepthBufferSize(16);
    format.setStencilBufferSize(8);
    p.context.setFormat(format);
    p.context.create();
    p.surface.setFormat(p.context.format());
    p.surface.create();
    p.window = std::make_unique<QQuickWindow>(&p.control);
    p.window->setColor(Qt::black);
    p.context.makeCurrent(&p.surface);
    p.control.initialize(&p.context);

    set(properties);
    p.component = std::make_unique<QQmlComponent>(&p.engine, QUrl::fromLocalFile(path),
                                                  QQmlComponent::PreferSynchronous);
    p.root.reset(qobject_cast<QQuickItem *>(p.component->create()));
    if (p.root == nullptr)
        qFatal("%s", qUtf8Printable(p.component->errorString()));
    p.root->setParentItem(p.window->contentItem());
    p.root->setScale(width / p.root->width());
    p.root->setPosition(
        QPointF((width - p.root->width()) * 0.5, (height - p.root->height()) * 0.5));
    p.window->setGeometry(0, 0, width, height);
    p.framebuffer = std::make_unique<QOpenGLFramebufferObject>(
        width, height, QOpenGLFramebufferObject::CombinedDepthStencil);
    p.window->setRenderTarget(p.framebuffer.get());
}

BareScene::~BareScene()
{
    parts->context.makeCurrent(&parts->surface);
    parts->window->setRenderTarget(nullptr);
    parts->root.reset();
    parts->window.reset();
    parts->framebuffer.reset();
}

void BareScene::set(const Properties &properties)
{
    QQmlContext &context = *parts->engine.rootContext();
    for (const auto &[name, value] : properties)
        context.setContextProperty(name, value);
}

void BareScene::frame(Frame &buffer)
{
    parts->context.makeCurrent(&parts->surface);
    parts->control.polishItems();
    parts->control.sync();
    parts->control.render();
    parts->framebuffer->bind();
    parts->context.functions()->glReadPixels(0, 0, parts->width, parts->height, GL_BGRA,
                                             GL_UNSIGNED_BYTE, buffer.data());
}
