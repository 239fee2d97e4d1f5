#pragma once

#include <QtCore/QRect>
#include <QtCore/QString>

/// Where a window was when it was seen last. Kept in the program's QSettings under the window's
/// name; whatever can't be read there counts as unknown.
struct WindowPlace
{
    QRect geometry; ///< Without the frame, in logical pixels; null if unknown.
    bool fullScreen = false;
    bool stayOnTop = false;

    static WindowPlace load(const QString &window);
    void save(const QString &window) const;

    /// Makes a geometry that is larger than the desktop smaller, and one unknown of which too
    /// little would lie on a screen to be seen and dragged.
    void fitToScreens();

    /// What windows may fill at most, with room for their frames, of a part of the desktop.
    static QRect room(const QRect &available);
};
