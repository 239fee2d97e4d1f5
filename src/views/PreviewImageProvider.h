#pragma once

#include "plugin/Frame.h"
#include "support/Lock.h"
#include "views/FramePicture.h"

#include <QtQuick/QQuickImageProvider>

#include <memory>

class IDashboardRenderer;

/// A renderer on loan. The lender sets it to null, under the lock, before the renderer ends.
struct LentRenderer
{
    Lock lock;
    IDashboardRenderer *renderer = nullptr;
};

/// Renders the dashboard anew at every request, inside the request and therefore on the renderer's
/// thread. May outlive the renderer's lender.
class PreviewImageProvider final : public QQuickImageProvider
{
public:
    explicit PreviewImageProvider(std::shared_ptr<LentRenderer> lent);
    ~PreviewImageProvider() override;
    PreviewImageProvider(const PreviewImageProvider &) = delete;
    PreviewImageProvider &operator=(const PreviewImageProvider &) = delete;

    /// As wide as `requestedSize` says, in pixels, if that is above 0, else 480; the height is the
    /// dashboard's for that width. `size` is told as 480 by 272 always. A picture of one pixel
    /// stands for a rendering that failed and for a renderer that is gone.
    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;

private:
    bool render(int width, int height);

    const std::shared_ptr<LentRenderer> lent;
    Frame pixels;
    FramePicture image;
};
