#pragma once

#include <QtCore/QString>
#include <QtQuick/QQuickImageProvider>

/// Loads the preview pictures of dashboards, off the GUI thread and no larger than requested. A
/// file that is not a picture, or an absurdly large one, gives a single transparent pixel.
class PreviewImages final : public QQuickImageProvider
{
public:
    static constexpr char Name[] = "dashboards";

    PreviewImages()
        : QQuickImageProvider(Image, ForceAsynchronousImageLoading)
    {
    }

    /// The URL for `Image.source`, which changes with the file. Empty if the file does not
    /// exist. Any thread.
    static QString address(const QString &path);

    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;
};
