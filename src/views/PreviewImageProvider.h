#pragma once

#include "plugin/Frame.h"
#include "support/Lock.h"
#include "views/FramePicture.h"

#include <QtQuick/QQuickImageProvider>

#include <memory>

class IDashboardRenderer;

/// A borrowed renderer. Its owner sets it to null, under the lock, before destroying it.
struct LentRenderer
{
    Lock lock;
    IDashboardRenderer *renderer = nullptr;
};

/// Renders the dashboard inside each request, which therefore has to come on the renderer's thread.
/// May outlive the renderer.
class PreviewImageProvider final : public QQuickImageProvider
{
public:
    explicit PreviewImageProvider(std::shared_ptr<LentRenderer> lent);
    ~PreviewImageProvider() override;
    PreviewImageProvider(const PreviewImageProvider &) = delete;
    PreviewImageProvider &operator=(const PreviewImageProvider &) = delete;

    /// A picture of the requested width in pixels, or of 480 if that isn't above 0, with a
    /// dashboard's proportions. `size` is always set to 480 by 272. Gives a picture of one pixel if
    /// rendering fails or the renderer is gone.
    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;

private:
    bool render(int width, int height);

    const std::shared_ptr<LentRenderer> lent;
    Frame pixels;
    FramePicture image;
};
