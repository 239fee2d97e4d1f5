#pragma once

#include <QtCore/QString>
#include <QtQuick/QQuickImageProvider>

/// Loads the preview pictures of dashboards, away from the GUI thread and no larger than asked for.
/// A
/// file that is no picture, or an absurdly large one, gives a single transparent pixel.
class PreviewImages final : public QQuickImageProvider
{
public:
    static constexpr char Name[] = "dashboards";

    PreviewImages()
        : QQuickImageProvider(Image, ForceAsynchronousImageLoading)
    {
    }

    /// The address of a picture for `Image.source`; another one when the file has changed. Empty
    /// for a file that isn't there. Any thread.
    static QString address(const QString &path);

    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;
};
