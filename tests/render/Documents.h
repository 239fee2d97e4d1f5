#pragma once

#include "render/DashboardRenderer.h"
#include "render/offscreen/QmlOffscreenRenderer.h"
#include "support/DocumentFolder.h"
#include "support/Picture.h"

#include <QtCore/QUrl>

constexpr QRgb Black = 0xFF000000;
constexpr QRgb White = 0xFFFFFFFF;
constexpr QRgb Red = 0xFFFF0000;
constexpr QRgb Green = 0xFF00FF00;
constexpr QRgb Blue = 0xFF0000FF;

/// A document with this root, which may use all that the tests need. Its own lines begin
/// with the fourth.
inline QByteArray document(const QByteArray &body)
{
    return "import QtQuick 2.15\nimport QtQuick.Window 2.15\nimport Probe 1.0\n" + body;
}

/// A document of one colour that fills a frame of any size.
inline QByteArray filled(const QByteArray &colour)
{
    return document("Rectangle { width: 480; height: 272; color: \"" + colour + "\" }");
}

inline bool load(OVX::QmlOffscreenRenderer &renderer, const QString &path,
                 OVX::SizeMode mode = OVX::SizeMode::Scale, QSize size = {40, 20})
{
    return renderer.loadDocument(QUrl::fromLocalFile(path).toString(),
                                 QFileInfo(path).absolutePath(), size.width(), size.height(), mode);
}

/// One frame; its bytes are empty when there is none.
inline Picture frame(OVX::QmlOffscreenRenderer &renderer, int width, int height)
{
    Picture picture{{}, width, height};
    if (!renderer.renderToBuffer(picture.bytes, width, height))
        picture.bytes.clear();
    return picture;
}

inline Picture frame(DashboardRenderer &renderer, int width, int height, bool upsideDown = false)
{
    Picture picture{{}, width, height};
    if (!renderer.renderFrame(picture.bytes, width, height, upsideDown))
        picture.bytes.clear();
    return picture;
}

inline QByteArray errorsOf(DashboardRenderer &renderer)
{
    return renderer.errors().join(QLatin1Char('\n')).toUtf8();
}
