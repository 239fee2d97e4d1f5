#pragma once

#include <QtCore/QString>
#include <QtQuick/QQuickImageProvider>

/// Gives a picture of a text where there is no dashboard to render. Any thread.
class MessageImageProvider final : public QQuickImageProvider
{
public:
    explicit MessageImageProvider(QString message);
    ~MessageImageProvider() override;
    MessageImageProvider(const MessageImageProvider &) = delete;
    MessageImageProvider &operator=(const MessageImageProvider &) = delete;

    /// As wide as `requestedSize` says, in pixels, if that is above 0, else 480; the height is the
    /// dashboard's for that width. Null where that leaves no height or memory does not suffice.
    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;

private:
    const QString message;
};
