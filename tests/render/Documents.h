#pragma once

#include "render/DashboardRenderer.h"
#include "render/offscreen/QmlOffscreenRenderer.h"
#include "support/DocumentFolder.h"
#include "support/PaintedText.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QUrl>
#include <QtQml/qqml.h>

/// Lets a document report to the test, through `import Probe 1.0`, and counts the probes of
/// documents that are alive.
class Probe : public QObject
{
    Q_OBJECT

public:
    explicit Probe(QObject *parent = nullptr)
        : QObject(parent)
    {
        ++alive;
    }
    ~Probe() override { --alive; }

    static void registerType() { qmlRegisterType<Probe>("Probe", 1, 0, "Probe"); }

    Q_INVOKABLE void report(const QVariant &value) { reports.append(value); }

    /// Deletes any object, as C++ code may; QML itself refuses to delete some.
    Q_INVOKABLE void dispose(QObject *object) { object->deleteLater(); }

    static inline int alive = 0;
    static inline QVariantList reports;
};

constexpr QRgb Black = 0xFF000000;
constexpr QRgb Red = 0xFFFF0000;
constexpr QRgb Green = 0xFF00FF00;
constexpr QRgb Blue = 0xFF0000FF;

/// A document with this root, which begins in line 4, and the imports that tests need.
inline QByteArray document(const QByteArray &body)
{
    return "import QtQuick 2.15\nimport QtQuick.Window 2.15\nimport Probe 1.0\n" + body;
}

/// A document of one colour that fills a frame of any size.
inline QByteArray filled(const QByteArray &colour)
{
    return document("Rectangle { width: 480; height: 272; color: \"" + colour + "\" }");
}

inline bool load(DashboardRenderer &renderer, const QString &path)
{
    return renderer.load(path, 480, 272);
}

inline bool load(OVX::QmlOffscreenRenderer &renderer, const QString &path,
                 OVX::SizeMode mode = OVX::SizeMode::Scale, QSize size = {40, 20})
{
    return renderer.loadDocument(QUrl::fromLocalFile(path).toString(),
                                 QFileInfo(path).absolutePath(), size.width(), size.height(), mode);
}

/// Writes a document with this root, and loads it.
template<typename Renderer, typename... Arguments>
bool loadText(Renderer &renderer, const DocumentFolder &folder, const QByteArray &body,
              const Arguments &...arguments)
{
    return load(renderer, folder.write("Dash.qml"_q, document(body)), arguments...);
}

/// One frame; null when there is none.
inline QImage frame(OVX::QmlOffscreenRenderer &renderer, int width = 40, int height = 20)
{
    Frame buffer;
    return renderer.renderToBuffer(buffer, width, height) ? frameImage(buffer, width, height)
                                                          : QImage();
}

inline QImage frame(DashboardRenderer &renderer, int width = 480, int height = 272,
                    bool upsideDown = false)
{
    Frame buffer;
    return renderer.renderFrame(buffer, width, height, upsideDown)
               ? frameImage(buffer, width, height)
               : QImage();
}

/// The number of pixels of exactly this colour.
inline int count(const QImage &image, QRgb colour)
{
    int found = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            found += image.pixel(x, y) == colour ? 1 : 0;
    }
    return found;
}

/// Publishes, and lets the document delete what it destroyed.
inline void publish(DashboardRenderer &renderer, const TuneInfo &tune = {})
{
    renderer.publishTelemetry({}, {}, {}, {}, tune, 1.0F, false, false, false);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

inline bool isFilled(const QImage &image, QRgb colour)
{
    return !image.isNull() && count(image, colour) == image.width() * image.height();
}

template<typename Renderer> QString errorsOf(Renderer &renderer)
{
    return renderer.errors().join(u'\n');
}
