#include "LiveDashboard.h"

#include "IDashboardEngine.h"

#include <QtQuick/QQuickWindow>
#include <QtQuick/QSGSimpleTextureNode>

#include <algorithm>

namespace {

constexpr QSize DashboardSize(DashboardWidth, DashboardHeight);

/// A texture that reads its pixels from the node's own vector: the render thread uploads them
/// later, when the item may already have the next frame.
class FrameNode final : public QSGSimpleTextureNode
{
public:
    FrameNode()
    {
        setOwnsTexture(true);
        setFiltering(QSGTexture::Linear);
    }

    void show(QQuickWindow &window, const QImage &image)
    {
        setTexture(window.createTextureFromImage(image, QQuickWindow::TextureIsOpaque));
    }

    Frame pixels;
};

} // namespace

LiveDashboard::LiveDashboard(QQuickItem *parent)
    : QQuickItem(parent)
{
    setFlag(ItemHasContents);
    watch(window()); // A parent's window was set before this class could hear of it.
}

LiveDashboard::~LiveDashboard()
{
    if (joined)
        engine->removeConsumer(this);
}

void LiveDashboard::attach(IDashboardEngine &newEngine)
{
    engine = &newEngine;
    showWaiting();
    joinOrLeave();
}

void LiveDashboard::showWaiting()
{
    if (engine == nullptr)
        return;
    constexpr int LargestScale = 4;
    const int scale =
        std::clamp((frameSize().width() + DashboardWidth - 1) / DashboardWidth, 1, LargestScale);
    const std::unique_ptr<QImage> image = engine->createWaitingImage(scale);
    waiting = image != nullptr ? *image : QImage();
    content = Content::Waiting;
    update();
}

void LiveDashboard::deliverFrame(Frame &buffer, int bufferWidth)
{
    // The engine may deliver a vector without a picture.
    if (bufferWidth < 1 || buffer.size() < frameBytes(bufferWidth, 1))
        return;
    frame.swap(buffer);
    width = bufferWidth;
    content = Content::Frame;
    update();
}

QSGNode *LiveDashboard::updatePaintNode(QSGNode *oldNode, UpdatePaintNodeData * /*data*/)
{
    auto *node = static_cast<FrameNode *>(oldNode);
    if (node == nullptr) {
        if (waiting.isNull())
            return nullptr;
        // The scene owns the node. A lost one has taken its frame along.
        node = std::make_unique<FrameNode>().release();
        if (content == Content::Shown)
            content = Content::Waiting;
    }
    if (content == Content::Waiting) {
        node->show(*window(), waiting);
    } else if (content == Content::Frame) {
        const int rowBytes = static_cast<int>(frameBytes(width, 1));
        node->pixels.swap(frame);
        node->show(*window(), QImage(node->pixels.data(), width,
                                     static_cast<int>(node->pixels.size()) / rowBytes, rowBytes,
                                     QImage::Format_ARGB32_Premultiplied));
    }
    content = Content::Shown;
    const QSizeF size = QSizeF(DashboardSize).scaled(boundingRect().size(), Qt::KeepAspectRatio);
    QRectF box(QPointF(), size);
    box.moveCenter(boundingRect().center());
    node->setRect(box);
    return node;
}

void LiveDashboard::itemChange(ItemChange change, const ItemChangeData &value)
{
    if (change == ItemSceneChange)
        watch(value.window);
    QQuickItem::itemChange(change, value);
    if (change == ItemSceneChange || change == ItemVisibleHasChanged)
        joinOrLeave();
}

void LiveDashboard::geometryChanged(const QRectF &newGeometry, const QRectF &oldGeometry)
{
    QQuickItem::geometryChanged(newGeometry, oldGeometry);
    if (newGeometry.size() != oldGeometry.size())
        update();
}

void LiveDashboard::watch(QQuickWindow *place)
{
    disconnect(windowWatch);
    if (place == nullptr)
        return;
    windowWatch = connect(place, &QWindow::visibilityChanged, this, &LiveDashboard::joinOrLeave);
}

/// In physical pixels.
QSize LiveDashboard::frameSize() const
{
    const qreal ratio = window() != nullptr ? window()->effectiveDevicePixelRatio() : 1.0;
    return DashboardSize.scaled((boundingRect().size() * ratio).toSize(), Qt::KeepAspectRatio);
}

bool LiveDashboard::canBeSeen() const
{
    const QQuickWindow *const place = window();
    return isVisible() && place != nullptr && place->isVisible() &&
           place->visibility() != QWindow::Minimized;
}

void LiveDashboard::joinOrLeave()
{
    if (engine == nullptr || joined == canBeSeen())
        return;
    joined = !joined;
    if (joined)
        engine->addConsumer(this);
    else
        engine->removeConsumer(this);
}
