#include "views/MessageImageProvider.h"

#include "plugin/Frame.h"
#include "support/TextImage.h"

#include <algorithm>
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
    constexpr int FontShare = 25;
    constexpr int SmallestFont = 10;
    const int width = requestedSize.width() > 0 ? requestedSize.width() : DashboardWidth;
    const auto height = static_cast<int>(qint64{width} * DashboardHeight / DashboardWidth);
    QImage image = makeTextImage(QSize(width, height), message,
                                 {std::max(width / FontShare, SmallestFont),
                                  Qt::AlignHCenter | Qt::AlignVCenter | Qt::TextWordWrap, false});
    if (size != nullptr)
        *size = image.size();
    return image;
}
