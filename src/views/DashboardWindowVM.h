#pragma once

#include "plugin/IDashboardConsumer.h"
#include "support/Lock.h"
#include "views/FramePicture.h"
#include "views/ViewModel.h"

#include <QtQuick/QQuickImageProvider>

#include <atomic>

class IDashboardEngine;

/// The window that shows the live dashboard. It renders nothing: its image provider is a consumer
/// of the engine, as large as the window, and gets no frames while the window is hidden.
class DashboardWindowVM : public ViewModel
{
    Q_OBJECT

public:
    class ImageProvider;

    /// `engine` is borrowed and must outlive the view model; null stands for none. The consumer is
    /// registered at once.
    explicit DashboardWindowVM(IDashboardEngine *engine, QObject *parent = nullptr);
    ~DashboardWindowVM() override;

    void initContext(QQmlContext *context) override;
    void setArgument(void *context, int request, const QVariant &argument) override;
    void setWindow(QWindow *newWindow) override;

Q_SIGNALS:
    /// A new frame can be asked for. Emitted on the engine's thread.
    void previewChanged();

private:
    void followVisibility(bool visible) override;
    void followSize();
    void forgetProvider();

    IDashboardEngine *const engine;
    ImageProvider *imageProvider = nullptr;
    bool providerHandedOver = false;
};

/// What stands between the engine and the document: frames come in by swapping vectors and go out
/// as pictures, under the name "dashWindow".
///
/// It may outlive its view model, and then gives the last picture for good; or end before it, on
/// the GUI thread, and then takes itself out of the engine.
class DashboardWindowVM::ImageProvider final : public QQuickImageProvider, public IDashboardConsumer
{
public:
    explicit ImageProvider(DashboardWindowVM *owner);
    ~ImageProvider() override;
    ImageProvider(const ImageProvider &) = delete;
    ImageProvider &operator=(const ImageProvider &) = delete;

    /// Shows `picture` until the first frame of the right size.
    void setWaitingPicture(const QImage &picture);

    /// Sets the size of the window in logical pixels; what exceeds the largest frame is cut off.
    void setSize(const QSize &size);

    /// Ends all that leads to the view model. Must not run during a delivery.
    void detach();

    /// The width of the window, at most 1440, or 0 without one. Any thread, without a lock.
    int frameWidth() override;
    /// The height of the window, at most 816, or 0 without one. Any thread, without a lock.
    int frameHeight() override;
    bool isUpsideDown() override;
    quint64 lastActivity() override;
    void deliverFrame(Frame &buffer, int width) override;

    /// The newest frame if it has the window's present size, else the last picture that had. Any
    /// thread.
    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;

private:
    DashboardWindowVM *owner;
    Lock lock;
    Frame frame;
    FramePicture image;
    // Kept apart from the window, which only the GUI thread may ask.
    std::atomic<int> width{0};
    std::atomic<int> height{0};
};
