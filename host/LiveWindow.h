#pragma once

#include "IDashboardConsumer.h"

#include <QtGui/QImage>
#include <QtGui/QRasterWindow>

class IDashboardEngine;

/// A plain window with the live dashboard, in the largest size of its proportions that fits.
/// Double click, F or F11 switch to and from full screen; Escape or Q close it.
class LiveWindow final : public QRasterWindow, public IDashboardConsumer
{
    Q_OBJECT

public:
    /// `engine` is borrowed; the window is its consumer while it lives.
    LiveWindow(IDashboardEngine &engine, bool upsideDown);
    ~LiveWindow() override;

    int frameWidth() override { return frameSize().width(); }
    int frameHeight() override { return frameSize().height(); }
    bool isUpsideDown() override { return upsideDown; }
    quint64 lastActivity() override { return 0; }
    void deliverFrame(Frame &buffer, int width) override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;

private:
    QSize frameSize() const;
    void toggleFullScreen();

    IDashboardEngine &engine;
    const bool upsideDown;
    QImage picture;
    Frame frame; ///< The pixels of `picture` once a frame has come.
};
