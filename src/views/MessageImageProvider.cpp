#include "views/MessageImageProvider.h"

#include "plugin/Frame.h"
#include "support/TextImage.h"

#include <utility>

MessageImageProvider::MessageImageProvider(QString message)
    : QQuickImageProvider(QQmlImageProviderBase::Image)
    , message(std::move(message))
{
}

MessageImageProvider::~MessageImageProvider() = default;

QImage MessageImageProvider::requestImage(const QString & /*id*/, QSize *size,
                                          const QSize &requestedSize)
{
    const int width = requestedSize.width() > 0 ? requestedSize.width() : DashboardWidth;
    const auto height = static_cast<int>(qint64{width} * DashboardHeight / DashboardWidth);
    QImage image = makeMessageImage(QSize(width, height), message);
    if (size != nullptr)
        *size = image.size();
    return image;
}
