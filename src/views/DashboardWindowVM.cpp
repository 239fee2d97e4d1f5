#include "views/DashboardWindowVM.h"

#include "plugin/IDashboardEngine.h"

#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>

#include <algorithm>
#include <memory>

namespace {

constexpr int LargestWidth = 3 * DashboardWidth;
constexpr int LargestHeight = 3 * DashboardHeight;

} // namespace

DashboardWindowVM::DashboardWindowVM(IDashboardEngine *engine, QObject *parent)
    : ViewModel(parent)
    , engine(engine)
{
    auto provider = std::make_unique<ImageProvider>(this);
    imageProvider = provider.get();
    if (engine != nullptr) {
        if (const std::unique_ptr<QImage> waiting = engine->createWaitingImage(1))
            imageProvider->setWaitingPicture(*waiting);
        engine->addConsumer(imageProvider);
    }
    static_cast<void>(provider.release());
}

DashboardWindowVM::~DashboardWindowVM()
{
    if (imageProvider == nullptr)
        return;
    // Returns only when no delivery is running, which makes the rest safe.
    if (engine != nullptr)
        engine->removeConsumer(imageProvider);
    imageProvider->detach();
    if (!providerHandedOver)
        delete imageProvider;
}

void DashboardWindowVM::initContext(QQmlContext *context)
{
    // A provider can belong to only one QML engine, here the first.
    if (providerHandedOver || context == nullptr || context->engine() == nullptr)
        return;
    providerHandedOver = true;
    context->engine()->addImageProvider(QStringLiteral("dashWindow"), imageProvider);
}

void DashboardWindowVM::setArgument(void * /*context*/, int /*request*/,
                                    const QVariant & /*argument*/)
{
}

void DashboardWindowVM::setWindow(QWindow *newWindow)
{
    ViewModel::setWindow(newWindow);
    followSize();
    if (newWindow == nullptr)
        return;
    connect(newWindow, &QWindow::widthChanged, this, &DashboardWindowVM::followSize);
    connect(newWindow, &QWindow::heightChanged, this, &DashboardWindowVM::followSize);
    connect(newWindow, &QObject::destroyed, this, &DashboardWindowVM::followSize);
}

/// A hidden window costs no rendering.
void DashboardWindowVM::followVisibility(bool visible)
{
    if (engine == nullptr || imageProvider == nullptr)
        return;
    if (visible)
        engine->addConsumer(imageProvider);
    else
        engine->removeConsumer(imageProvider);
}

void DashboardWindowVM::followSize()
{
    if (imageProvider != nullptr)
        imageProvider->setSize(window != nullptr ? window->size() : QSize(0, 0));
}

/// The QML engine was destroyed before, and the provider with it.
void DashboardWindowVM::forgetProvider()
{
    if (engine != nullptr)
        engine->removeConsumer(imageProvider);
    imageProvider = nullptr;
}

DashboardWindowVM::ImageProvider::ImageProvider(DashboardWindowVM *owner)
    : QQuickImageProvider(QQmlImageProviderBase::Image)
    , owner(owner)
{
}

DashboardWindowVM::ImageProvider::~ImageProvider()
{
    if (owner != nullptr)
        owner->forgetProvider();
}

void DashboardWindowVM::ImageProvider::setWaitingPicture(const QImage &picture)
{
    const LockGuard guard(lock);
    image.replace(picture);
}

void DashboardWindowVM::ImageProvider::setSize(const QSize &size)
{
    width = std::min(size.width(), LargestWidth);
    height = std::min(size.height(), LargestHeight);
}

void DashboardWindowVM::ImageProvider::detach()
{
    const LockGuard guard(lock);
    owner = nullptr;
    setSize(QSize(0, 0));
}

int DashboardWindowVM::ImageProvider::frameWidth()
{
    return width;
}

int DashboardWindowVM::ImageProvider::frameHeight()
{
    return height;
}

bool DashboardWindowVM::ImageProvider::isUpsideDown()
{
    return false;
}

quint64 DashboardWindowVM::ImageProvider::lastActivity()
{
    return 0;
}

void DashboardWindowVM::ImageProvider::deliverFrame(Frame &buffer, int /*width*/)
{
    DashboardWindowVM *receiver = nullptr;
    {
        const LockGuard guard(lock);
        frame.swap(buffer);
        receiver = owner;
    }
    if (receiver != nullptr)
        Q_EMIT receiver->previewChanged();
}

QImage DashboardWindowVM::ImageProvider::requestImage(const QString & /*id*/, QSize *size,
                                                      const QSize & /*requestedSize*/)
{
    QImage picture;
    {
        const LockGuard guard(lock);
        const int presentHeight = frameHeight();
        const int presentWidth = frameWidth();
        image.fill(frame, presentWidth, presentHeight);
        picture = image.picture();
    }
    if (size != nullptr)
        *size = picture.size();
    return picture;
}
