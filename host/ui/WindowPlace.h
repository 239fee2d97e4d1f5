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

    /// Cuts off what is larger than all screens together. False if the place is unknown, or not
    /// enough of the window would lie on a screen to be seen and dragged.
    bool fitOntoScreens();
};
