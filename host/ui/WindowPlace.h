#pragma once

#include <QtCore/QRect>
#include <QtCore/QString>

/// A window's remembered place, kept in QSettings under the window's name. What can't be read
/// counts as unknown.
struct WindowPlace
{
    QRect geometry; ///< Without the frame, in logical pixels; null if unknown.
    bool fullScreen = false;
    bool stayOnTop = false;

    static WindowPlace load(const QString &window);
    void save(const QString &window) const;

    /// Shrinks a geometry that is larger than the desktop, and forgets one of which too
    /// little lies on a screen to be dragged.
    void fitToScreens();

    /// The part of `available` that a window may fill so that its frame fits, too. Logical pixels.
    static QRect room(const QRect &available);
};
