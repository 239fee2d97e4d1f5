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

    /// Loads the document and shows the window at its remembered place, else centred on the
    /// screen; a dialog is always centred on its parent. If the document fails, its errors
    /// are logged and shown instead.
    void open(const QUrl &document);

    /// Restores, raises and activates the window.
    void present();

    Navigation &navigation() const { return navigator; }

    /// Shows or hides the frame's minimise button, which is shown by default.
    Q_INVOKABLE void setCanBeMinimized(bool can);

    /// Why the document can't be shown, one error per line; empty if it can.
    QString documentErrors() const { return errorText; }

    /// Whether the document is blocked in a call that waits for a dialog. The window must
    /// not be deleted until that call has returned.
    bool isWaiting() const { return waiting > 0; }

    bool isStayOnTop() const { return flags().testFlag(Qt::WindowStaysOnTopHint); }

    /// Initial size; a remembered size wins.
    Q_INVOKABLE void setInitialSize(qreal width, qreal height);

    /// Moves the window, without its frame, in logical pixels.
    Q_INVOKABLE void move(qreal x, qreal y);

    /// The mouse position on the desktop, in logical pixels: during a mouse event the
    /// event's, however late it is handled, else the current one.
    Q_INVOKABLE QPoint cursorPosGlobal() const;

    /// Reports that a drag of the window begins or ends.
    Q_INVOKABLE void setAboutToBeMoved(bool moving);

    Q_INVOKABLE void toggleStayOnTop();

public Q_SLOTS:
    // Hides QWindow's, which doesn't remember the place before full screen.
    void showFullScreen();

Q_SIGNALS:
    void stayOnTopChanged();

    /// Emitted before the document handles the close; the window's place is already saved.
    void closeRequested();

    /// The window has closed. Its owner may delete it from the event loop.
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
    QSize leastSize; ///< The document's minimum size at the usual scale.
    bool sizeRemembered = false;
    bool closing = false;
    int waiting = 0;
    const QMouseEvent *mouseEvent = nullptr; ///< The event being handled, else null.
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
