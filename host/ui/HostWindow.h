#pragma once

#include "WindowPlace.h"

#include <QtCore/QPoint>
#include <QtCore/QString>
#include <QtQuick/QQuickView>

class Navigation;
class QMouseEvent;
class QUrl;

/// A window of the host: one QML document in a QML engine of its own, so that `Qt.quit()` there
/// closes the window and not the program. The document knows it as `qt_window`, and the navigation
/// as `qt_navigation`.
///
/// Position, size, full screen and stay-on-top are remembered under the window's name. Ctrl+W
/// closes it. GUI thread.
class HostWindow : public QQuickView
{
    Q_OBJECT
    Q_PROPERTY(bool isStayOnTop READ isStayOnTop NOTIFY stayOnTopChanged)
    Q_PROPERTY(QString documentErrors READ documentErrors CONSTANT)

public:
    /// `navigation` is borrowed. Nothing is shown before `open`.
    HostWindow(const QString &name, Navigation &navigation);
    ~HostWindow() override;

    /// Loads the document and shows the window where it was seen last; at first in the middle of
    /// the screen, and a dialog always in the middle of its window. A document that fails is
    /// logged, and its errors are shown instead.
    void open(const QUrl &document);

    /// Brings an open window to the user's eyes.
    void present();

    Navigation &navigation() const { return navigator; }

    /// Whether the frame offers to minimise the window, as it does at first.
    Q_INVOKABLE void setCanBeMinimized(bool can);

    /// Why the document can't be shown, an error on a line; empty if it can.
    QString documentErrors() const { return errorText; }

    /// Whether a call of the document is still waiting for a dialog's answer. Until that has
    /// returned, the window must not be deleted.
    bool isWaiting() const { return waiting > 0; }

    bool isStayOnTop() const { return flags().testFlag(Qt::WindowStaysOnTopHint); }

    /// Initial size; a remembered size wins.
    Q_INVOKABLE void setInitialSize(qreal width, qreal height);

    /// Moves the window, without its frame, in logical pixels.
    Q_INVOKABLE void move(qreal x, qreal y);

    /// The mouse's position on the desktop, in logical pixels: during a mouse event where it
    /// happened, however late the program comes to it, else where the mouse is now.
    Q_INVOKABLE QPoint cursorPosGlobal() const;

    /// Tells that a move by dragging begins or ends.
    Q_INVOKABLE void setAboutToBeMoved(bool moving);

    Q_INVOKABLE void toggleStayOnTop();

public Q_SLOTS:
    // In place of the window's own, which doesn't remember where the window was before.
    void showFullScreen();

Q_SIGNALS:
    void stayOnTopChanged();

    /// The user has asked for the end by the window's frame. The window closes right after.
    void closeRequested();

    /// The window is closed; whoever owns it may delete it later.
    void closed();

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    friend class WaitingDocument;

    QRect room() const;
    QRect inTheMiddle() const;
    QRect fitted(QRect geometry) const;
    void rememberPlace();
    void followState();
    void fitDocument();

    const QString name;
    QString errorText;
    Navigation &navigator;
    WindowPlace place;
    QSize leastSize; ///< What the document needs at the usual scale.
    bool sizeRemembered = false;
    bool closing = false;
    int waiting = 0;
    const QMouseEvent *mouseEvent = nullptr; ///< The one that is being handled.
};

/// Marks a window as waiting while this lives.
class WaitingDocument
{
public:
    explicit WaitingDocument(HostWindow &window)
        : window(window)
    {
        ++window.waiting;
    }
    ~WaitingDocument() { --window.waiting; }
    WaitingDocument(const WaitingDocument &) = delete;
    WaitingDocument &operator=(const WaitingDocument &) = delete;

private:
    HostWindow &window;
};
