#include "LiveWindow.h"

#include "IDashboardEngine.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>

namespace {

constexpr QSize DesignSize(480, 272);

} // namespace

LiveWindow::LiveWindow(IDashboardEngine &engine, bool upsideDown)
    : engine(engine)
    , upsideDown(upsideDown)
    , picture(*engine.createWaitingImage(1))
{
    setMinimumSize(DesignSize / 2);
    resize(DesignSize * 2);
    engine.addConsumer(this);
}

LiveWindow::~LiveWindow()
{
    engine.removeConsumer(this);
}

void LiveWindow::deliverFrame(Frame &buffer, int width)
{
    constexpr int BytesPerPixel = 4;
    picture = QImage();
    frame.swap(buffer);
    picture = QImage(frame.data(), width, static_cast<int>(frame.size()) / BytesPerPixel / width,
                     width * BytesPerPixel, QImage::Format_ARGB32_Premultiplied);
    update();
}

void LiveWindow::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    const QRect whole(QPoint(), size());
    painter.fillRect(whole, Qt::black);
    QRect box(QPoint(), DesignSize.scaled(size(), Qt::KeepAspectRatio));
    box.moveCenter(whole.center());
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(box, picture);
}

void LiveWindow::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Escape:
    case Qt::Key_Q:
        close();
        break;
    case Qt::Key_F:
    case Qt::Key_F11:
        toggleFullScreen();
        break;
    default:
        QRasterWindow::keyPressEvent(event);
    }
}

void LiveWindow::mouseDoubleClickEvent(QMouseEvent * /*event*/)
{
    toggleFullScreen();
}

QSize LiveWindow::frameSize() const
{
    return DesignSize.scaled(size() * devicePixelRatio(), Qt::KeepAspectRatio);
}

void LiveWindow::toggleFullScreen()
{
    if (visibility() == FullScreen)
        showNormal();
    else
        showFullScreen();
}
