#pragma once

#include "plugin/Frame.h"
#include "render/offscreen/DocumentErrors.h"

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QSize>
#include <QtCore/QStringList>

#include <memory>
#include <vector>

class QOffscreenSurface;
class QOpenGLContext;
class QOpenGLFramebufferObject;
class QQmlComponent;
class QQmlEngine;
class QQuickItem;
class QQuickRenderControl;
class QUrl;

namespace OVX {

class OffscreenWindow;

/// How the root item of a document follows the size of a frame.
enum class SizeMode : int {
    Resize = 0, ///< The root item takes the size of the frame.
    Scale = 1,  ///< The root item keeps its size; it is scaled to the frame's width and centred.
};

/// Renders a QML document into memory, without a visible window. Every document sees two names:
/// "ctx", the root context itself, and "globalRootItem", the document's root item once it exists.
/// All calls belong to the thread that constructed the object. Construction and loads leave the
/// OpenGL context current; frames and destruction leave none current. Each call makes its own
/// context current first, so several renderers can share a thread. Logs nothing: failures show in
/// results and in `errors()`.
class QmlOffscreenRenderer : public QObject
{
    Q_OBJECT

public:
    /// Needs a QGuiApplication. Without OpenGL, or with a scene graph that doesn't use it, every
    /// load fails.
    QmlOffscreenRenderer();
    ~QmlOffscreenRenderer() override;

    /// Replaces the document by the one at `url`, a local file or a resource, which is always read
    /// again. `baseDirectory` is its local directory, `width` by `height` the size of the first
    /// framebuffer in pixels. Any warning of the engine during the load fails it.
    bool loadDocument(const QString &url, const QString &baseDirectory, int width, int height,
                      SizeMode mode);

    /// Loads another document, a file name or a resource path, as a child of the root item.
    bool addDocument(const QString &path);

    /// Renders one frame of this size in pixels into `buffer`, which it resizes. False if nothing
    /// is loaded or OpenGL can't give a frame of this size now; the content of `buffer` is
    /// undefined then.
    bool renderToBuffer(Frame &buffer, int width, int height);

    /// Sets a property of the root context, which outlives the documents.
    void setProperty(const QString &name, const QVariant &value);

    /// Rotates the root item, and what was added to it, about its centre.
    void setRootRotation(qreal degrees);

    /// Errors and warnings since the last load began, each distinct text once.
    const QStringList &errors() const { return documentErrors.list(); }

Q_SIGNALS:
    /// The document declares a window, or has tried to show one. Once for each document.
    void windowKeptHidden();

private:
    using Framebuffer = std::unique_ptr<QOpenGLFramebufferObject>;

    bool usesOpenGL() const;
    bool makeCurrent();
    void unloadDocument();
    void deleteItems();
    std::unique_ptr<QQuickItem> createItem(std::unique_ptr<QQmlComponent> component);
    std::unique_ptr<QQmlComponent> readComponent(const QUrl &url);
    void collectErrors();
    void fitRootItem(int width, int height);
    QOpenGLFramebufferObject *targetFramebuffer(const QSize &size);
    bool readPixels(QOpenGLFramebufferObject &framebuffer, Frame &buffer, int width, int height);
    void flipRows(Frame &buffer, int width, int height);

    std::unique_ptr<QOpenGLContext> context;
    std::unique_ptr<QOffscreenSurface> surface;
    std::unique_ptr<QQuickRenderControl> renderControl;
    std::unique_ptr<OffscreenWindow> window;
    QPointer<QQuickItem> rootItem;
    std::unique_ptr<QQmlEngine> engine;
    std::vector<std::unique_ptr<QQmlComponent>> components;
    std::vector<Framebuffer> framebuffers;
    DocumentErrors documentErrors;
    QStringList defaultImportPaths;
    bool loaded = false;
    Frame rowBuffer;
    SizeMode sizeMode = SizeMode::Scale;
};

} // namespace OVX
