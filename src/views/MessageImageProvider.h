#pragma once

#include <QtCore/QString>
#include <QtQuick/QQuickImageProvider>

/// Gives a picture of a text instead of a dashboard. Any thread.
class MessageImageProvider final : public QQuickImageProvider
{
public:
    explicit MessageImageProvider(QString message);
    ~MessageImageProvider() override;
    MessageImageProvider(const MessageImageProvider &) = delete;
    MessageImageProvider &operator=(const MessageImageProvider &) = delete;

    /// A picture of the requested width in pixels, or of 480 if that isn't above 0, with a
    /// dashboard's proportions. Null if its height would be 0 or memory doesn't suffice.
    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;

private:
    const QString message;
};
