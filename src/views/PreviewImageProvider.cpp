#include "views/PreviewImageProvider.h"

#include "plugin/IDashboardRenderer.h"

#include <new>
#include <stdexcept>
#include <utility>

PreviewImageProvider::PreviewImageProvider(std::shared_ptr<LentRenderer> lent)
    : QQuickImageProvider(QQmlImageProviderBase::Image)
    , lent(std::move(lent))
{
}

PreviewImageProvider::~PreviewImageProvider() = default;

QImage PreviewImageProvider::requestImage(const QString & /*id*/, QSize *size,
                                          const QSize &requestedSize)
{
    int width = DashboardWidth;
    int height = DashboardHeight;
    if (requestedSize.width() > 0) {
        width = requestedSize.width();
        height = static_cast<int>(static_cast<float>(width) * DashboardHeight / DashboardWidth);
    }
    if (size != nullptr)
        *size = QSize(DashboardWidth, DashboardHeight);

    // Held while rendering, so that the renderer isn't destroyed meanwhile.
    const LockGuard guard(lent->lock);
    if (render(width, height)) {
        image.fill(pixels, width, height);
    } else {
        QImage failure(1, 1, QImage::Format_ARGB32_Premultiplied);
        failure.fill(Qt::transparent);
        image.replace(failure);
    }
    return image.picture();
}

bool PreviewImageProvider::render(int width, int height)
{
    if (lent->renderer == nullptr)
        return false;
    try {
        return lent->renderer->renderFrame(pixels, width, height, false);
    } catch (const std::bad_alloc &) {
        pixels = Frame(); // The document may request more than fits into memory.
    } catch (const std::length_error &) {
        pixels = Frame();
    }
    return false;
}
